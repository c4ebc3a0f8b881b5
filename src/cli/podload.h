#pragma once

#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "cli/commandrow.h"
#include "cli/session.h"

namespace veldra {

/// kDone when ARCHIVE is the one at PATH; the user has been told otherwise.
int LoadPod(CSession& session, const std::string& path, CPodDocument& archive);
/// Prints the bytes of the one entry that NAME means. Returns the exit status.
int PrintEntry(CSession& session, const CPodDocument& archive, const std::string& name);

/// cat, add, remove, rename, replace, test.
std::vector<SCommandRow> PodEditCommands();

}  // namespace veldra

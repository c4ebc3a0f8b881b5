#pragma once

#include <string>

#include "document/tarn2doc.h"

/// What the dialogs of face groups and vertex groups do. Those that change a group do nothing, and say nothing, on a
/// read-only document.
namespace veldra {

// What stands in the way, in words, or "" when done.
/// The selected faces or vertices become a new group.
std::string CreateGroup(CTarnDoc& document, EGroupKind kind, const std::string& name);
std::string RenameGroup(CTarnDoc& document, EGroupKind kind, const std::string& name, const std::string& new_name);

void DeleteGroup(CTarnDoc& document, EGroupKind kind, const std::string& name);
/// Its members become the selection, or with ADD a part of it.
void SelectGroup(CTarnDoc& document, EGroupKind kind, const std::string& name, bool add);

}  // namespace veldra

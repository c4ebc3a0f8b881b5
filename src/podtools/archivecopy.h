#pragma once

#include <optional>
#include <vector>

#include "archive/poddocument.h"
#include "document/copyfile.h"

/// What a recovery copy of a changed archive holds: its list of entries and where the bytes of each are. The bytes
/// themselves stay in the archive and in the files that were added.
namespace veldra {

std::vector<uint8_t> WriteArchiveCopy(SCopyLabel label, const CPodDocument& archive);

/// Gives ARCHIVE, just loaded, the entries that FILE has. False, with what is wrong, when the copy is damaged or is one
/// of an archive whose directory was another one; ARCHIVE is then as it was.
bool ReadArchiveCopy(const SCopyFile& file, CPodDocument& archive, SDiagnosis& diagnosis);

}  // namespace veldra

#pragma once

#include <cstdint>
#include <string>

#include "platform/files_system.h"

/// What the two systems' halves offer to outputfolder.cpp. Error numbers as in files_system.h.
namespace veldra::disk {

/// A folder that is held open, so that names in it are those of its own files whatever takes its name meanwhile.
struct SFolder {
  Handle handle = kNoHandle;
  std::string path;  ///< for the systems that know no names within an open folder, and for messages
};

/// What a name in a folder stands for; links are not followed.
enum class EEntry { kNothing, kFile, kLink, kOther };

/// Links along PATH are followed.
int OpenFolder(const std::string& path, SFolder& folder);
/// Opens the folder NAME in ABOVE, made where there is none; never through a link.
int EnterFolder(const SFolder& above, const std::string& name, SFolder& folder);
void CloseFolder(SFolder& folder);
/// Nothing where it cannot be told.
uint64_t FreeSpace(const SFolder& folder);

/// LENGTH, which may be null, gets a file's length.
EEntry EntryIn(const SFolder& folder, const std::string& name);
/// As CreateNew, CheckReplaceable, CopyPermissions, Rename and Remove, for names in FOLDER.
int CreateNewIn(const SFolder& folder, const std::string& name, bool for_all, Handle& handle);
int CheckReplaceableIn(const SFolder& folder, const std::string& name);
int CopyPermissionsIn(const SFolder& folder, const std::string& name, Handle handle);
int RenameIn(const SFolder& folder, const std::string& from, const std::string& to);
int RemoveIn(const SFolder& folder, const std::string& name);

}  // namespace veldra::disk

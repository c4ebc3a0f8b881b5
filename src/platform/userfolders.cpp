#include "platform/userfolders.h"

#include <filesystem>

#include "platform/files_system.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/trace.h"
#include "platform/userfolders_system.h"

namespace veldra {

namespace {

/// USUAL unless the user has chosen another one.
std::string ChooseDirectory(std::string usual) {
  const auto chosen = EnvironmentVariable("VELDRA_DATA");
  if (chosen && !chosen->empty()) return AbsolutePath(*chosen);
  std::string carried = CarriedDirectory();
  if (!carried.empty()) return carried;
  if (!usual.empty()) return usual;
  std::error_code fault;
  return JoinPath(std::filesystem::temp_directory_path(fault).string(), "veldra");
}

}  // namespace

std::string UserDataDirectory() {
  std::string directory = ChooseDirectory(disk::SystemDataDirectory());
  if (IsDirectory(directory)) return directory;
  if (MakeDirectories(directory))
    disk::KeepToUser(directory);
  else
    Trace(">> UserDataDirectory(): %s cannot be made\n", directory.c_str());
  return directory;
}

std::string UserSettingsDirectory() {
  return ChooseDirectory(disk::SystemSettingsDirectory());
}

bool RemoveEmptyFolder(std::string_view path) {
  return disk::RemoveFolder(disk::SystemPath(path)) == 0;
}

bool RenameFile(std::string_view from, std::string_view to, SError* error) {
  const std::string target = disk::SystemPath(to);
  const int number = disk::Rename(disk::SystemPath(from), target);
  if (number == 0) disk::SyncDirectory(DirectoryPart(target));
  if (number != 0 && error != nullptr) error->what = disk::ErrorText(number);
  return number == 0;
}

}  // namespace veldra

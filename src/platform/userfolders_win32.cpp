#include "platform/paths.h"
#include "platform/process.h"
#include "platform/userfolders.h"
#include "platform/userfolders_system.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

/// The program's folder in the one that VARIABLE says.
std::string InFolderOf(const char* variable) {
  const auto folder = EnvironmentVariable(variable);
  return folder && IsAbsolutePath(*folder) ? JoinPath(*folder, "Veldra") : "";
}

}  // namespace

std::string HomeDirectory() {
  const auto home = EnvironmentVariable("USERPROFILE");
  return home && IsAbsolutePath(*home) ? *home : "";
}

namespace disk {

std::string SystemDataDirectory() {
  return InFolderOf("LOCALAPPDATA");
}

std::string SystemSettingsDirectory() {
  return InFolderOf("APPDATA");
}

void KeepToUser(const std::string&) {}  // below the user's profile, which is closed to others

int RemoveFolder(const std::string& path) {
  return RemoveDirectoryW(ToWide(path).c_str()) != 0 ? 0 : static_cast<int>(GetLastError());
}

}  // namespace disk

std::string CarriedDirectory() {
  const std::string folder = DirectoryPart(FromWide(ProgramPath()));
  return FileExists(JoinPath(folder, "Veldra.portable")) ? JoinPath(folder, "data") : "";
}

std::string ComparablePath(std::string_view path) {
  std::wstring wide = ToWide(AbsolutePath(path));
  CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return FromWide(wide);
}

}  // namespace veldra

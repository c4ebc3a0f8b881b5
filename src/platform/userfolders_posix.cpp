#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/paths.h"
#include "platform/process.h"
#include "platform/userfolders.h"
#include "platform/userfolders_system.h"

namespace veldra {

std::string HomeDirectory() {
  const auto home = EnvironmentVariable("HOME");
  if (home && home->starts_with('/')) return *home;
  std::array<char, 4096> texts;
  passwd user = {};
  passwd* found = nullptr;
  const bool is_known = getpwuid_r(getuid(), &user, texts.data(), texts.size(), &found) == 0 && found != nullptr;
  return is_known && user.pw_dir != nullptr ? user.pw_dir : "";
}

namespace {

/// NAME in the folder that VARIABLE says, else in that FOLDER of the user's.
std::string InFolderOf(const char* variable, const char* folder, const char* name) {
  // A relative path there is to be taken for none, says the rule that defines the variable.
  const auto chosen = EnvironmentVariable(variable);
  if (chosen && chosen->starts_with('/')) return JoinPath(*chosen, name);
  const std::string home = HomeDirectory();
  return home.starts_with('/') ? JoinPath(JoinPath(home, folder), name) : "";
}

/// PATH with every link followed; "" when it is not there.
std::string RealPath(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real != nullptr ? real.get() : "";
}

}  // namespace

namespace disk {

std::string SystemDataDirectory() {
  return InFolderOf("XDG_DATA_HOME", ".local/share", "veldra");
}

std::string SystemSettingsDirectory() {
  return InFolderOf("XDG_CONFIG_HOME", ".config", "veldra");
}

void KeepToUser(const std::string& path) {
  chmod(path.c_str(), S_IRWXU);
}

int RemoveFolder(const std::string& path) {
  return rmdir(path.c_str()) == 0 ? 0 : errno;
}

}  // namespace disk

std::string CarriedDirectory() {
  return "";
}

std::string ComparablePath(std::string_view path) {
  const std::string absolute = AbsolutePath(path);
  std::string real = RealPath(absolute);
  if (!real.empty()) return real;
  const std::string folder = RealPath(DirectoryPart(absolute));
  return folder.empty() ? absolute : JoinPath(folder, FileNamePart(absolute));
}

}  // namespace veldra

#include "settings/coptools.h"

#include <chrono>
#include <optional>
#include <vector>

#include "platform/filelock.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr size_t kLargestSettingsFile = size_t{16} << 20;
constexpr const char* kLockSuffix = ".lock";
constexpr std::chrono::milliseconds kLongestWait{2000};

constexpr const char* kGameKey = R"(SOFTWARE\Microsoft\Monster Truck Madness\1.0)";
constexpr const char* kGameFolderValue = "InstalledTo";

struct SLine {
  std::string key;
  std::string value;
};

/// Calls ACTION(key, value) for each line of TEXT, without a copy of all of them.
template <typename Action>
void ForEachLine(std::string_view text, const Action& action) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) continue;
    const size_t blank = line.find(' ');
    action(line.substr(0, blank),
           ToUtf8(blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1)));
  }
}

/// Nothing when there is a file that cannot be read: what it holds would be lost.
std::optional<std::vector<SLine>> PresentLines(const std::string& path) {
  if (!FileExists(path)) return std::vector<SLine>();
  const auto bytes = ReadTextFile(path, nullptr, kLargestSettingsFile);
  if (!bytes) return std::nullopt;
  std::vector<SLine> lines;
  ForEachLine(bytes->Text(), [&](std::string_view key, std::string value) {
    lines.push_back({std::string(key), std::move(value)});
  });
  return lines;
}

/// Makes the rows of SETTINGS that nobody changed since AS_READ what LINES say.
void TakeUnchanged(const std::vector<SLine>& lines, const CSettings& as_read, CSettings& settings) {
  const CSettings own = settings;
  for (const SLine& line : lines) {
    const SSettingRow* const row = FindSettingRow(line.key);
    if (row != nullptr && ToSettingText(*row, own) == ToSettingText(*row, as_read))
      SetFromText(*row, line.value, settings);
  }
}

/// With AS_READ null every key is the program's own.
bool Write(const std::string& path, CSettings settings, const CSettings* as_read) {
  const auto lines = PresentLines(path);
  if (!lines) return false;
  if (as_read != nullptr) TakeUnchanged(*lines, *as_read, settings);
  std::string text;
  for (const auto& [key, value] : settings.Texts())
    text.append(key).append(" ").append(value).append("\n");
  for (const SLine& line : *lines) {
    if (FindSettingRow(line.key) == nullptr) text.append(line.key).append(" ").append(line.value).append("\n");
  }
  return ReplaceFile(path, text);
}

}  // namespace

bool CopTools::ReadCfgFile(const std::string& path, SettingsMap& map, SError* error) {
  const auto bytes = ReadTextFile(path, error, kLargestSettingsFile);
  if (!bytes) return false;
  ForEachLine(bytes->Text(), [&](std::string_view key, const std::string& value) {
    std::string& set = map[std::string(key)];
    set = value;
    Trace("CopTools::ReadCfgFile(%s) : Set '%s' to '%s'\n", path.c_str(), std::string(key).c_str(), set.c_str());
  });
  return true;
}

void CopTools::ParseCfg(std::string_view text, SettingsMap& map) {
  ForEachLine(
      text, [&](std::string_view key, std::string value) { map.insert_or_assign(std::string(key), std::move(value)); });
}

bool CopTools::WriteCfgFile(const std::string& path, const CSettings& settings) {
  return Write(path, settings, nullptr);
}

bool CopTools::WriteCfgFile(const std::string& path, const CSettings& settings, const CSettings& as_read) {
  // Where no lock is to be had the settings are still worth writing.
  CFileLock lock;
  SError error;
  MakeDirectories(DirectoryPart(path));
  if (lock.Lock(path + kLockSuffix, kLongestWait, &error) != ELockResult::kTaken)
    Trace("CopTools::WriteCfgFile(%s) : no lock: %s\n", path.c_str(), error.what.c_str());
  const bool is_written = Write(path, settings, &as_read);
  lock.ReleaseAndRemove();
  return is_written;
}

std::string CopTools::SettingsPath(const std::string& directory) {
  std::string here = JoinPath(directory, kSettingsFileName);
  return FileExists(here) ? here : JoinPath(UserSettingsDirectory(), kSettingsFileName);
}

std::string CopTools::InstallationDirectory() {
  const auto registered = ReadMachineRegistry(kGameKey, kGameFolderValue);
  if (!registered) return ".";
  return RegistryPathToNative(*registered).value_or(".");
}

std::vector<std::string> CopTools::RegisteredFolders() {
  return RegisteredPaths(kGameKey, kGameFolderValue);
}

}  // namespace veldra

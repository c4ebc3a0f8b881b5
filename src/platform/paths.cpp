#include "platform/paths.h"

#include <algorithm>
#include <array>

#include "platform/standardinput.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::string_view kSeparators = "\\/";

#ifdef _WIN32
constexpr char kSystemSeparator = '\\';
#else
constexpr char kSystemSeparator = '/';
#endif

bool IsSeparator(char c) {
  return kSeparators.find(c) != std::string_view::npos;
}

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// How many characters of PATH name the root it starts at: 1 for "/", 3 for "C:\", else 0.
size_t RootLength(std::string_view path) {
  if (!path.empty() && IsSeparator(path[0])) return 1;
  return path.size() >= 3 && IsLetter(path[0]) && path[1] == ':' && IsSeparator(path[2]) ? 3 : 0;
}

size_t FileNameStart(std::string_view path) {
  const size_t separator = path.find_last_of(kSeparators);
  return separator == std::string_view::npos ? 0 : separator + 1;
}

/// Position of the last "." of the file name; npos when there is none.
size_t ExtensionDot(std::string_view path) {
  const size_t dot = path.rfind('.');
  return dot != std::string_view::npos && dot >= FileNameStart(path) ? dot : std::string_view::npos;
}

/// Numbered ones aside. They are devices with every extension.
constexpr std::array<std::string_view, 7> kDevices = {"CON", "PRN", "AUX", "NUL", "CLOCK$", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 2> kNumberedDevices = {"COM", "LPT"};
/// What Windows takes for a device's number besides the digits: superscripts, as they stand in Latin-1 and in UTF-8.
constexpr std::array<std::string_view, 6> kSuperscripts = {"\xB9", "\xB2", "\xB3", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};

bool IsDeviceNumber(std::string_view text) {
  return (text.size() == 1 && text[0] >= '0' && text[0] <= '9') ||
         std::find(kSuperscripts.begin(), kSuperscripts.end(), text) != kSuperscripts.end();
}

}  // namespace

std::string FileNamePart(std::string_view path) {
  return std::string(path.substr(FileNameStart(path)));
}

std::string DirectoryPart(std::string_view path) {
  const size_t name = FileNameStart(path);
  if (name == 0) return {};
  return std::string(path.substr(0, std::max(name - 1, RootLength(path))));
}

std::string ExtensionPart(std::string_view path) {
  const size_t dot = ExtensionDot(path);
  return dot == std::string_view::npos ? std::string() : std::string(path.substr(dot + 1));
}

std::string ChangeExtension(std::string_view path, std::string_view extension) {
  std::string changed(path.substr(0, ExtensionDot(path)));
  changed += '.';
  changed += extension;
  return changed;
}

std::string JoinPath(std::string_view directory, std::string_view name) {
  if (directory.empty()) return std::string(name);
  std::string path(directory);
  if (!IsSeparator(path.back())) path += kSystemSeparator;
  const size_t start = name.find_first_not_of(kSeparators);
  if (start != std::string_view::npos) path += name.substr(start);
  return path;
}

std::vector<std::string_view> PathParts(std::string_view path) {
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const size_t end = path.find_first_of(kSeparators);
    parts.push_back(path.substr(0, end));
    if (end == std::string_view::npos) break;
    path.remove_prefix(end + 1);
    if (path.empty()) parts.push_back(path);
  }
  return parts;
}

bool IsAbsolutePath(std::string_view path) {
  return RootLength(path) > 0;
}

bool StaysBelow(std::string_view path) {
  if (path.empty() || IsSeparator(path[0]) || path.find_first_of(std::string_view(":\0", 2)) != std::string_view::npos)
    return false;
  const std::vector<std::string_view> parts = PathParts(path);
  return std::find(parts.begin(), parts.end(), "..") == parts.end();
}

bool IsBareName(std::string_view name) {
  return StaysBelow(name) && name != "." && name.find_first_of(kSeparators) == std::string_view::npos;
}

std::string NativePath(std::string_view path) {
  std::string native(path);
  if (kSystemSeparator == '/') std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

bool IsDeviceName(std::string_view part) {
  const std::string name = UpperCase(Trim(part.substr(0, part.find('.'))));
  if (std::find(kDevices.begin(), kDevices.end(), name) != kDevices.end()) return true;
  return std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), [&](std::string_view device) {
    return name.starts_with(device) && IsDeviceNumber(std::string_view(name).substr(device.size()));
  });
}

std::string DisplayPath(std::string_view path) {
  return IsStandardInput(path) ? "standard input" : DisplayName(path);
}

std::string DisplayFileName(std::string_view path) {
  return IsStandardInput(path) ? "standard input" : DisplayName(FileNamePart(path));
}

}  // namespace veldra

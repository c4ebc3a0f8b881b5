#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/registry.h"
#include "platform/text.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr size_t kLargestRegistry = size_t{256} << 20;
constexpr std::string_view kSoftware = "SOFTWARE\\";

/// Characters that come as UTF-16 units, as UTF-8. Half a surrogate pair becomes U+FFFD.
class CUtf16Text {
 public:
  void AddByte(char c) {
    EndPair();
    text_ += c;
  }
  void AddUnit(uint32_t unit) {
    if (high_ != 0 && unit >= 0xDC00 && unit <= 0xDFFF) {
      AddCode(0x10000 + ((high_ - 0xD800) << 10) + (unit - 0xDC00));
      high_ = 0;
      return;
    }
    EndPair();
    if (unit >= 0xD800 && unit <= 0xDBFF)
      high_ = unit;
    else
      AddCode(unit >= 0xDC00 && unit <= 0xDFFF ? kReplacement : unit);
  }
  std::string Take() {
    EndPair();
    return std::move(text_);
  }

 private:
  static constexpr uint32_t kReplacement = 0xFFFD;

  void EndPair() {
    if (high_ != 0) AddCode(kReplacement);
    high_ = 0;
  }
  void AddCode(uint32_t code) {
    if (code < 0x80) {
      text_ += static_cast<char>(code);
      return;
    }
    const int followers = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const uint32_t lead = followers == 1 ? 0xC0 : followers == 2 ? 0xE0 : 0xF0;
    text_ += static_cast<char>(lead | code >> (6 * followers));
    for (int i = followers - 1; i >= 0; --i)
      text_ += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
  }

  std::string text_;
  uint32_t high_ = 0;  ///< the first half of a surrogate pair, waiting for its second
};

/// Takes up to COUNT digits of BASE (8 or 16) off TEXT.
uint32_t TakeDigits(std::string_view& text, int count, uint32_t base) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  uint32_t value = 0;
  for (; count > 0 && !text.empty(); --count) {
    const size_t digit = kDigits.find(LowerCase(text.substr(0, 1)));
    if (digit >= base) break;
    value = value * base + static_cast<uint32_t>(digit);
    text.remove_prefix(1);
  }
  return value;
}

/// Takes what follows a "\" off TEXT (not empty).
void TakeEscape(std::string_view& text, CUtf16Text& taken) {
  constexpr std::string_view kLetters = "abefnrtv";
  constexpr std::string_view kControls = "\a\b\x1B\f\n\r\t\v";
  const char letter = text[0];
  if (letter >= '0' && letter <= '7') return taken.AddUnit(TakeDigits(text, 3, 8));
  text.remove_prefix(1);
  if (letter == 'x') return taken.AddUnit(TakeDigits(text, 4, 16));
  const size_t control = kLetters.find(letter);
  taken.AddByte(control == std::string_view::npos ? letter : kControls[control]);
}

/// Takes a text between OPEN and CLOSE off the start of LINE, its escapes resolved.
std::optional<std::string> TakeText(std::string_view& line, char open, char close) {
  if (!line.starts_with(open)) return std::nullopt;
  line.remove_prefix(1);
  CUtf16Text taken;
  while (!line.empty()) {
    const char c = line[0];
    line.remove_prefix(1);
    if (c == close) return taken.Take();
    if (c != '\\')
      taken.AddByte(c);
    else if (!line.empty())
      TakeEscape(line, taken);
  }
  return std::nullopt;
}

/// The value in a line `"NAME"="value"`. Other types than strings do not start with a quotation mark.
std::optional<std::string> TextValue(std::string_view line, std::string_view name) {
  const auto found = TakeText(line, '"', '"');
  if (!found || !EqualNoCase(*found, name) || !line.starts_with('=')) return std::nullopt;
  line.remove_prefix(1);
  auto value = TakeText(line, '"', '"');
  if (value) value->resize(std::min(value->find('\0'), value->size()));
  return value;
}

std::optional<std::string> FindValue(std::string_view registry, std::string_view key, std::string_view name) {
  bool in_key = false;
  while (!registry.empty()) {
    const size_t end = std::min(registry.find('\n'), registry.size());
    std::string_view line = Trim(registry.substr(0, end));
    registry.remove_prefix(std::min(end + 1, registry.size()));
    if (line.starts_with('[')) {
      const auto section = TakeText(line, '[', ']');
      in_key = section && EqualNoCase(*section, key);
    } else if (in_key) {
      auto value = TextValue(line, name);
      if (value) return value;
    }
  }
  return std::nullopt;
}

std::string WinePrefix() {
  const auto prefix = EnvironmentVariable("WINEPREFIX");
  if (prefix && !prefix->empty()) return *prefix;
  const auto home = EnvironmentVariable("HOME");
  return home ? JoinPath(*home, ".wine") : "";
}

/// The user's prefix and those of the programs that make prefixes for games.
std::vector<std::string> WinePrefixes() {
  std::vector<std::string> prefixes = {WinePrefix()};
  const std::string home = HomeDirectory();
  if (home.empty()) return prefixes;
  prefixes.push_back(JoinPath(home, ".wine"));
  for (const char* folder : {".local/share/wineprefixes", ".PlayOnLinux/wineprefix", ".local/share/bottles/bottles",
                             ".var/app/com.usebottles.bottles/data/bottles/bottles", "Games"})
    for (const std::string& name : ListDirectory(JoinPath(home, folder)))
      prefixes.push_back(JoinPath(JoinPath(home, folder), name));
  std::erase_if(prefixes, [](const std::string& prefix) {
    return prefix.empty() || !IsDirectory(JoinPath(prefix, "dosdevices"));
  });
  return prefixes;
}

std::optional<std::string> ReadRegistryOf(const std::string& prefix, const std::string& key, const std::string& name) {
  if (prefix.empty()) return std::nullopt;
  const auto registry = ReadWholeFile(JoinPath(prefix, "system.reg"), nullptr, kLargestRegistry);
  if (!registry) return std::nullopt;
  auto value = FindValue(registry->Text(), key, name);
  // Where a 64-bit prefix keeps the keys of 32-bit programs, such as the game.
  if (!value && EqualNoCase(std::string_view(key).substr(0, kSoftware.size()), kSoftware))
    value = FindValue(registry->Text(), "SOFTWARE\\Wow6432Node\\" + key.substr(kSoftware.size()), name);
  return value;
}

std::optional<std::string> NativeIn(const std::string& prefix, const std::string& windows_path) {
  if (prefix.empty() || !IsAbsolutePath(windows_path) || windows_path[1] != ':') return std::nullopt;
  const std::string drive_name = LowerCase(windows_path.substr(0, 2));
  const std::string drive = JoinPath(JoinPath(prefix, "dosdevices"), drive_name);
  if (!IsDirectory(drive)) return std::nullopt;
  const std::string path = JoinPath(drive, NativePath(windows_path.substr(2)));
  const std::string found = FindAnyCase(path);
  return found.empty() ? path : found;
}

}  // namespace

std::optional<std::string> ReadMachineRegistry(const std::string& key, const std::string& name) {
  return ReadRegistryOf(WinePrefix(), key, name);
}

std::optional<std::string> RegistryPathToNative(const std::string& windows_path) {
  return NativeIn(WinePrefix(), windows_path);
}

std::vector<std::string> RegisteredPaths(const std::string& key, const std::string& name) {
  std::vector<std::string> paths;
  for (const std::string& prefix : WinePrefixes()) {
    const auto value = ReadRegistryOf(prefix, key, name);
    auto path = value ? NativeIn(prefix, *value) : std::nullopt;
    if (path) paths.push_back(std::move(*path));
  }
  return paths;
}

std::vector<std::string> SystemDrives() {
  std::vector<std::string> drives;
  for (const std::string& prefix : WinePrefixes())
    drives.push_back(JoinPath(prefix, "dosdevices/c:"));
  return drives;
}

}  // namespace veldra

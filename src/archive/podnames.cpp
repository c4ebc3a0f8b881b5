#include "archive/podnames.h"

#include <algorithm>
#include <vector>

#include "archive/filetypes.h"
#include "archive/poddocument.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kNoExtensionText = "File \"%s\" cannot be loaded.\nNo extension specified";
constexpr const char* kNameTooLongText = "File \"%s\" cannot be loaded.\nFile name cannot exceed 8 characters";
constexpr size_t kLongestFileName = 12;  // eight, the ".", three

constexpr std::string_view kForbiddenCharacters = "<>\"|?*";

/// "" when PART can be the name of a file or folder on every system.
std::string RefusalOfPart(std::string_view part) {
  if (part.empty()) return "a part of its name is empty";
  if (part == "." || part == "..") return "its name leads to another folder";
  if (part.find(':') != std::string_view::npos) return "its name has a \":\"";
  if (part.find_first_of(kForbiddenCharacters) != std::string_view::npos)
    return "its name has one of the characters " + std::string(kForbiddenCharacters);
  if (part.back() == '.' || part.back() == ' ') return "a part of its name ends in a dot or a blank";
  if (IsDeviceName(part)) return "its name is that of a device";
  return {};
}

std::string RefusalOfName(std::string_view name) {
  if (name.empty()) return "it has no name";
  if (HasHiddenCharacters(name)) return "its name has control characters";
  if (name[0] == '\\' || name[0] == '/') return "its name begins at the disk's root";
  for (const std::string_view part : PathParts(name)) {
    std::string refusal = RefusalOfPart(part);
    if (!refusal.empty()) return refusal;
  }
  return {};
}

SNameResult Refuse(const char* text, const std::string& file_name, std::string details = {}) {
  return {{}, Format(text, DisplayName(file_name).c_str()), std::move(details)};
}

/// The path as it was added, where it can stand in an archive: one that begins elsewhere or goes upwards says where the
/// file lies now, not where the game would look for it.
std::string OtherName(std::string_view added_as, const std::string& file_name) {
  if (IsAbsolutePath(added_as)) return file_name;
  std::string name;
  for (const std::string_view part : PathParts(added_as)) {
    if (part == "..") return file_name;
    if (part.empty() || part == ".") continue;
    if (!name.empty()) name += '\\';
    name += part;
  }
  return name;
}

}  // namespace

SNameResult PodEntryName(std::string_view added_as) {
  const std::string file_name = FileNamePart(added_as);
  const size_t length = file_name.size();
  if (length < kExtensionSize || file_name[length - kExtensionSize] != '.') return Refuse(kNoExtensionText, file_name);
  if (length > kLongestFileName) return Refuse(kNameTooLongText, file_name);
  const int type = TypeOfFile(file_name);
  std::string name = type == kTypeOther ? OtherName(added_as, file_name) : FolderOfType(type) + '\\' + file_name;
  std::string refusal = RefusalOfName(name);
  if (refusal.empty() && name.size() >= kPodNameSize)
    refusal = Format("with its folders its name is longer than %zu characters", kPodNameSize - 1);
  if (!refusal.empty()) return Refuse(kLoadErrorText, file_name, std::move(refusal));
  return {UpperCase(name), {}};
}

SNameResult SafeRelativePath(std::string_view entry_name, bool folders) {
  std::string refusal = RefusalOfName(entry_name);
  if (!refusal.empty()) return {{}, std::move(refusal)};
  const std::vector<std::string_view> parts = PathParts(entry_name);
  std::string path;
  for (size_t i = folders ? 0 : parts.size() - 1; i < parts.size(); ++i)
    path = JoinPath(path, ToUtf8(parts[i]));
  return {std::move(path), {}};
}

std::string NameKey(std::string_view relative_path) {
  std::string key = FoldName(relative_path);
  std::replace(key.begin(), key.end(), '\\', '/');
  return key;
}

}  // namespace veldra

#include "archive/filetypes.h"

#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::string_view kOtherFolder = "OTHER";

}  // namespace

std::string FolderOfType(int type) {
  VELDRA_ASSERT(type >= 0 && type <= kTypeOther);
  return std::string(type < kFileTypeCount ? kFileTypes[static_cast<size_t>(type)].folder : kOtherFolder);
}

std::string ExtensionOfType(int type) {
  VELDRA_ASSERT(type >= 0 && type < kFileTypeCount);
  return std::string(kFileTypes[static_cast<size_t>(type)].extension);
}

std::optional<int> TypeOfExtension(std::string_view extension) {
  for (int type = 0; type < kFileTypeCount; ++type)
    if (EqualNoCase(kFileTypes[static_cast<size_t>(type)].extension, extension)) return type;
  return std::nullopt;
}

int TypeOfFile(std::string_view name) {
  if (name.size() < kExtensionSize || name[name.size() - kExtensionSize] != '.') return kTypeOther;
  return TypeOfExtension(name.substr(name.size() - kExtensionSize + 1)).value_or(kTypeOther);
}

}  // namespace veldra

#include "archive/stockfiles.h"

#include <utility>

#include "platform/assert.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr size_t kCountSize = 4;
/// Whole installations have some thousand names.
constexpr size_t kLargestList = size_t{1} << 20;

/// The next COUNT names; false when the bytes end before.
bool ReadNames(CByteReader& reader, std::span<const uint8_t> resource, uint32_t count,
               std::vector<std::string>& names) {
  // A name has at least its zero.
  if (!reader.Holds(count, 1)) return false;
  names.reserve(count);
  for (uint32_t i = 0; i < count; ++i) {
    const auto rest = resource.subspan(reader.Position());
    const std::string_view text(reinterpret_cast<const char*>(rest.data()), rest.size());
    const size_t length = text.find('\0');
    if (length == std::string_view::npos) return false;
    names.emplace_back(text.substr(0, length));
    reader.Skip(length + 1);
  }
  return true;
}

}  // namespace

std::optional<StockNames> ReadStringList(std::span<const uint8_t> resource) {
  CByteReader reader(resource);
  if (!reader.Holds(kFileTypeCount, kCountSize)) return std::nullopt;
  std::array<uint32_t, kFileTypeCount> counts;
  for (uint32_t& count : counts)
    count = reader.ReadU32();
  StockNames names;
  for (size_t type = 0; type < names.size(); ++type)
    if (!ReadNames(reader, resource, counts[type], names[type])) return std::nullopt;
  return reader.AtEnd() ? std::optional(std::move(names)) : std::nullopt;
}

std::vector<uint8_t> WriteStringList(const StockNames& names) {
  CByteWriter writer;
  for (const std::vector<std::string>& of_type : names)
    writer.WriteU32(static_cast<uint32_t>(of_type.size()));
  for (const std::vector<std::string>& of_type : names) {
    for (const std::string& name : of_type) {
      writer.WriteText(name);
      writer.WriteU8(0);
    }
  }
  return {writer.Bytes().begin(), writer.Bytes().end()};
}

void CStockFiles::BuildTables() const {
  VELDRA_ASSERT(!built_);
  built_ = true;
  std::optional<StockNames> names;
  const std::string path = JoinPath(settings_folder_, kStockFileName);
  if (!settings_folder_.empty() && FileExists(path)) {
    const auto file = ReadWholeFile(path, nullptr, kLargestList);
    if (file) names = ReadStringList(file->View());
    if (!names) Trace("CStockFiles: %s is no stock-file list, the shipped one is used\n", path.c_str());
  }
  is_shipped_ = !names;
  if (is_shipped_) names = ReadStringList(PodZipFilesResource());
  VELDRA_ASSERT(names.has_value());
  for (size_t type = 0; names && type < names_.size(); ++type)
    for (const std::string& name : (*names)[type])
      names_[type].insert(UpperCase(name));
}

bool CStockFiles::IsStockFile(std::string_view file_name) const {
  if (!built_) BuildTables();
  if (file_name.size() <= kExtensionSize || file_name[file_name.size() - kExtensionSize] != '.') return false;
  const std::string name = UpperCase(file_name);
  const size_t dot = name.size() - kExtensionSize;
  const auto type = TypeOfExtension(std::string_view(name).substr(dot + 1));
  return type && names_[static_cast<size_t>(*type)].contains(name.substr(0, dot));
}

size_t CStockFiles::Count() const {
  if (!built_) BuildTables();
  size_t count = 0;
  for (const auto& of_type : names_)
    count += of_type.size();
  return count;
}

std::string CStockFiles::Note() const {
  if (!built_) BuildTables();
  return is_shipped_ ? std::string(kShippedListNote) + " Tools > Build Stock-File List makes the whole list." : "";
}

}  // namespace veldra

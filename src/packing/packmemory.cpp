#include "packing/packmemory.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::string_view kArchiveKey = "archive ";
constexpr std::string_view kStockKey = "stock ";
constexpr std::string_view kFileKey = "file ";
/// More nobody adds by hand; a longer file is something else.
constexpr uint64_t kLongestMemory = uint64_t{1} << 20;

std::string MemoryPath(const std::string& truck_path) {
  return truck_path + ".pack";
}

std::string Kept(const std::string& folder, const std::string& path) {
  const std::string absolute = AbsolutePath(path);
  const std::string below = JoinPath(folder, "x");
  const std::string_view start(below.data(), below.size() - 1);
  return absolute.starts_with(start) ? absolute.substr(start.size()) : absolute;
}

std::string Found(const std::string& folder, std::string_view kept) {
  return IsAbsolutePath(kept) ? std::string(kept) : JoinPath(folder, NativePath(kept));
}

void TakeLine(std::string_view line, const std::string& folder, SPackMemory& memory) {
  while (line.ends_with('\r'))
    line.remove_suffix(1);
  if (line.starts_with(kArchiveKey)) memory.archive = Found(folder, line.substr(kArchiveKey.size()));
  if (line.starts_with(kStockKey)) memory.leaves_out_stock = line.substr(kStockKey.size()) == "out";
  if (line.starts_with(kFileKey)) memory.more_files.push_back(Found(folder, line.substr(kFileKey.size())));
}

}  // namespace

std::optional<SPackMemory> ReadPackMemory(const std::string& truck_path) {
  const std::string path = MemoryPath(truck_path);
  if (truck_path.empty() || !IsFile(path) || FileLength(path).value_or(0) > kLongestMemory) return std::nullopt;
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  const std::string folder = DirectoryPart(AbsolutePath(truck_path));
  SPackMemory memory;
  for (std::string_view text = bytes->Text(); !text.empty();) {
    const size_t end = std::min(text.find('\n'), text.size() - 1);
    TakeLine(text.substr(0, end + (text[end] == '\n' ? 0 : 1)), folder, memory);
    text.remove_prefix(end + 1);
  }
  return memory.archive.empty() ? std::nullopt : std::optional(memory);
}

bool WritePackMemory(const std::string& truck_path, const SPackMemory& memory, SError* error) {
  const std::string folder = DirectoryPart(AbsolutePath(truck_path));
  std::string text = std::string(kArchiveKey) + Kept(folder, memory.archive) + "\n";
  text += std::string(kStockKey) + (memory.leaves_out_stock ? "out" : "in") + "\n";
  for (const std::string& file : memory.more_files)
    text += std::string(kFileKey) + Kept(folder, file) + "\n";
  return ReplaceFile(MemoryPath(truck_path), text, error);
}

}  // namespace veldra

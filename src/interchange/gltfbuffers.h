#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "interchange/gltfjson.h"
#include "platform/files.h"

/// Inside the glTF reader: bytes and the numbers in them.
namespace veldra::gltf {

/// Gives the bytes of a file that a mesh file names, or says why it cannot.
using FileReader = std::function<std::optional<CFileBytes>(const std::string& name, SError* error)>;

/// The bytes of "data:...;base64,..."; nothing where TEXT is something else.
std::optional<std::vector<uint8_t>> DecodeDataUri(std::string_view text);
/// "my%20wood.png" as it is meant.
std::string DecodeUri(std::string_view uri);

class CBuffers {
 public:
  /// PACKED are the bytes that stand in the file behind its JSON. All must outlive this.
  CBuffers(const Json& root, std::span<const uint8_t> packed, FileReader read_file)
      : root_(root), packed_(packed), read_file_(std::move(read_file)) {}
  bool Load(std::string& fault);
  /// How many bytes there are.
  uint64_t Size() const { return size_; }
  /// Buffer view INDEX; nothing with FAULT filled where it is not there or leads beyond its buffer.
  std::optional<std::span<const uint8_t>> View(std::optional<size_t> index, std::string& fault) const;

 private:
  bool LoadOne(size_t index, std::string& fault);

  const Json& root_;
  std::span<const uint8_t> packed_;
  FileReader read_file_;
  std::vector<std::vector<uint8_t>> decoded_;
  std::vector<CFileBytes> files_;
  std::vector<std::span<const uint8_t>> buffers_;
  std::map<std::string, std::span<const uint8_t>> by_uri_;  ///< those files
  uint64_t size_ = 0;
};

/// A list of numbers, or of a few numbers each.
class CAccessor {
 public:
  /// Accessor INDEX; false with FAULT filled where it cannot be read.
  bool Open(const Json& root, const CBuffers& buffers, std::optional<size_t> index, std::string& fault);
  size_t Count() const { return count_; }
  size_t Parts() const { return parts_; }
  /// One whole number from 0 on each.
  bool IsIndices() const { return parts_ == 1 && (kind_ == 5121 || kind_ == 5123 || kind_ == 5125); }
  /// Number PART of item I, both in range. Normalized whole numbers come as 0..1 or -1..1.
  double At(size_t i, size_t part) const;
  /// Of IsIndices().
  uint32_t IndexAt(size_t i) const { return static_cast<uint32_t>(RawAt(i, 0)); }

 private:
  static constexpr size_t kFloat = 5126;
  double RawAt(size_t i, size_t part) const;

  std::span<const uint8_t> bytes_;
  size_t count_ = 0;
  size_t parts_ = 1;
  size_t stride_ = 0;
  size_t width_ = 0;
  size_t kind_ = 0;
  bool is_normalized_ = false;
};

}  // namespace veldra::gltf

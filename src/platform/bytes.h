#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace veldra {

/// What is wrong with a file, and where.
struct SDiagnosis {
  size_t offset = 0;  ///< in bytes from the start of the file
  std::string what;   ///< empty: nothing is wrong

  bool Empty() const { return what.empty(); }
  /// "at byte 1234: WHAT"
  std::string Text() const;
};

/// Walks little-endian bytes. A read that would run over the end returns zero and latches the failure: from then on
/// every read returns zero and the position stays where the failed read began, for the diagnosis.
class CByteReader {
 public:
  explicit CByteReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t Size() const { return bytes_.size(); }
  size_t Position() const { return position_; }
  size_t Remaining() const { return bytes_.size() - position_; }
  bool AtEnd() const { return position_ == bytes_.size(); }
  bool Failed() const { return failed_; }

  /// True when COUNT records of WIDTH bytes are left; the product cannot wrap. Ask before memory is reserved.
  bool Holds(size_t count, size_t width) const { return !failed_ && (width == 0 || count <= Remaining() / width); }

  uint8_t ReadU8() { return static_cast<uint8_t>(ReadLittleEndian<1>()); }
  uint16_t ReadU16() { return static_cast<uint16_t>(ReadLittleEndian<2>()); }
  uint32_t ReadU32() { return ReadLittleEndian<4>(); }
  int32_t ReadI32() { return static_cast<int32_t>(ReadLittleEndian<4>()); }
  float ReadF32();

  /// The next COUNT bytes as they lie in the buffer; empty when they are not all there.
  std::span<const uint8_t> ReadBytes(size_t count);
  /// A fixed field of WIDTH bytes: its characters up to the first zero.
  std::string ReadFixedText(size_t width);

  void Skip(size_t count) { ReadBytes(count); }
  /// To an absolute position; beyond the end is a failed read.
  void Seek(size_t position);

 private:
  template <int Width>
  uint32_t ReadLittleEndian() {
    if (failed_ || Remaining() < Width) {
      failed_ = true;
      return 0;
    }
    uint32_t value = 0;
    for (int i = 0; i < Width; ++i)
      value |= static_cast<uint32_t>(bytes_[position_ + static_cast<size_t>(i)]) << (8 * i);
    position_ += Width;
    return value;
  }

  std::span<const uint8_t> bytes_;
  size_t position_ = 0;
  bool failed_ = false;
};

/// Collects little-endian bytes.
class CByteWriter {
 public:
  void Reserve(size_t size) { bytes_.reserve(size); }
  size_t Size() const { return bytes_.size(); }
  std::span<const uint8_t> Bytes() const { return bytes_; }

  void WriteU8(uint8_t value) { bytes_.push_back(value); }
  void WriteU16(uint16_t value);
  void WriteU32(uint32_t value);
  void WriteI32(int32_t value) { WriteU32(static_cast<uint32_t>(value)); }
  void WriteBytes(std::span<const uint8_t> bytes);
  void WriteText(std::string_view text);
  /// A fixed field of WIDTH bytes, zero-padded. A longer TEXT is a programming error.
  void WriteFixedText(std::string_view text, size_t width);

 private:
  std::vector<uint8_t> bytes_;
};

}  // namespace veldra

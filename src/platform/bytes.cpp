#include "platform/bytes.h"

#include <algorithm>
#include <bit>

#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

std::string SDiagnosis::Text() const {
  return Format("at byte %zu: %s", offset, what.c_str());
}

float CByteReader::ReadF32() {
  return std::bit_cast<float>(ReadU32());
}

std::span<const uint8_t> CByteReader::ReadBytes(size_t count) {
  if (failed_ || count > Remaining()) {
    failed_ = true;
    return {};
  }
  const auto bytes = bytes_.subspan(position_, count);
  position_ += count;
  return bytes;
}

std::string CByteReader::ReadFixedText(size_t width) {
  const auto field = ReadBytes(width);
  return {field.begin(), std::find(field.begin(), field.end(), uint8_t{0})};
}

void CByteReader::Seek(size_t position) {
  if (failed_ || position > bytes_.size()) {
    failed_ = true;
    return;
  }
  position_ = position;
}

void CByteWriter::WriteU16(uint16_t value) {
  const uint8_t bytes[] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
  WriteBytes(bytes);
}

void CByteWriter::WriteU32(uint32_t value) {
  const uint8_t bytes[] = {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
                           static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)};
  WriteBytes(bytes);
}

void CByteWriter::WriteBytes(std::span<const uint8_t> bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void CByteWriter::WriteText(std::string_view text) {
  bytes_.insert(bytes_.end(), text.begin(), text.end());
}

void CByteWriter::WriteFixedText(std::string_view text, size_t width) {
  VELDRA_ASSERT(text.size() <= width);
  const std::string_view field = text.substr(0, width);
  WriteText(field);
  bytes_.resize(bytes_.size() + (width - field.size()));
}

}  // namespace veldra

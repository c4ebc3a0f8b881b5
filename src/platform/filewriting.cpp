#include "platform/filewriting.h"

#include <algorithm>
#include <vector>

namespace veldra::disk {

namespace {

/// One write call takes at most this much.
constexpr size_t kPiece = size_t{1} << 20;
/// A copy looks whether it is still wanted this often.
constexpr uint64_t kCopyPiece = uint64_t{8} << 20;
/// What a copy that goes through this program takes at once.
constexpr size_t kCopyBuffer = size_t{1} << 18;

bool WritePiece(Handle to, std::span<const uint8_t>& left, SError* error) {
  size_t count = 0;
  const int number = Write(to, left.first(std::min(left.size(), kPiece)), count);
  if (number != 0) return FailWith(error, number);
  if (count == 0) return Fail(error, "nothing more could be written");
  left = left.subspan(count);
  return true;
}

/// Up to LENGTH bytes through BUFFER; COUNT says how many.
bool CopyThrough(std::vector<uint8_t>& buffer, const CInputFile& from, uint64_t offset, uint64_t length, Handle to,
                 uint64_t& count, SError* error) {
  if (buffer.empty()) buffer.resize(kCopyBuffer);
  const auto piece = std::span(buffer).first(static_cast<size_t>(std::min<uint64_t>(length, kCopyBuffer)));
  count = piece.size();
  if (!from.ReadAt(offset, piece, error)) return false;
  for (std::span<const uint8_t> left = piece; !left.empty();)
    if (!WritePiece(to, left, error)) return false;
  return true;
}

}  // namespace

bool WriteBytes(Handle to, const std::string& path, std::span<const uint8_t> bytes, SError* error) {
  while (!bytes.empty()) {
    const int number = Fault("write", path);
    if (number != 0) return FailWith(error, number);
    if (!WritePiece(to, bytes, error)) return false;
  }
  return true;
}

bool CopyBytes(const CInputFile& from, uint64_t offset, uint64_t length, Handle to, const std::string& path,
               const std::function<bool(uint64_t)>& step, SError* error) {
  std::vector<uint8_t> buffer;
  while (length > 0) {
    uint64_t count = 0;
    int number = Fault("write", path);
    if (number == 0) number = CopyRange(from.SystemHandle(), offset, to, std::min(length, kCopyPiece), count);
    if (number != 0) return FailWith(error, number);
    if (count == 0 && !CopyThrough(buffer, from, offset, length, to, count, error)) return false;
    offset += count;
    length -= count;
    if (!step(count)) return Fail(error, std::string());
  }
  return true;
}

}  // namespace veldra::disk

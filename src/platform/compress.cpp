#include "platform/compress.h"

#include <zlib.h>

#include <algorithm>

#include "platform/assert.h"

namespace veldra {

namespace {

/// zlib counts in 32 bits, so long input is handed to it in pieces.
constexpr size_t kInputPiece = size_t{1} << 30;
constexpr size_t kFirstOutput = size_t{64} << 10;
constexpr size_t kLargestGrowth = size_t{16} << 20;

/// Bytes that grow at their end as zlib fills them.
class COutput {
 public:
  explicit COutput(size_t limit) : limit_(limit) {}

  /// Gives STREAM room to write to; false when the limit is reached.
  bool Offer(z_stream& stream) {
    if (stream.avail_out > 0) return true;
    const size_t old_size = bytes_.size();
    const size_t growth = std::min({std::max(kFirstOutput, old_size), kLargestGrowth, limit_ - old_size});
    if (growth == 0) return false;
    bytes_.resize(old_size + growth);
    stream.next_out = bytes_.data() + old_size;
    stream.avail_out = static_cast<uInt>(growth);
    return true;
  }

  std::vector<uint8_t> Take(const z_stream& stream) {
    bytes_.resize(bytes_.size() - stream.avail_out);
    return std::move(bytes_);
  }

 private:
  std::vector<uint8_t> bytes_;
  size_t limit_;
};

/// Gives STREAM the next piece of LEFT when it has used up the last.
void Feed(z_stream& stream, std::span<const uint8_t>& left) {
  if (stream.avail_in > 0 || left.empty()) return;
  const size_t size = std::min(left.size(), kInputPiece);
  stream.next_in = const_cast<Bytef*>(left.data());  // zlib only reads it
  stream.avail_in = static_cast<uInt>(size);
  left = left.subspan(size);
}

/// Ends STREAM also when memory runs out on the way.
struct SStreamEnd {
  z_stream& stream;
  int (*end)(z_stream*);
  ~SStreamEnd() { end(&stream); }
};

}  // namespace

std::vector<uint8_t> Compress(std::span<const uint8_t> bytes) {
  z_stream stream = {};
  if (deflateInit(&stream, Z_BEST_SPEED) != Z_OK) throw std::bad_alloc();
  const SStreamEnd end{stream, deflateEnd};
  COutput output(SIZE_MAX);
  int result = Z_OK;
  while (result == Z_OK) {
    Feed(stream, bytes);
    output.Offer(stream);
    result = deflate(&stream, bytes.empty() ? Z_FINISH : Z_NO_FLUSH);
  }
  VELDRA_ASSERT(result == Z_STREAM_END);
  return output.Take(stream);
}

std::optional<std::vector<uint8_t>> Decompress(std::span<const uint8_t> bytes, size_t expected_size_limit) {
  z_stream stream = {};
  if (inflateInit(&stream) != Z_OK) return std::nullopt;
  const SStreamEnd end{stream, inflateEnd};
  COutput output(expected_size_limit);
  for (;;) {
    Feed(stream, bytes);
    const bool is_full = !output.Offer(stream);
    // The end mark may still follow when there is no room for a byte more.
    uint8_t beyond = 0;
    if (is_full) {
      stream.next_out = &beyond;
      stream.avail_out = 1;
    }
    const int result = inflate(&stream, Z_NO_FLUSH);
    if (is_full && stream.avail_out == 0) return std::nullopt;
    if (is_full) stream.avail_out = 0;
    if (result == Z_STREAM_END) break;
    if (result != Z_OK) return std::nullopt;
  }
  if (stream.avail_in > 0 || !bytes.empty()) return std::nullopt;
  return output.Take(stream);
}

uint32_t Checksum(std::span<const uint8_t> bytes) {
  return static_cast<uint32_t>(crc32_z(0, bytes.data(), bytes.size()));
}

}  // namespace veldra

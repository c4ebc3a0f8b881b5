#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace veldra {

/// BYTES in zlib's format, packed for speed rather than for the last percent: what is packed here is written again and
/// again while the user works.
std::vector<uint8_t> Compress(std::span<const uint8_t> bytes);

/// What Compress was given. Nothing when BYTES are damaged, cut short, followed by others, or hold more than
/// EXPECTED_SIZE_LIMIT bytes. Memory is taken as the output comes, never because the bytes say so.
std::optional<std::vector<uint8_t>> Decompress(std::span<const uint8_t> bytes, size_t expected_size_limit);

/// CRC-32: differs whenever up to 32 neighbouring bits do.
uint32_t Checksum(std::span<const uint8_t> bytes);

}  // namespace veldra

#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace veldra::testing {

struct SCornerWords {
  uint32_t vertex;
  uint32_t u = 0;
  uint32_t v = 0;
};

/// A model file written word by word, by the layout and not by the code under test.
class CBinBytes {
 public:
  CBinBytes& Words(std::initializer_list<uint32_t> words) {
    for (const uint32_t word : words) {
      for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<uint8_t>(word >> shift));
    }
    return *this;
  }
  CBinBytes& Point(int32_t x, int32_t y, int32_t z) {
    return Words({static_cast<uint32_t>(x), static_cast<uint32_t>(y), static_cast<uint32_t>(z)});
  }
  CBinBytes& Text(std::string_view text, size_t width) {
    bytes.insert(bytes.end(), text.begin(), text.end());
    bytes.resize(bytes.size() + width - text.size());
    return *this;
  }
  /// COUNT vertices, vertex i at (i, 10 * i, i * i).
  CBinBytes& Header(int32_t count, uint32_t type = 0x14, uint32_t scale = 0x10000) {
    Words({type, scale, 2, 0, static_cast<uint32_t>(count)});
    for (int32_t i = 0; i < count; ++i)
      Point(i, 10 * i, i * i);
    return *this;
  }
  CBinBytes& Texture(std::string_view name) { return Words({0x0D, 0}).Text(name, 16); }
  CBinBytes& Animation(std::initializer_list<std::string_view> frames, uint32_t period) {
    Words({0x1D, 0, static_cast<uint32_t>(frames.size()), 0, period, 0, 0});
    for (const std::string_view frame : frames)
      Text(frame, 32);
    return *this;
  }
  CBinBytes& Face(uint32_t type, std::initializer_list<SCornerWords> corners) {
    return FaceHead(type, static_cast<uint32_t>(corners.size()), 1, 2, 3, 4).Corners(type, corners);
  }
  CBinBytes& FaceHead(uint32_t type, uint32_t count, int32_t x, int32_t y, int32_t z, int32_t magic) {
    return Words({type, count}).Point(x, y, z).Words({static_cast<uint32_t>(magic)});
  }
  CBinBytes& Corners(uint32_t type, std::initializer_list<SCornerWords> corners) {
    for (const SCornerWords& corner : corners) {
      Words({corner.vertex});
      if (type != 0x19) Words({corner.u, corner.v});
    }
    return *this;
  }
  CBinBytes& End() { return Words({0}); }

  std::vector<uint8_t> bytes;
};

}  // namespace veldra::testing

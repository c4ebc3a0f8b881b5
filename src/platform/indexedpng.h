#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace veldra {

/// A picture whose pixels are positions in a table of colours.
struct SIndexedImage {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> indices;          ///< a byte a pixel, the top row first
  std::array<uint8_t, 1024> table = {};  ///< 256 entries of red, green, blue, alpha
};

/// A PNG with a table of colours as it is, of any depth; the entries that its table lacks are black. Nothing, ERROR
/// empty, for a PNG without one.
std::optional<SIndexedImage> ReadIndexedPng(std::string_view path, SError* error = nullptr);
/// The same from the bytes of a file.
std::optional<SIndexedImage> DecodeIndexedPng(std::span<const uint8_t> png, SError* error = nullptr);
/// Replaces PATH by the picture, all or nothing: 8 bits a pixel, and all 256 entries of the table in their order.
bool WriteIndexedPng(std::string_view path, const SIndexedImage& image, SError* error = nullptr);
/// The same into PNG.
bool EncodeIndexedPng(const SIndexedImage& image, std::vector<uint8_t>& png, SError* error = nullptr);

}  // namespace veldra

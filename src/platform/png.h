#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace veldra {

/// Four bytes a pixel: red, green, blue, alpha; the top row first.
struct SImage {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> rgba;
};

inline constexpr int kLargestImageSide = 16384;

/// Any PNG, whatever its depth and colour type, as RGBA with 8 bits a channel. Refused when a side exceeds
/// kLargestImageSide, before memory is taken.
std::optional<SImage> ReadPng(std::string_view path, SError* error = nullptr);
/// The same from the bytes of a file.
std::optional<SImage> DecodePng(std::span<const uint8_t> png, SError* error = nullptr);
/// Only the sides, of which the header tells; RGBA stays empty.
std::optional<SImage> ReadPngSize(std::string_view path, SError* error = nullptr);
std::optional<SImage> DecodePngSize(std::span<const uint8_t> png, SError* error = nullptr);
/// Replaces PATH by the picture, all or nothing.
bool WritePng(std::string_view path, const SImage& image, SError* error = nullptr);

}  // namespace veldra

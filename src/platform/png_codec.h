#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/indexedpng.h"
#include "platform/png.h"

/// What the two systems' PNG libraries do for png.cpp. May throw std::bad_alloc.
namespace veldra::png_codec {

/// Fills IMAGE, whose sides and bytes are already those of the PNG. False with ERROR when the PNG is damaged.
bool Decode(std::span<const uint8_t> png, SImage& image, SError* error);
/// "" in PNG and false when the system's library refuses.
bool Encode(const SImage& image, std::vector<uint8_t>& png, SError* error);
/// The same for a PNG with a table of colours.
bool Decode(std::span<const uint8_t> png, SIndexedImage& image, SError* error);
bool Encode(const SIndexedImage& image, std::vector<uint8_t>& png, SError* error);

}  // namespace veldra::png_codec

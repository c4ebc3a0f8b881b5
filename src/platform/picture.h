#pragma once

#include <optional>
#include <string_view>

#include "platform/png.h"

/// Pictures of other programs.
namespace veldra {

/// A PNG, JPEG, BMP or TGA picture, told apart by what is in the file; only a TGA, which has no mark, by its extension
/// too. A TGA whose pixels all are transparent comes without the transparency: many programs leave it unused. Refused
/// when it is larger than kLargestPicture pixels or far larger than its file can be, before memory is taken.
std::optional<SImage> ReadPicture(std::string_view path, SError* error = nullptr);
/// The same from the bytes of a file; IS_TGA is what its extension says.
std::optional<SImage> DecodePicture(std::span<const uint8_t> bytes, bool is_tga, SError* error = nullptr);
/// Only the sides; RGBA stays empty.
std::optional<SImage> ReadPictureSize(std::string_view path, SError* error = nullptr);
std::optional<SImage> DecodePictureSize(std::span<const uint8_t> bytes, bool is_tga, SError* error = nullptr);

/// What files of pictures are called.
inline constexpr const char* kPicturePatterns = "*.png *.jpg *.jpeg *.bmp *.tga";
bool IsPictureName(std::string_view path);

inline constexpr uint64_t kLargestPicture = uint64_t{64} << 20;

}  // namespace veldra

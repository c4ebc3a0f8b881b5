#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/png.h"

namespace veldra {

/// What is read of a file at most.
inline constexpr size_t kLargestThumbnailFile = size_t{256} << 20;

/// Lets PROGRAM, the command line, draw the small picture of a file that is called NAME and holds BYTES, in a process
/// of its own that ends with the one that wants the picture, after some seconds, and where it takes too much memory:
/// what the file does to it, it does to nobody else. Nothing when there is no picture.
std::optional<SImage> MakeThumbnail(const std::wstring& program, const std::wstring& name,
                                    std::span<const uint8_t> bytes, unsigned side);

}  // namespace veldra

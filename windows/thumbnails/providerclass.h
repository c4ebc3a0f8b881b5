#pragma once

#include <guiddef.h>

namespace veldra {

/// {6F0B7E55-9C0E-4B9B-8A1D-2C7D0F6C3E41}, by which the system knows the library; the installer writes it into the
/// registry.
inline constexpr GUID kThumbnailProvider = {
    0x6F0B7E55, 0x9C0E, 0x4B9B, {0x8A, 0x1D, 0x2C, 0x7D, 0x0F, 0x6C, 0x3E, 0x41}};

}  // namespace veldra

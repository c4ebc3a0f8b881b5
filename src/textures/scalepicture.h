#pragma once

#include <cstdint>
#include <vector>

#include "platform/png.h"

namespace veldra {

enum class EScaling { kSmooth, kNearest };

/// IMAGE with another width and height. Smooth: transparent pixels lend their neighbours no colour.
SImage ScalePicture(const SImage& image, int width, int height, EScaling scaling);

/// INDICES (WIDTH a row) as a square of SIZE, each the nearest one.
std::vector<uint8_t> ScaleIndices(const std::vector<uint8_t>& indices, int width, int height, int size);

}  // namespace veldra

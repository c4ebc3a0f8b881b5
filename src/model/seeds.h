#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/questions.h"

namespace veldra {

/// x, y, z, each as the 32 bits of the signed number.
using WrappedPoint = std::array<uint32_t, 3>;

/// For each position the index of the seed that takes it (its own where it is a seed): in index order a position joins
/// the lowest seed within reach, or becomes a seed. Within reach: the sum s of the squared differences, computed in
/// wrapping 32-bit arithmetic, is not negative and trunc(sqrt(s)) <= THRESHOLD. POSITIONS is used up.
/// Empty when PROGRESS (may be null) was stopped.
std::vector<int32_t> AssignSeeds(std::vector<WrappedPoint> positions, int32_t threshold, CProgress* progress = nullptr);

}  // namespace veldra

#pragma once

#include <string_view>

namespace veldra::samples {

/// How far the point (X, Y) lies from the strokes of TEXT, whose letters are 1 high, stand on y = 0 and begin at x = 0;
/// y grows upwards. Capitals and digits; anything else is a blank. Far away: some large number.
double TextDistance(std::string_view text, double x, double y);

double TextWidth(std::string_view text);

}  // namespace veldra::samples

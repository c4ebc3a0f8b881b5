#include "samples/lettering.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldra::samples {

namespace {

constexpr double kFar = 1000.0;
constexpr double kUnit = 1.0 / 6.0;           ///< the grid of the strokes: letters are 6 high and 4 wide
constexpr double kAdvance = (4 + 2) * kUnit;  ///< from one letter to the next

/// Strokes as polylines of points, two digits (x, y) a point; a blank lifts the pen.
const char* StrokesOf(char letter) {
  static constexpr std::array<const char*, 26> kLetters = {"002640 1232",
                                                           "00063645443303 3342413000",
                                                           "4536160501103041",
                                                           "00062644422000",
                                                           "46060040 0333",
                                                           "460600 0333",
                                                           "45361605011030414323",
                                                           "0006 4046 0343",
                                                           "2026",
                                                           "464130100102",
                                                           "0006 460340",
                                                           "060040",
                                                           "0006234640",
                                                           "00064046",
                                                           "160501103041453616",
                                                           "00063645443303",
                                                           "160501103041453616 2240",
                                                           "00063645443303 2340",
                                                           "453616050413334241301001",
                                                           "0646 2620",
                                                           "060110304146",
                                                           "062046",
                                                           "0610233046",
                                                           "0046 0640",
                                                           "062346 2320",
                                                           "06460040"};
  static constexpr std::array<const char*, 10> kDigits = {
      "160501103041453616 0145",    "152620 1030", "05163645440040",
      "05163645443342413010011323", "30360242",    "4606043443413010",
      "4536160501103041423303",     "064620",      "130405163645443313 1302011030414233",
      "0110304145361605041343"};
  if (letter >= 'A' && letter <= 'Z') return kLetters[static_cast<size_t>(letter - 'A')];
  if (letter >= '0' && letter <= '9') return kDigits[static_cast<size_t>(letter - '0')];
  return "";
}

double SegmentDistance(double x, double y, double x0, double y0, double x1, double y1) {
  const double dx = x1 - x0;
  const double dy = y1 - y0;
  const double along = std::clamp(((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
  return std::hypot(x - x0 - along * dx, y - y0 - along * dy);
}

double LetterDistance(char letter, double x, double y) {
  const auto at = [](const char* digit) { return (*digit - '0') * kUnit; };
  double nearest = kFar;
  for (const char* point = StrokesOf(letter); *point != '\0';) {
    if (point[2] == '\0') break;
    if (point[2] == ' ') {
      point += 3;
      continue;
    }
    nearest = std::min(nearest, SegmentDistance(x, y, at(point), at(point + 1), at(point + 2), at(point + 3)));
    point += 2;
  }
  return nearest;
}

}  // namespace

double TextDistance(std::string_view text, double x, double y) {
  if (y < -1.0 || y > 2.0) return kFar;
  const int here = static_cast<int>(std::floor(x / kAdvance));
  double nearest = kFar;
  for (int i = std::max(here - 1, 0); i <= here + 1 && i < static_cast<int>(text.size()); ++i) {
    nearest = std::min(nearest, LetterDistance(text[static_cast<size_t>(i)], x - i * kAdvance, y));
  }
  return nearest;
}

double TextWidth(std::string_view text) {
  return static_cast<double>(text.size()) * kAdvance - 2 * kUnit;
}

}  // namespace veldra::samples

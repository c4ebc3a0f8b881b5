#include "mapping/texeltransforms.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/text.h"

namespace veldra {

namespace {

template <typename Change>
Texels Each(std::span<const STexel> points, Change&& change) {
  Texels changed;
  changed.reserve(points.size());
  for (const STexel& at : points)
    changed.push_back(change(at));
  return changed;
}

/// Exactly 0, 1 or -1 at multiples of 90 degrees.
double CleanSine(double degrees) {
  const double quarters = degrees / 90.0;
  if (quarters == std::round(quarters)) {
    constexpr double kSines[] = {0, 1, 0, -1};
    return kSines[static_cast<size_t>(std::fmod(std::fmod(quarters, 4.0) + 4.0, 4.0))];
  }
  return std::sin(degrees * std::numbers::pi / 180.0);
}

double StretchedValue(double value, double low, double high, double to_low, double to_high) {
  if (high <= low) return (to_low + to_high) / 2;
  return to_low + (value - low) * (to_high - to_low) / (high - low);
}

/// What brings LOW to HIGH within 0 to LAST; LOW to 0 where there is no room.
double IntoRange(double low, double high, double last) {
  if (low < 0 || high - low > last) return -low;
  return high > last ? last - high : 0.0;
}

struct SRange {
  double low = 0.0;
  double high = 0.0;
};

/// The whole of WIDTH, its halves, its thirds and its quarters.
std::vector<SRange> RangesOf(int width) {
  std::vector<SRange> ranges;
  for (int parts = 1; parts <= 4; ++parts) {
    for (int i = 0; i < parts; ++i) {
      const STexelRect part = PartOf(width, parts, i, 0);
      ranges.push_back({part.min.x, part.max.x});
    }
  }
  return ranges;
}

/// How far RANGE has to go to lie against the low side (-1), the middle (0) or the high side (1) of IN.
double Missing(const SRange& range, const SRange& in, int side) {
  if (side < 0) return in.low - range.low;
  if (side > 0) return in.high - range.high;
  return std::floor((in.low + in.high - (range.high - range.low)) / 2) - range.low;
}

double MissingAt(const SRange& range, int side, int width, int press) {
  std::vector<double> ways;
  for (const SRange& in : RangesOf(width)) {
    const double way = Missing(range, in, side);
    const bool stays_on = range.low + way >= 0 && range.high + way <= width - 1;
    if (!stays_on && !ways.empty()) continue;
    if (std::ranges::none_of(ways, [way](double known) { return std::abs(known - way) < 0.5; })) ways.push_back(way);
  }
  return ways[static_cast<size_t>(press) % ways.size()];
}

/// Twice the area; above 0 where the corners run clockwise for who looks at the texture.
double SignedArea(std::span<const STexel> outline) {
  double area = 0.0;
  for (size_t i = 0; i < outline.size(); ++i) {
    const STexel& a = outline[i];
    const STexel& b = outline[(i + 1) % outline.size()];
    area += a.x * b.y - b.x * a.y;
  }
  return area;
}

/// -180 to 180.
double Least(double degrees) {
  return degrees - 360.0 * std::round(degrees / 360.0);
}

}  // namespace

Texels Moved(std::span<const STexel> points, const STexel& by) {
  return Each(points, [&](const STexel& at) { return at + by; });
}

Texels Turned(std::span<const STexel> points, const STexel& pivot, double degrees) {
  const double sine = CleanSine(degrees);
  const double cosine = CleanSine(degrees + 90.0);
  return Each(points, [&](const STexel& at) {
    const STexel from = at - pivot;
    return pivot + STexel{from.x * cosine - from.y * sine, from.x * sine + from.y * cosine};
  });
}

Texels Scaled(std::span<const STexel> points, const STexel& pivot, double across, double down) {
  return Each(points, [&](const STexel& at) {
    return STexel{pivot.x + (at.x - pivot.x) * across, pivot.y + (at.y - pivot.y) * down};
  });
}

Texels Flipped(std::span<const STexel> points, ETexelAxis axis) {
  const STexelRect bounds = BoundsOf(points);
  const bool is_across = axis == ETexelAxis::kAcross;
  return Each(points, [&](const STexel& at) {
    return is_across ? STexel{bounds.min.x + bounds.max.x - at.x, at.y}
                     : STexel{at.x, bounds.min.y + bounds.max.y - at.y};
  });
}

Texels Stretched(std::span<const STexel> points, const STexelRect& area) {
  const auto [low, high] = BoundsOf(points);
  return Each(points, [low = low, high = high, &area](const STexel& at) {
    return STexel{StretchedValue(at.x, low.x, high.x, area.min.x, area.max.x),
                  StretchedValue(at.y, low.y, high.y, area.min.y, area.max.y)};
  });
}

Texels Snapped(std::span<const STexel> points) {
  return Each(points, Rounded);
}

Texels Straightened(std::span<const STexel> points) {
  const STexelRect bounds = BoundsOf(points);
  const STexel middle = Rounded(bounds.Middle());
  const bool is_level = bounds.Width() >= bounds.Height();
  return Each(points, [&](const STexel& at) { return is_level ? STexel{at.x, middle.y} : STexel{middle.x, at.y}; });
}

Texels KeptInside(std::span<const STexel> points, int width) {
  const double last = width - 1;
  const STexelRect bounds = BoundsOf(points);
  const double largest = std::max(bounds.Width(), bounds.Height());
  if (largest > last)
    return KeptInside(Scaled(points, bounds.min, last / largest * (1 - 1e-12), last / largest * (1 - 1e-12)), width);
  return Moved(points, {IntoRange(bounds.min.x, bounds.max.x, last), IntoRange(bounds.min.y, bounds.max.y, last)});
}

STexel StoppedAtEdge(const STexelRect& bounds, const STexel& by, int width) {
  const double last = width - 1;
  return {std::clamp(by.x, std::min(-bounds.min.x, 0.0), std::max(last - bounds.max.x, 0.0)),
          std::clamp(by.y, std::min(-bounds.min.y, 0.0), std::max(last - bounds.max.y, 0.0))};
}

// --- Parts -----------------------------------------------------------------------------------------------------------

STexelRect PartOf(int width, int parts, int column, int row) {
  const auto edge = [&](int i) { return std::floor(static_cast<double>(i) * width / parts); };
  return {{edge(column), edge(row)}, {edge(column + 1) - 1, edge(row + 1) - 1}};
}

std::vector<STexturePart> TextureParts(int width) {
  std::vector<STexturePart> parts = {{WholeTexture(width), "the whole texture"}};
  for (const int side : {2, 3}) {
    const char* const name = side == 2 ? "quarter" : "ninth";
    for (int i = 0; i < side * side; ++i)
      parts.push_back({PartOf(width, side, i % side, i / side), Format("%s %d of %d", name, i + 1, side * side)});
  }
  return parts;
}

STexel JustifyOffset(const STexelRect& bounds, EJustify side, int width, int press) {
  const SRange across = {bounds.min.x, bounds.max.x};
  const SRange down = {bounds.min.y, bounds.max.y};
  switch (side) {
    case EJustify::kLeft:
      return {MissingAt(across, -1, width, press), 0};
    case EJustify::kCenter:
      return {MissingAt(across, 0, width, press), 0};
    case EJustify::kRight:
      return {MissingAt(across, 1, width, press), 0};
    case EJustify::kTop:
      return {0, MissingAt(down, -1, width, press)};
    case EJustify::kMiddle:
      return {0, MissingAt(down, 0, width, press)};
    case EJustify::kBottom:
      break;
  }
  return {0, MissingAt(down, 1, width, press)};
}

double AlignAngle(std::span<const STexel> outline) {
  // The lowest edge of corners that run clockwise leads to the left.
  const double wanted = SignedArea(outline) > 0 ? 180.0 : 0.0;
  struct SEdge {
    double angle;
    double off;  ///< level, in texels
  };
  std::vector<SEdge> edges;
  for (size_t i = 0; i < outline.size(); ++i) {
    const STexel along = outline[(i + 1) % outline.size()] - outline[i];
    if (along == STexel{}) continue;
    edges.push_back({Least(wanted - std::atan2(along.y, along.x) * 180.0 / std::numbers::pi), std::abs(along.y)});
  }
  if (edges.empty()) return 0.0;
  const auto nearest = std::ranges::min_element(edges, {}, [](const SEdge& edge) { return std::abs(edge.angle); });
  if (nearest->off >= 0.5 || std::abs(nearest->angle) > 45.0) return nearest->angle;
  return nearest + 1 == edges.end() ? edges.front().angle : (nearest + 1)->angle;
}

}  // namespace veldra

#include "mapping/texelsnap.h"

#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

/// The way from one of FROM to the nearest of LINES within REACH.
std::optional<double> NearestLine(std::span<const double> from, std::span<const double> lines, double reach) {
  std::optional<double> nearest;
  for (const double line : lines) {
    for (const double value : from) {
      const double way = line - value;
      if (std::abs(way) <= reach && (!nearest || std::abs(way) < std::abs(*nearest))) nearest = way;
    }
  }
  return nearest;
}

std::optional<STexel> NearestCorner(const STexel& at, std::span<const STexel> corners, double reach) {
  std::optional<STexel> nearest;
  for (const STexel& corner : corners)
    if (Distance(at, corner) <= reach && (!nearest || Distance(at, corner) < Distance(at, *nearest))) nearest = corner;
  return nearest;
}

}  // namespace

STexel SnappedOffset(const SDragged& dragged, const STexel& by, const STexelSnap& snap) {
  if (dragged.grabbed) {
    if (const auto corner = NearestCorner(*dragged.grabbed + by, snap.corners, snap.reach))
      return *corner - *dragged.grabbed;
  }
  const STexel low = dragged.grabbed ? *dragged.grabbed : dragged.bounds.min;
  const STexel high = dragged.grabbed ? *dragged.grabbed : dragged.bounds.max;
  const auto along = [&](double way, double from, double to, const std::vector<double>* lines) {
    const double places[] = {from + way, to + way, (from + to) / 2 + way};
    if (lines != nullptr)
      if (const auto missing = NearestLine(places, *lines, snap.reach)) return way + *missing;
    return snap.to_texels ? std::round(from + way) - from : way;
  };
  return {along(by.x, low.x, high.x, snap.guides == nullptr ? nullptr : &snap.guides->across),
          along(by.y, low.y, high.y, snap.guides == nullptr ? nullptr : &snap.guides->down)};
}

}  // namespace veldra

#include "mapping/islandtools.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace veldra {

namespace {

/// For each point of FACES the island it belongs to.
std::vector<int32_t> IslandOfPoints(const CMappedFaces& faces) {
  std::vector<int32_t> islands(faces.Points().size(), 0);
  for (const SMappedFace& face : faces.Faces())
    for (int k = 0; k < face.corners; ++k)
      islands[static_cast<size_t>(face.points[static_cast<size_t>(k)])] = face.island;
  return islands;
}

struct SPiece {
  STexelRect bounds;
  STexel corner;  ///< where its upper left one comes
};

/// In rows, from the highest piece to the lowest. False: they have no room.
bool PlaceInRows(std::vector<SPiece*>& pieces, const STexelRect& area, double gap, double scale) {
  double x = area.min.x;
  double y = area.min.y;
  double row = 0.0;
  for (SPiece* piece : pieces) {
    const double width = std::ceil(piece->bounds.Width() * scale);
    const double height = std::ceil(piece->bounds.Height() * scale);
    if (x + width > area.max.x && x > area.min.x) {
      x = area.min.x;
      y += row + gap;
      row = 0.0;
    }
    if (x + width > area.max.x || y + height > area.max.y) return false;
    piece->corner = {x, y};
    x += width + gap;
    row = std::max(row, height);
  }
  return true;
}

double LargestScale(std::vector<SPiece*>& pieces, const STexelRect& area, double gap) {
  double low = 0.0;
  double high = 1.0;
  while (high < 1e3 && PlaceInRows(pieces, area, gap, high))
    high *= 2;
  constexpr int kSteps = 40;
  for (int i = 0; i < kSteps; ++i) {
    const double scale = (low + high) / 2;
    (PlaceInRows(pieces, area, gap, scale) ? low : high) = scale;
  }
  PlaceInRows(pieces, area, gap, low);
  return low;
}

// --- Sewing ----------------------------------------------------------------------------------------------------------

struct SEdge {
  int32_t a;  ///< vertices of the model, a below b
  int32_t b;
  auto operator<=>(const SEdge&) const = default;
};

struct SPlacedEdge {
  STexel a;
  STexel b;
};

/// A turn with a scale, about the origin, and a move.
struct SSimilarity {
  double cosine = 1.0;
  double sine = 0.0;
  STexel by;
  STexel Of(const STexel& at) const { return {at.x * cosine - at.y * sine + by.x, at.x * sine + at.y * cosine + by.y}; }
};

std::optional<SSimilarity> Onto(const SPlacedEdge& from, const SPlacedEdge& to) {
  const STexel f = from.b - from.a;
  const STexel t = to.b - to.a;
  const double squares = f.x * f.x + f.y * f.y;
  if (squares == 0.0) return std::nullopt;
  SSimilarity way = {(f.x * t.x + f.y * t.y) / squares, (f.x * t.y - f.y * t.x) / squares, {}};
  way.by = to.a - way.Of(from.a);
  return way;
}

class CSewing {
 public:
  explicit CSewing(const CMappedFaces& faces) : faces_(faces) {
    for (const SMappedFace& face : faces.Faces())
      if (face.is_selected) islands_[face.island].push_back(&face);
  }

  std::map<int32_t, SSimilarity> Run() {
    std::map<int32_t, SSimilarity> ways;
    if (islands_.empty()) return ways;
    const int32_t first = std::ranges::find_if(faces_.Faces(), &SMappedFace::is_selected)->island;
    Settle(first, ways[first] = {});
    bool is_any = true;
    while (is_any) {
      is_any = false;
      for (const auto& [island, members] : islands_) {
        if (ways.contains(island)) continue;
        const auto way = WayOf(members);
        if (!way) continue;
        Settle(island, ways[island] = *way);
        is_any = true;
      }
    }
    return ways;
  }

 private:
  template <typename Take>
  void ForEdges(const SMappedFace& face, Take&& take) const {
    const auto points = faces_.Points();
    for (int k = 0; k < face.corners; ++k) {
      const SMappedPoint& a = points[static_cast<size_t>(face.points[static_cast<size_t>(k)])];
      const SMappedPoint& b = points[static_cast<size_t>(face.points[static_cast<size_t>((k + 1) % face.corners)])];
      a.vertex < b.vertex ? take(SEdge{a.vertex, b.vertex}, SPlacedEdge{a.at, b.at})
                          : take(SEdge{b.vertex, a.vertex}, SPlacedEdge{b.at, a.at});
    }
  }

  void Settle(int32_t island, const SSimilarity& way) {
    for (const SMappedFace* face : islands_[island])
      ForEdges(*face, [&](const SEdge& edge, const SPlacedEdge& at) { placed_[edge] = {way.Of(at.a), way.Of(at.b)}; });
  }

  /// By the longest edge that it has in common with what is placed.
  std::optional<SSimilarity> WayOf(const std::vector<const SMappedFace*>& members) const {
    std::optional<SSimilarity> best;
    double longest = 0.0;
    for (const SMappedFace* face : members) {
      ForEdges(*face, [&](const SEdge& edge, const SPlacedEdge& at) {
        const auto placed = placed_.find(edge);
        if (placed == placed_.end() || Distance(placed->second.a, placed->second.b) <= longest) return;
        if (const auto way = Onto(at, placed->second)) best = way;
        if (best) longest = Distance(placed->second.a, placed->second.b);
      });
    }
    return best;
  }

  const CMappedFaces& faces_;
  std::map<int32_t, std::vector<const SMappedFace*>> islands_;
  std::map<SEdge, SPlacedEdge> placed_;
};

}  // namespace

Texels Welded(const CMappedFaces& faces, std::span<const int32_t> points) {
  std::map<int32_t, std::pair<STexel, int>> sums;
  for (const int32_t point : points) {
    const SMappedPoint& at = faces.Points()[static_cast<size_t>(point)];
    auto& [sum, count] = sums[at.vertex];
    sum = sum + at.at;
    ++count;
  }
  Texels places;
  for (const int32_t point : points) {
    const auto& [sum, count] = sums[faces.Points()[static_cast<size_t>(point)].vertex];
    places.push_back({sum.x / count, sum.y / count});
  }
  return places;
}

Texels Packed(const CMappedFaces& faces, std::span<const int32_t> points, const STexelRect& area, double gap) {
  const std::vector<int32_t> islands = IslandOfPoints(faces);
  std::map<int32_t, Texels> members;
  for (const int32_t point : points)
    members[islands[static_cast<size_t>(point)]].push_back(faces.Points()[static_cast<size_t>(point)].at);
  std::map<int32_t, SPiece> pieces;
  std::vector<SPiece*> order;
  order.reserve(members.size());
  for (const auto& [island, places] : members)
    order.push_back(&(pieces[island] = {BoundsOf(places), {}}));
  std::ranges::stable_sort(order, std::greater(), [](const SPiece* piece) { return piece->bounds.Height(); });
  const double scale = LargestScale(order, area, gap);
  Texels places;
  for (const int32_t point : points) {
    const SPiece& piece = pieces[islands[static_cast<size_t>(point)]];
    const STexel from = faces.Points()[static_cast<size_t>(point)].at - piece.bounds.min;
    places.push_back(piece.corner + STexel{from.x * scale, from.y * scale});
  }
  return places;
}

Texels Sewn(const CMappedFaces& faces, std::span<const int32_t> points) {
  const std::vector<int32_t> islands = IslandOfPoints(faces);
  const std::map<int32_t, SSimilarity> ways = CSewing(faces).Run();
  Texels places;
  for (const int32_t point : points) {
    const STexel& at = faces.Points()[static_cast<size_t>(point)].at;
    const auto way = ways.find(islands[static_cast<size_t>(point)]);
    const STexel to = way == ways.end() ? at : way->second.Of(at);
    // What lies in one place has to be rounded to one texel.
    places.push_back({std::round(to.x * 1e6) / 1e6, std::round(to.y * 1e6) / 1e6});
  }
  return places;
}

}  // namespace veldra

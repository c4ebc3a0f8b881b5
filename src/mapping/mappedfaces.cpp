#include "mapping/mappedfaces.h"

#include <algorithm>
#include <numeric>

namespace veldra {

namespace {

struct SPointKey {
  int32_t vertex;
  int32_t cut;
  STexel at;
  bool operator==(const SPointKey&) const = default;
};

struct SPointHash {
  size_t operator()(const SPointKey& key) const {
    const std::hash<double> hash;
    size_t mixed = static_cast<size_t>(key.vertex) * 0x9E3779B97F4A7C15u + static_cast<size_t>(key.cut);
    mixed = mixed * 31 + hash(key.at.x);
    return mixed * 31 + hash(key.at.y);
  }
};

template <typename Items>
void ApplySelection(Items& items, std::span<const int32_t> wanted, ESelect how) {
  if (how == ESelect::kOnly)
    for (auto& item : items)
      item.is_selected = false;
  for (const int32_t index : wanted) {
    bool& mark = items[static_cast<size_t>(index)].is_selected;
    mark = how != ESelect::kToggle || !mark;
  }
}

template <typename Items>
std::vector<int32_t> SelectedOf(const Items& items) {
  std::vector<int32_t> selected;
  for (size_t i = 0; i < items.size(); ++i)
    if (items[i].is_selected) selected.push_back(static_cast<int32_t>(i));
  return selected;
}

double Cross(const STexel& a, const STexel& b, const STexel& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool Covers(std::span<const STexel> outline, const STexel& at) {
  bool is_inside = false;
  for (size_t i = 0, before = outline.size() - 1; i < outline.size(); before = i++) {
    const STexel& a = outline[i];
    const STexel& b = outline[before];
    if ((a.y > at.y) == (b.y > at.y)) continue;
    if (at.x < (b.x - a.x) * (at.y - a.y) / (b.y - a.y) + a.x) is_inside = !is_inside;
  }
  return is_inside;
}

/// The line from A to B has a point in AREA.
bool Meets(const STexelRect& area, const STexel& a, const STexel& b) {
  if (std::max(a.x, b.x) < area.min.x || std::min(a.x, b.x) > area.max.x) return false;
  if (std::max(a.y, b.y) < area.min.y || std::min(a.y, b.y) > area.max.y) return false;
  const double sides[] = {Cross(a, b, area.min), Cross(a, b, area.max), Cross(a, b, {area.min.x, area.max.y}),
                          Cross(a, b, {area.max.x, area.min.y})};
  const auto [least, most] = std::ranges::minmax(sides);
  return least <= 0 && most >= 0;
}

bool Touches(const STexelRect& area, std::span<const STexel> outline) {
  for (size_t i = 0, before = outline.size() - 1; i < outline.size(); before = i++)
    if (Meets(area, outline[before], outline[i])) return true;
  return Covers(outline, area.Middle());
}

int32_t Root(std::vector<int32_t>& parents, int32_t item) {
  auto at = static_cast<size_t>(item);
  while (parents[at] != static_cast<int32_t>(at)) {
    parents[at] = parents[static_cast<size_t>(parents[at])];
    at = static_cast<size_t>(parents[at]);
  }
  return static_cast<int32_t>(at);
}

}  // namespace

// --- Taking and finding points ---------------------------------------------------------------------------------------

void CMappedFaces::Take(const CBinModel& model, std::span<const int32_t> faces, int width) {
  const bool is_same = width == width_ && std::ranges::equal(faces, faces_, {}, {}, &SMappedFace::index);
  std::unordered_map<int64_t, bool> was_selected;
  std::unordered_map<int32_t, bool> was_face_selected;
  for (const SMappedFace& face : faces_) {
    was_face_selected[face.index] = face.is_selected;
    for (int k = 0; k < face.corners; ++k)
      was_selected[Key(face.index, k)] = points_[static_cast<size_t>(face.points[static_cast<size_t>(k)])].is_selected;
  }
  width_ = width;
  faces_.clear();
  std::vector<SPlaced> placed;
  bool is_any = false;
  for (const int32_t index : faces) {
    const CBinFace& face = model.Face(index);
    const auto known = was_face_selected.find(index);
    faces_.push_back({.index = index,
                      .corners = face.CornerCount(),
                      .is_selected = known != was_face_selected.end() && known->second});
    for (int k = 0; k < face.CornerCount(); ++k) {
      const auto corner = was_selected.find(Key(index, k));
      placed.push_back(
          {face.Corner(k)->Index(), TexelOf(face.TexCoord(k), width), corner != was_selected.end() && corner->second});
      is_any = is_any || placed.back().is_selected;
    }
  }
  FindPoints(placed);
  if (!is_any && !is_same) SelectAll(true);
}

/// In the order in which FindPoints wants them.
std::vector<CMappedFaces::SPlaced> CMappedFaces::Placed() const {
  std::vector<SPlaced> placed;
  placed.reserve(corners_.size());
  for (const SMappedFace& face : faces_) {
    for (int k = 0; k < face.corners; ++k) {
      const SMappedPoint& point = points_[static_cast<size_t>(face.points[static_cast<size_t>(k)])];
      placed.push_back({point.vertex, point.at, point.is_selected});
    }
  }
  return placed;
}

/// PLACED: each corner of each face, in order.
void CMappedFaces::FindPoints(std::span<const SPlaced> placed) {
  std::unordered_map<SPointKey, int32_t, SPointHash> known;
  known.reserve(placed.size());
  points_.clear();
  size_t next = 0;
  for (SMappedFace& face : faces_) {
    for (int k = 0; k < face.corners; ++k) {
      const SPlaced& corner = placed[next++];
      const auto cut = cuts_.empty() ? cuts_.end() : cuts_.find(Key(face.index, k));
      const SPointKey key = {corner.vertex, cut == cuts_.end() ? 0 : cut->second, corner.at};
      const auto [found, is_new] = known.try_emplace(key, static_cast<int32_t>(points_.size()));
      if (is_new) points_.push_back({.at = corner.at, .vertex = corner.vertex});
      SMappedPoint& point = points_[static_cast<size_t>(found->second)];
      point.is_selected = point.is_selected || corner.is_selected;
      face.points[static_cast<size_t>(k)] = found->second;
    }
  }
  ListCorners();
  FindIslands();
}

void CMappedFaces::ListCorners() {
  first_.assign(points_.size() + 1, 0);
  for (const SMappedFace& face : faces_)
    for (int k = 0; k < face.corners; ++k)
      ++first_[static_cast<size_t>(face.points[static_cast<size_t>(k)]) + 1];
  std::partial_sum(first_.begin(), first_.end(), first_.begin());
  corners_.resize(first_.back());
  std::vector<size_t> next(first_.begin(), first_.end() - 1);
  for (size_t i = 0; i < faces_.size(); ++i)
    for (int k = 0; k < faces_[i].corners; ++k)
      corners_[next[static_cast<size_t>(faces_[i].points[static_cast<size_t>(k)])]++] = {static_cast<int32_t>(i), k};
}

void CMappedFaces::FindIslands() {
  std::vector<int32_t> parents(points_.size());
  std::iota(parents.begin(), parents.end(), 0);
  for (const SMappedFace& face : faces_)
    for (int k = 1; k < face.corners; ++k)
      parents[static_cast<size_t>(Root(parents, face.points[static_cast<size_t>(k)]))] = Root(parents, face.points[0]);
  std::unordered_map<int32_t, int32_t> numbers;
  for (SMappedFace& face : faces_)
    face.island =
        numbers.try_emplace(Root(parents, face.points[0]), static_cast<int32_t>(numbers.size())).first->second;
  island_count_ = static_cast<int32_t>(numbers.size());
}

std::span<const CMappedFaces::SCorner> CMappedFaces::CornersOf(int32_t point) const {
  const auto at = static_cast<size_t>(point);
  return std::span(corners_).subspan(first_[at], first_[at + 1] - first_[at]);
}

std::vector<int32_t> CMappedFaces::FaceIndices() const {
  std::vector<int32_t> indices;
  indices.reserve(faces_.size());
  for (const SMappedFace& face : faces_)
    indices.push_back(face.index);
  return indices;
}

std::vector<STexel> CMappedFaces::Outline(const SMappedFace& face) const {
  return PlacesOf(std::span(face.points).first(static_cast<size_t>(face.corners)));
}

// --- Finding ---------------------------------------------------------------------------------------------------------

std::vector<int32_t> CMappedFaces::PointsNear(const STexel& at, double reach) const {
  std::vector<int32_t> hits;
  for (size_t i = 0; i < points_.size(); ++i)
    if (Distance(points_[i].at, at) <= reach) hits.push_back(static_cast<int32_t>(i));
  std::ranges::stable_sort(hits, {},
                           [&](int32_t point) { return Distance(points_[static_cast<size_t>(point)].at, at); });
  return hits;
}

std::vector<int32_t> CMappedFaces::PointsIn(const STexelRect& area) const {
  std::vector<int32_t> found;
  for (size_t i = 0; i < points_.size(); ++i)
    if (area.Holds(points_[i].at)) found.push_back(static_cast<int32_t>(i));
  return found;
}

std::vector<int32_t> CMappedFaces::FacesAt(const STexel& at) const {
  std::vector<int32_t> found;
  for (size_t i = faces_.size(); i-- > 0;)
    if (Covers(Outline(faces_[i]), at)) found.push_back(static_cast<int32_t>(i));
  return found;
}

std::vector<int32_t> CMappedFaces::FacesIn(const STexelRect& area) const {
  std::vector<int32_t> found;
  for (size_t i = 0; i < faces_.size(); ++i)
    if (Touches(area, Outline(faces_[i]))) found.push_back(static_cast<int32_t>(i));
  return found;
}

// --- Selection -------------------------------------------------------------------------------------------------------

void CMappedFaces::SelectPointsOfFaces() {
  for (SMappedPoint& point : points_)
    point.is_selected = false;
  for (const SMappedFace& face : faces_)
    for (int k = 0; face.is_selected && k < face.corners; ++k)
      points_[static_cast<size_t>(face.points[static_cast<size_t>(k)])].is_selected = true;
}

void CMappedFaces::SelectFacesOfPoints() {
  for (SMappedFace& face : faces_) {
    face.is_selected = std::all_of(face.points.begin(), face.points.begin() + face.corners,
                                   [&](int32_t point) { return points_[static_cast<size_t>(point)].is_selected; });
  }
}

void CMappedFaces::SelectPoints(std::span<const int32_t> points, ESelect how) {
  ApplySelection(points_, points, how);
  SelectFacesOfPoints();
}

void CMappedFaces::SelectFaces(std::span<const int32_t> faces, ESelect how) {
  ApplySelection(faces_, faces, how);
  SelectPointsOfFaces();
}

void CMappedFaces::SelectIslands(std::span<const int32_t> faces, ESelect how) {
  std::vector<bool> is_wanted(static_cast<size_t>(island_count_), false);
  for (const int32_t face : faces)
    is_wanted[static_cast<size_t>(faces_[static_cast<size_t>(face)].island)] = true;
  std::vector<int32_t> all;
  bool is_whole = true;
  for (size_t i = 0; i < faces_.size(); ++i) {
    if (!is_wanted[static_cast<size_t>(faces_[i].island)]) continue;
    all.push_back(static_cast<int32_t>(i));
    is_whole = is_whole && faces_[i].is_selected;
  }
  // One that is only partly selected becomes whole first.
  SelectFaces(all, how == ESelect::kToggle && !is_whole ? ESelect::kAdd : how);
}

void CMappedFaces::SelectAll(bool is_selected) {
  for (SMappedPoint& point : points_)
    point.is_selected = is_selected;
  for (SMappedFace& face : faces_)
    face.is_selected = is_selected;
}

void CMappedFaces::InvertPoints() {
  for (SMappedPoint& point : points_)
    point.is_selected = !point.is_selected;
  SelectFacesOfPoints();
}

void CMappedFaces::InvertFaces() {
  for (SMappedFace& face : faces_)
    face.is_selected = !face.is_selected;
  SelectPointsOfFaces();
}

void CMappedFaces::SelectVertices(std::span<const int32_t> vertices) {
  for (SMappedPoint& point : points_)
    point.is_selected = std::ranges::binary_search(vertices, point.vertex);
  SelectFacesOfPoints();
}

void CMappedFaces::SelectModelFaces(std::span<const int32_t> faces) {
  for (SMappedFace& face : faces_)
    face.is_selected = std::ranges::binary_search(faces, face.index);
  SelectPointsOfFaces();
}

std::vector<int32_t> CMappedFaces::SelectedPoints() const {
  return SelectedOf(points_);
}

std::vector<int32_t> CMappedFaces::SelectedFaces() const {
  return SelectedOf(faces_);
}

std::vector<int32_t> CMappedFaces::SelectedVertices() const {
  std::vector<int32_t> vertices;
  for (const SMappedPoint& point : points_)
    if (point.is_selected) vertices.push_back(point.vertex);
  std::ranges::sort(vertices);
  vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
  return vertices;
}

std::vector<int32_t> CMappedFaces::PointsOfTouchedFaces() const {
  std::vector<bool> is_in(points_.size(), false);
  for (const SMappedFace& face : faces_) {
    const std::span<const int32_t> points = std::span(face.points).first(static_cast<size_t>(face.corners));
    if (std::ranges::none_of(points, [&](int32_t i) { return points_[static_cast<size_t>(i)].is_selected; })) continue;
    for (const int32_t point : points)
      is_in[static_cast<size_t>(point)] = true;
  }
  std::vector<int32_t> found;
  for (size_t i = 0; i < is_in.size(); ++i)
    if (is_in[i]) found.push_back(static_cast<int32_t>(i));
  return found;
}

// --- Changing --------------------------------------------------------------------------------------------------------

std::vector<STexel> CMappedFaces::PlacesOf(std::span<const int32_t> points) const {
  std::vector<STexel> places;
  places.reserve(points.size());
  for (const int32_t point : points)
    places.push_back(points_[static_cast<size_t>(point)].at);
  return places;
}

void CMappedFaces::Place(std::span<const int32_t> points, std::span<const STexel> places) {
  for (size_t i = 0; i < points.size(); ++i)
    points_[static_cast<size_t>(points[i])].at = places[i];
}

void CMappedFaces::PlaceCorners(std::span<const int32_t> faces, std::span<const std::array<STexel, 4>> places) {
  std::vector<SPlaced> placed;
  size_t next = 0;
  for (size_t i = 0; i < faces_.size(); ++i) {
    const bool is_wanted = next < faces.size() && faces[next] == static_cast<int32_t>(i);
    for (size_t k = 0; k < static_cast<size_t>(faces_[i].corners); ++k) {
      const SMappedPoint& point = points_[static_cast<size_t>(faces_[i].points[k])];
      placed.push_back({point.vertex, is_wanted ? places[next][k] : point.at, point.is_selected});
      if (is_wanted) cuts_.erase(Key(faces_[i].index, static_cast<int>(k)));
    }
    next += is_wanted ? 1 : 0;
  }
  FindPoints(placed);
}

void CMappedFaces::Write(CBinModel& model, std::span<const int32_t> points) const {
  for (const int32_t point : points) {
    const STexCoord coord = CoordOf(points_[static_cast<size_t>(point)].at, width_);
    for (const SCorner& corner : CornersOf(point))
      model.Face(faces_[static_cast<size_t>(corner.face)].index).SetTexCoord(corner.corner, coord);
  }
}

std::vector<STexCoord> CMappedFaces::Read(const CBinModel& model, std::span<const int32_t> points) const {
  std::vector<STexCoord> coords;
  for (const int32_t point : points)
    for (const SCorner& corner : CornersOf(point))
      coords.push_back(model.Face(faces_[static_cast<size_t>(corner.face)].index).TexCoord(corner.corner));
  return coords;
}

void CMappedFaces::Restore(CBinModel& model, std::span<const int32_t> points, std::span<const STexCoord> coords) const {
  auto next = coords.begin();
  for (const int32_t point : points)
    for (const SCorner& corner : CornersOf(point))
      model.Face(faces_[static_cast<size_t>(corner.face)].index).SetTexCoord(corner.corner, *next++);
}

void CMappedFaces::TakeApart(EMappingMode mode) {
  const bool by_faces = mode != EMappingMode::kCorners;
  if (by_faces) ++last_cut_;
  for (size_t point = 0; point < points_.size(); ++point) {
    if (!points_[point].is_selected) continue;
    for (const SCorner& corner : CornersOf(static_cast<int32_t>(point))) {
      const SMappedFace& face = faces_[static_cast<size_t>(corner.face)];
      if (by_faces && !face.is_selected) continue;
      cuts_[Key(face.index, corner.corner)] = by_faces ? last_cut_ : ++last_cut_;
    }
  }
  Settle();
  if (by_faces) SelectPointsOfFaces();
}

void CMappedFaces::Join() {
  for (size_t point = 0; point < points_.size(); ++point) {
    if (!points_[point].is_selected) continue;
    for (const SCorner& corner : CornersOf(static_cast<int32_t>(point)))
      cuts_.erase(Key(faces_[static_cast<size_t>(corner.face)].index, corner.corner));
  }
  Settle();
}

}  // namespace veldra

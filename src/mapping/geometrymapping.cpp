#include "mapping/geometrymapping.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <numbers>
#include <optional>
#include <utility>

#include "model/normals.h"
#include "platform/vector3.h"

namespace veldra {

namespace {

/// Places of all corners before they are fitted into an area: to the right and downwards, in any unit.
using Plan = std::vector<CornerTexels>;

Vector3 At(const CBinFace& face, int corner) {
  return ToVector(face.Corner(corner)->Position());
}

STexel Along(const Vector3& at, EAxis axis) {
  if (axis == EAxis::kX) return {at[2], -at[1]};
  return axis == EAxis::kY ? STexel{at[0], at[2]} : STexel{at[0], -at[1]};
}

Vector3 Direction(const CBinFace& face) {
  CalcFaceNormal(face);
  return {face.UnitNormal().x, face.UnitNormal().y, face.UnitNormal().z};
}

EAxis FacedAxis(const CBinFace& face) {
  const Vector3 normal = Direction(face);
  size_t longest = 0;
  for (size_t i = 1; i < 3; ++i)
    if (std::abs(normal[i]) > std::abs(normal[longest]) + 1e-9) longest = i;
  return static_cast<EAxis>(longest);
}

/// AT as one sees it who looks from TOWARD, with y upwards.
STexel FromView(const Vector3& at, const Vector3& toward) {
  const Vector3 right = std::abs(toward[1]) > 0.999 ? Vector3{1, 0, 0} : Normalized(Cross({0, 1, 0}, toward));
  const Vector3 up = Cross(toward, right);
  return {Dot(at, right), -Dot(at, up)};
}

// --- Round about -----------------------------------------------------------------------------------------------------

/// The two axes round AXIS, so that a turn from the first to the second goes to the right for who looks at the outside.
std::pair<size_t, size_t> Round(EAxis axis) {
  if (axis == EAxis::kX) return {1, 2};
  return axis == EAxis::kY ? std::pair<size_t, size_t>{2, 0} : std::pair<size_t, size_t>{0, 1};
}

struct SRound {
  double turn = 0.0;  ///< -0.5 to 0.5
  double radius = 0.0;
  double along = 0.0;
};

SRound RoundOf(const Vector3& from_middle, EAxis axis) {
  const auto [first, second] = Round(axis);
  const double a = from_middle[first];
  const double b = from_middle[second];
  return {std::atan2(b, a) / (2 * std::numbers::pi), std::hypot(a, b), from_middle[static_cast<size_t>(axis)]};
}

/// A face stays in one piece where it lies over the seam, and a corner in the axis turns with the others.
CornerTexels RoundFace(const CBinFace& face, const Vector3& middle, EAxis axis, bool is_sphere) {
  CornerTexels places;
  double reference = 0.0;
  bool has_reference = false;
  for (int k = 0; k < face.CornerCount() && !has_reference; ++k) {
    const SRound round = RoundOf(At(face, k) - middle, axis);
    has_reference = round.radius > 0;
    reference = round.turn;
  }
  double sum = 0.0;
  int count = 0;
  std::array<bool, 4> is_in_axis = {};
  for (int k = 0; k < face.CornerCount(); ++k) {
    const SRound round = RoundOf(At(face, k) - middle, axis);
    const auto i = static_cast<size_t>(k);
    const double turn = round.turn - std::round(round.turn - reference);
    places[i] = {turn, is_sphere ? std::atan2(round.radius, round.along) : -round.along};
    is_in_axis[i] = round.radius == 0;
    if (is_in_axis[i]) continue;
    sum += turn;
    ++count;
  }
  for (size_t i = 0; i < 4 && count > 0; ++i)
    if (is_in_axis[i]) places[i].x = sum / count;
  return places;
}

// --- Unfolding -------------------------------------------------------------------------------------------------------

/// FACE laid flat, as seen from outside.
CornerTexels Flat(const CBinFace& face) {
  const Vector3 first = At(face, 0);
  const Vector3 along = Normalized(At(face, 1) - first);
  const Vector3 up = Cross(Direction(face), along);
  CornerTexels places;
  for (int k = 0; k < face.CornerCount(); ++k) {
    const Vector3 from = At(face, k) - first;
    places[static_cast<size_t>(k)] = {Dot(from, along), -Dot(from, up)};
  }
  return places;
}

/// PLACES turned and moved so that the way from A to B starts at TO_A and goes toward TO_B.
CornerTexels Joined(CornerTexels places, const STexel& a, const STexel& b, const STexel& to_a, const STexel& to_b) {
  const double turn = std::atan2(to_b.y - to_a.y, to_b.x - to_a.x) - std::atan2(b.y - a.y, b.x - a.x);
  const double cosine = std::cos(turn);
  const double sine = std::sin(turn);
  for (STexel& at : places) {
    const STexel from = at - a;
    at = to_a + STexel{from.x * cosine - from.y * sine, from.x * sine + from.y * cosine};
  }
  return places;
}

class CUnfolding {
 public:
  CUnfolding(const CBinModel& model, std::span<const int32_t> faces)
      : model_(model), faces_(faces), plan_(faces.size()) {
    for (size_t i = 0; i < faces.size(); ++i)
      ForEdges(i, [&](const Edge& edge, int) { edges_[edge].push_back(i); });
  }

  Plan Run() {
    std::vector<bool> is_placed(faces_.size(), false);
    double right = 0.0;
    for (size_t i = 0; i < faces_.size(); ++i) {
      if (is_placed[i]) continue;
      const std::vector<size_t> piece = PlacePiece(i, is_placed);
      right = PutBeside(piece, right);
    }
    return std::move(plan_);
  }

 private:
  using Edge = std::pair<int32_t, int32_t>;

  template <typename Take>
  void ForEdges(size_t i, Take&& take) const {
    const CBinFace& face = model_.Face(faces_[i]);
    for (int k = 0; k < face.CornerCount(); ++k) {
      const int32_t a = face.Corner(k)->Index();
      const int32_t b = face.Corner((k + 1) % face.CornerCount())->Index();
      take(Edge(std::min(a, b), std::max(a, b)), k);
    }
  }

  STexel PlaceOf(size_t i, const CornerTexels& places, int32_t vertex) const {
    const CBinFace& face = model_.Face(faces_[i]);
    int k = 0;
    while (face.Corner(k)->Index() != vertex)
      ++k;
    return places[static_cast<size_t>(k)];
  }

  std::vector<size_t> PlacePiece(size_t first, std::vector<bool>& is_placed) {
    std::vector<size_t> piece;
    std::deque<size_t> next = {first};
    plan_[first] = Flat(model_.Face(faces_[first]));
    is_placed[first] = true;
    while (!next.empty()) {
      const size_t i = next.front();
      next.pop_front();
      piece.push_back(i);
      ForEdges(i, [&](const Edge& edge, int) {
        for (const size_t other : edges_[edge]) {
          if (is_placed[other]) continue;
          const CornerTexels flat = Flat(model_.Face(faces_[other]));
          plan_[other] = Joined(flat, PlaceOf(other, flat, edge.first), PlaceOf(other, flat, edge.second),
                                PlaceOf(i, plan_[i], edge.first), PlaceOf(i, plan_[i], edge.second));
          is_placed[other] = true;
          next.push_back(other);
        }
      });
    }
    return piece;
  }

  /// Returns where the next piece may begin.
  double PutBeside(const std::vector<size_t>& piece, double right) {
    Texels all;
    for (const size_t i : piece)
      all.insert(all.end(), plan_[i].begin(), plan_[i].begin() + model_.Face(faces_[i]).CornerCount());
    const STexelRect bounds = BoundsOf(all);
    for (const size_t i : piece)
      for (STexel& at : plan_[i])
        at = at - bounds.min + STexel{right, 0};
    constexpr double kGap = 0.02;
    return right + bounds.Width() * (1 + kGap);
  }

  const CBinModel& model_;
  std::span<const int32_t> faces_;
  Plan plan_;
  std::map<Edge, std::vector<size_t>> edges_;
};

// --- All of them -----------------------------------------------------------------------------------------------------

Plan PlanOf(const CBinModel& model, std::span<const int32_t> faces, const SProjection& projection) {
  using E = SProjection::EKind;
  if (projection.kind == E::kUnfold) return CUnfolding(model, faces).Run();
  const SBounds bounds = model.BoundsOfFaces(faces).value_or(SBounds{});
  const Vector3 low = ToVector(bounds.min);
  const Vector3 high = ToVector(bounds.max);
  const Vector3 middle = {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, (low[2] + high[2]) / 2};
  const Vector3 toward = {projection.to_viewer.x, projection.to_viewer.y, projection.to_viewer.z};
  Plan plan;
  for (const int32_t index : faces) {
    const CBinFace& face = model.Face(index);
    CornerTexels places;
    const EAxis axis = projection.kind == E::kBox ? FacedAxis(face) : projection.axis;
    for (int k = 0; k < face.CornerCount(); ++k) {
      const Vector3 from = At(face, k) - middle;
      places[static_cast<size_t>(k)] = projection.kind == E::kView ? FromView(from, toward) : Along(from, axis);
    }
    const bool is_sphere = projection.kind == E::kSphere;
    plan.push_back(is_sphere || projection.kind == E::kCylinder ? RoundFace(face, middle, axis, is_sphere) : places);
  }
  return plan;
}

/// Each direction of a box has bounds of its own: all of them fill the area.
void FitBox(const CBinModel& model, std::span<const int32_t> faces, Plan& plan) {
  const SBounds bounds = model.BoundsOfFaces(faces).value_or(SBounds{});
  const Vector3 half = {(double(bounds.max.x) - bounds.min.x) / 2, (double(bounds.max.y) - bounds.min.y) / 2,
                        (double(bounds.max.z) - bounds.min.z) / 2};
  for (size_t i = 0; i < faces.size(); ++i) {
    const STexel size = Along(half, FacedAxis(model.Face(faces[i])));
    for (STexel& at : plan[i])
      at = {size.x == 0 ? -1 : at.x / std::abs(size.x), size.y == 0 ? -1 : at.y / std::abs(size.y)};
  }
}

}  // namespace

std::vector<CornerTexels> MapFromGeometry(const CBinModel& model, std::span<const int32_t> faces,
                                          const SProjection& projection, const STexelRect& area) {
  Plan plan = PlanOf(model, faces, projection);
  if (projection.kind == SProjection::EKind::kBox && !projection.keeps_proportions) FitBox(model, faces, plan);
  Texels all;
  for (size_t i = 0; i < faces.size(); ++i)
    all.insert(all.end(), plan[i].begin(), plan[i].begin() + model.Face(faces[i]).CornerCount());
  const STexelRect from = BoundsOf(all);
  double across = from.Width() > 0 ? area.Width() / from.Width() : 0.0;
  double down = from.Height() > 0 ? area.Height() / from.Height() : 0.0;
  const bool is_even = projection.keeps_proportions || projection.kind == SProjection::EKind::kUnfold;
  if (is_even && across > 0 && down > 0) across = down = std::min(across, down);
  for (CornerTexels& places : plan)
    for (STexel& at : places)
      at = {area.min.x + (at.x - from.min.x) * across, area.min.y + (at.y - from.min.y) * down};
  return plan;
}

}  // namespace veldra

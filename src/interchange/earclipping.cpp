#include "interchange/earclipping.h"

#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

/// How much is asked of a corner before it is cut off, from what keeps the outline to what only comes to an end.
enum class EDemand {
  kClear,      ///< no other corner in the triangle or on its border
  kNotInside,  ///< none inside it
  kFlat,       ///< a corner that encloses nothing goes
  kNone,
};

/// The corners by where they lie, so that those within a triangle are found without asking all.
class CCornerGrid {
 public:
  explicit CCornerGrid(const std::vector<SPlanePoint>& points)
      : side_(
            std::clamp(static_cast<size_t>(std::sqrt(static_cast<double>(points.size()) / 4)), size_t{1}, kMostCells)),
        starts_(side_ * side_ + 1),
        items_(points.size()) {
    for (const SPlanePoint& p : points)
      ++starts_[CellOf(p) + 1];
    for (size_t i = 1; i < starts_.size(); ++i)
      starts_[i] += starts_[i - 1];
    std::vector<uint32_t> next(starts_.begin(), starts_.end() - 1);
    for (size_t i = 0; i < points.size(); ++i)
      items_[next[CellOf(points[i])]++] = static_cast<uint32_t>(i);
  }

  /// Calls VISIT with each corner in the cells that the box touches, until it returns false.
  template <class Visit>
  bool All(const SPlanePoint& min, const SPlanePoint& max, const Visit& visit) const {
    for (size_t row = Cell(min.y); row <= Cell(max.y); ++row) {
      for (size_t column = Cell(min.x); column <= Cell(max.x); ++column) {
        const size_t cell = row * side_ + column;
        for (uint32_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
          if (!visit(items_[i])) return false;
        }
      }
    }
    return true;
  }

 private:
  static constexpr size_t kMostCells = 256;
  size_t Cell(double value) const {
    const double place = (value + 1) / 2 * static_cast<double>(side_);
    return static_cast<size_t>(std::clamp(place, 0.0, static_cast<double>(side_ - 1)));
  }
  size_t CellOf(const SPlanePoint& p) const { return Cell(p.y) * side_ + Cell(p.x); }

  size_t side_;
  std::vector<uint32_t> starts_;  ///< for each cell where its corners begin in items_
  std::vector<uint32_t> items_;
};

class CEarClipper {
 public:
  explicit CEarClipper(const std::vector<SPlanePoint>& points)
      : points_(points),
        grid_(points),
        prev_(points.size()),
        next_(points.size()),
        is_left_(points.size(), true),
        left_(static_cast<uint32_t>(points.size())),
        budget_(kFixedBudget + kBudgetPerCorner * static_cast<int64_t>(points.size())) {
    for (uint32_t i = 0; i < left_; ++i) {
      prev_[i] = i == 0 ? left_ - 1 : i - 1;
      next_[i] = i + 1 == left_ ? 0 : i + 1;
    }
  }

  std::vector<Triangle> Clip();

 private:
  static constexpr double kStraight = 1e-9;
  static constexpr int64_t kFixedBudget = 100000;
  static constexpr int64_t kBudgetPerCorner = 2000;

  int DirectionAt(uint32_t i) const { return Direction(points_[prev_[i]], points_[i], points_[next_[i]], kStraight); }
  bool IsSpike(uint32_t corner) const;
  bool MayGo(uint32_t corner, EDemand demand);
  bool IsClear(uint32_t corner, bool border_too);
  bool Blocks(uint32_t other, uint32_t corner, bool border_too) const;
  void Remove(uint32_t corner);

  const std::vector<SPlanePoint>& points_;
  CCornerGrid grid_;
  std::vector<uint32_t> prev_;
  std::vector<uint32_t> next_;
  std::vector<bool> is_left_;
  uint32_t left_;
  int64_t budget_;
  std::vector<Triangle> triangles_;
};

bool IsAt(const SPlanePoint& a, const SPlanePoint& b) {
  return a.x == b.x && a.y == b.y;
}

/// Only a corner that turns to the right or goes straight on can lie in an ear; one at the place of the ear's own
/// corners is the other side of a cut.
bool CEarClipper::Blocks(uint32_t other, uint32_t corner, bool border_too) const {
  const SPlanePoint& p = points_[other];
  const SPlanePoint& a = points_[prev_[corner]];
  const SPlanePoint& b = points_[corner];
  const SPlanePoint& c = points_[next_[corner]];
  const double least = std::min({Turn(a, b, p), Turn(b, c, p), Turn(c, a, p)});
  if (border_too ? least < 0 : least <= 0) return false;
  return is_left_[other] && !IsAt(p, a) && !IsAt(p, b) && !IsAt(p, c) && DirectionAt(other) <= 0;
}

bool CEarClipper::IsClear(uint32_t corner, bool border_too) {
  const SPlanePoint& a = points_[prev_[corner]];
  const SPlanePoint& b = points_[corner];
  const SPlanePoint& c = points_[next_[corner]];
  const SPlanePoint min = {std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y})};
  const SPlanePoint max = {std::max({a.x, b.x, c.x}), std::max({a.y, b.y, c.y})};
  return grid_.All(min, max, [&](uint32_t other) {
    --budget_;
    return !Blocks(other, corner, border_too);
  });
}

/// The outline goes back the way it came. What a spike leads to must not become part of an ear.
bool CEarClipper::IsSpike(uint32_t corner) const {
  const SPlanePoint& a = points_[prev_[corner]];
  const SPlanePoint& b = points_[corner];
  const SPlanePoint& c = points_[next_[corner]];
  return (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y) <= 0;
}

bool CEarClipper::MayGo(uint32_t corner, EDemand demand) {
  --budget_;
  const int direction = DirectionAt(corner);
  switch (demand) {
    case EDemand::kClear:
      return direction > 0 ? IsClear(corner, true) : direction == 0 && IsSpike(corner);
    case EDemand::kNotInside:
      return direction > 0 && IsClear(corner, false);
    case EDemand::kFlat:
      return direction == 0;
    case EDemand::kNone:
      break;
  }
  return true;
}

void CEarClipper::Remove(uint32_t corner) {
  if (DirectionAt(corner) > 0) triangles_.push_back({prev_[corner], corner, next_[corner]});
  next_[prev_[corner]] = next_[corner];
  prev_[next_[corner]] = prev_[corner];
  is_left_[corner] = false;
  --left_;
}

std::vector<Triangle> CEarClipper::Clip() {
  uint32_t at = 0;
  uint32_t refused = 0;
  int demand = 0;
  while (left_ >= 3) {
    if (budget_ < 0) demand = static_cast<int>(EDemand::kNone);
    const uint32_t next = next_[at];
    if (MayGo(at, static_cast<EDemand>(demand))) {
      Remove(at);
      refused = 0;
      demand = 0;
      // Not the next one, which would make a fan of slivers.
      at = next_[next];
    } else {
      at = next;
      if (++refused >= left_) {
        ++demand;
        refused = 0;
      }
    }
  }
  return std::move(triangles_);
}

}  // namespace

std::vector<Triangle> ClipEars(const std::vector<SPlanePoint>& outline) {
  return CEarClipper(outline).Clip();
}

}  // namespace veldra

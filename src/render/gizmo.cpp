#include "render/gizmo.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <span>

#include "platform/glcontext.h"
#include "render/glstate.h"

namespace veldra {

namespace {

using EKind = SGizmoHandle::EKind;

constexpr double kArmPixels = 90.0;
constexpr double kMostOfWindow = 0.25;
constexpr double kReachPixels = 7.0;
// In parts of the arm.
constexpr double kFree = 0.2;  ///< about the pivot, where vertices and faces can be taken hold of
constexpr double kTip = 1.25;
constexpr double kBox = 0.62;
constexpr double kRing = 0.9;
/// An axis that is seen shorter than this points at the viewer.
constexpr double kShortest = 0.2;
constexpr int kRingPoints = 48;
constexpr SColor kGizmoRim = {0, 0, 0};
constexpr SColor kEvenColor = {235, 235, 235};
constexpr SColor kHandleColors[] = {{230, 60, 50}, {50, 175, 70}, {70, 110, 245}};

Vector3 Direction(EAxis axis) {
  Vector3 direction = {};
  direction[static_cast<size_t>(axis)] = 1.0;
  return direction;
}

double Between(const SScreenPoint& a, const SScreenPoint& b) {
  return std::hypot(a.x - b.x, a.y - b.y);
}

/// From AT to the line between A and B.
double ToLine(const SScreenPoint& at, const SScreenPoint& a, const SScreenPoint& b) {
  const double x = b.x - a.x, y = b.y - a.y;
  const double square = x * x + y * y;
  const double part = square > 0.0 ? std::clamp(((at.x - a.x) * x + (at.y - a.y) * y) / square, 0.0, 1.0) : 0.0;
  return std::hypot(at.x - a.x - part * x, at.y - a.y - part * y);
}

void DrawPoints(GLenum kind, std::span<const SScreenPoint> points) {
  glBegin(kind);
  for (const SScreenPoint& point : points)
    glVertex2d(point.x, point.y);
  glEnd();
}

void DrawBox(const SScreenPoint& at, double half) {
  glRectd(at.x - half, at.y - half, at.x + half, at.y + half);
}

}  // namespace

CGizmo::CGizmo(const CViewCamera& camera, const Vector3& pivot, double pixel_ratio, bool moves_only)
    : camera_(camera),
      pivot_(pivot),
      ratio_(pixel_ratio),
      arm_pixels_(std::min(kArmPixels * pixel_ratio, kMostOfWindow * std::min(camera.Width(), camera.Height()))),
      arm_(Length(camera.Movement(pivot, arm_pixels_, 0.0))),
      moves_only_(moves_only),
      middle_(camera.Project(pivot)) {}

/// What is in front of others comes first.
std::vector<SGizmoHandle> CGizmo::Handles() const {
  std::vector<SGizmoHandle> handles = {{EKind::kMove, {}}};
  for (const EKind kind : {EKind::kResize, EKind::kMove, EKind::kTurn})
    for (const EAxis axis : {EAxis::kX, EAxis::kY, EAxis::kZ})
      if (kind == EKind::kMove || !moves_only_) handles.push_back({kind, axis});
  return handles;
}

SScreenPoint CGizmo::Place(EAxis axis, double along) const {
  return camera_.Project(pivot_ + along * arm_ * Direction(axis));
}

std::vector<SScreenPoint> CGizmo::Ring(EAxis axis) const {
  const Vector3 a = Direction(static_cast<EAxis>((static_cast<int>(axis) + 1) % 3));
  const Vector3 b = Direction(static_cast<EAxis>((static_cast<int>(axis) + 2) % 3));
  std::vector<SScreenPoint> ring;
  for (int k = 0; k < kRingPoints; ++k) {
    const double angle = 2.0 * std::numbers::pi * k / kRingPoints;
    ring.push_back(camera_.Project(pivot_ + kRing * arm_ * (std::cos(angle) * a + std::sin(angle) * b)));
  }
  return ring;
}

bool CGizmo::IsSeenFromItsEnd(EAxis axis) const {
  return Between(Place(axis, 1.0), middle_) < kShortest * arm_pixels_;
}

/// How much the axis points toward the viewer: 1 straight, 0 across.
double CGizmo::Facing(EAxis axis) const {
  const Vector3 along = camera_.Movement(pivot_, 1.0, 0.0);
  const Vector3 up = camera_.Movement(pivot_, 0.0, -1.0);
  return Normalized(Cross(along, up))[static_cast<size_t>(axis)];
}

double CGizmo::Distance(const SGizmoHandle& handle, const SScreenPoint& at) const {
  if (!handle.axis) return Between(at, middle_);
  if (handle.kind == EKind::kTurn) {
    const std::vector<SScreenPoint> ring = Ring(*handle.axis);
    double nearest = std::numeric_limits<double>::max();
    for (size_t k = 0; k < ring.size(); ++k)
      nearest = std::min(nearest, ToLine(at, ring[k], ring[(k + 1) % ring.size()]));
    return nearest;
  }
  if (IsSeenFromItsEnd(*handle.axis)) return std::numeric_limits<double>::max();
  if (handle.kind == EKind::kResize) return Between(at, Place(*handle.axis, kBox));
  return ToLine(at, Place(*handle.axis, kFree), Place(*handle.axis, kTip));
}

std::optional<SGizmoHandle> CGizmo::HandleAt(double x, double y) const {
  const SScreenPoint at = {.x = x, .y = y};
  for (const SGizmoHandle& handle : Handles())
    if (Distance(handle, at) <= kReachPixels * ratio_) return handle;
  return std::nullopt;
}

void CGizmo::DrawShape(const SGizmoHandle& handle) const {
  const double box = 5.0 * ratio_;
  if (!handle.axis) return DrawBox(middle_, box);
  const EAxis axis = *handle.axis;
  if (handle.kind == EKind::kTurn) return DrawPoints(GL_LINE_LOOP, Ring(axis));
  if (IsSeenFromItsEnd(axis)) return;
  if (handle.kind == EKind::kResize) return DrawBox(Place(axis, kBox), box);
  const SScreenPoint tip = Place(axis, kTip);
  DrawPoints(GL_LINES, std::array{Place(axis, kFree), tip});
  const double length = std::max(Between(tip, middle_), 1.0);
  const double x = (tip.x - middle_.x) / length * box, y = (tip.y - middle_.y) / length * box;
  DrawPoints(GL_TRIANGLES, std::array{SScreenPoint{.x = tip.x + 2 * x, .y = tip.y + 2 * y},
                                      SScreenPoint{.x = tip.x - x - y, .y = tip.y - y + x},
                                      SScreenPoint{.x = tip.x - x + y, .y = tip.y - y - x}});
}

/// Each with a dark rim. What is taken first is drawn last.
void CGizmo::Draw(const std::optional<SGizmoHandle>& held) const {
  std::vector<SGizmoHandle> handles = Handles();
  std::ranges::reverse(handles);
  for (const SGizmoHandle& handle : handles) {
    if (held && !(handle == *held)) continue;
    const SColor color = handle.axis ? kHandleColors[static_cast<size_t>(*handle.axis)] : kEvenColor;
    const bool is_filled = handle.kind == EKind::kResize || !handle.axis;
    SetColor(kGizmoRim);
    glLineWidth(static_cast<float>((handle.kind == EKind::kTurn ? 3.0 : 4.5) * ratio_));
    if (is_filled) glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    DrawShape(handle);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    SetColor(color);
    glLineWidth(static_cast<float>((handle.kind == EKind::kTurn ? 1.5 : 2.5) * ratio_));
    DrawShape(handle);
  }
}

double CGizmo::DegreesBetween(EAxis axis, const SScreenPoint& from, const SScreenPoint& to) const {
  constexpr double kFromItsSide = 0.25;
  constexpr double kDegrees = 180.0 / std::numbers::pi;
  const double facing = Facing(axis);
  if (std::abs(facing) < kFromItsSide) {
    // The ring is a line, across the axis.
    const SScreenPoint end = Place(axis, 1.0);
    const double length = std::max(Between(end, middle_), 1.0);
    const double across = ((to.x - from.x) * (middle_.y - end.y) + (to.y - from.y) * (end.x - middle_.x)) / length;
    return across / (kRing * arm_pixels_) * kDegrees;
  }
  // Down is positive in a window.
  const double before = std::atan2(middle_.y - from.y, from.x - middle_.x);
  const double now = std::atan2(middle_.y - to.y, to.x - middle_.x);
  return std::remainder((now - before) * kDegrees, 360.0) * (facing > 0.0 ? 1.0 : -1.0);
}

double CGizmo::FactorBetween(EAxis axis, const SScreenPoint& from, const SScreenPoint& to) const {
  const SScreenPoint box = Place(axis, kBox);
  const double length = std::max(Between(box, middle_), 1.0);
  const double pulled =
      ((to.x - from.x) * (box.x - middle_.x) + (to.y - from.y) * (box.y - middle_.y)) / (length * length);
  return std::max(0.0, 1.0 + pulled);
}

}  // namespace veldra

#include "view/modelholds.h"

#include <QGuiApplication>
#include <cmath>

#include "platform/numbers.h"
#include "platform/text.h"
#include "render/viewgrid.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

std::optional<EAxis> AxisOf(int key) {
  switch (key) {
    case Qt::Key_X:
      return EAxis::kX;
    case Qt::Key_Y:
      return EAxis::kY;
    case Qt::Key_Z:
      return EAxis::kZ;
    default:
      return std::nullopt;
  }
}

}  // namespace

CBandHold::~CBandHold() {
  view_.ShowBand(std::nullopt);
}

void CBandHold::MoveTo(const QPointF& to) {
  to_ = to;
  view_.ShowBand(QRectF(from_, to_).normalized());
}

void CBandHold::Drop(Qt::KeyboardModifiers modifiers) {
  const EGroupKind kind = view_.PickedKind();
  const std::vector<int32_t> found = view_.PickIn(QRectF(from_, to_).normalized(), kind);
  CBinModel& model = view_.Document().Model();
  if (!modifiers.testFlag(Qt::ControlModifier)) model.SelectAll(kind, false);
  model.Select(kind, found, true);
}

CTextureHold::CTextureHold(CTarnView& view, int32_t face) : view_(view), transfer_(view.Document(), face) {}

void CTextureHold::MoveTo(const QPointF& to) {
  using EWay = CTextureTransfer::EWay;
  const std::optional<SPick> pick = view_.PickAt(to);
  if (!pick || pick->kind != EGroupKind::kFaces) return;
  const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
  const bool projects = held.testFlag(Qt::ControlModifier);
  transfer_.GiveTo(pick->index, projects                           ? EWay::kProject
                                : held.testFlag(Qt::ShiftModifier) ? EWay::kPlane
                                                                   : EWay::kFold);
}

void CTextureHold::Drop(Qt::KeyboardModifiers) {
  const auto count = static_cast<int64_t>(transfer_.GivenCount());
  if (count > 0) view_.Document().Say("Texture given to " + Counted(count, "face", "faces"));
}

// --- Vertices --------------------------------------------------------------------------------------------------------

void CPartHold::MoveTo(const QPointF& to) {
  to_ = to;
  if (drag_ == nullptr) {
    step_ = std::make_unique<CStep>(view_.Document(), step_name_);
    drag_ = std::make_unique<CVertexDrag>(view_.Document().Model(), view_.Camera(), grabbed_, moving_,
                                          view_.Document().Settings().texture_lock != 0);
    was_modified_ = view_.Document().IsModified();
    // Before anything moves. A drag that ends where it began leaves a state more, which harms nobody.
    view_.Document().KeepState(step_name_);
  }
  Move();
}

void CPartHold::Move() {
  if (drag_ != nullptr) view_.Document().Say(Apply(*drag_));
}

void CPartHold::Drop(Qt::KeyboardModifiers) {
  if (!drag_->HasMoved()) view_.Document().SetModified(was_modified_);
}

void CPartHold::Cancel() {
  drag_->PutBack();
  view_.Document().SetModified(was_modified_);
}

void CPartHold::TakeKey(int, bool) {
  Move();
}

bool CPartHold::Snaps() {
  return QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier);
}

CPartHold::~CPartHold() {
  view_.MarkSnap(std::nullopt);
}

/// Only with Shift. What can be taken is looked for while everything is where it was, so that nothing that moves
/// hides it.
std::optional<int32_t> CPartHold::VertexUnderPointer(CVertexDrag& drag) {
  if (!QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier)) return std::nullopt;
  if (!snap_) {
    drag.PutBack();
    snap_.emplace(view_, moving_);
  }
  return snap_->VertexAt(to_);
}

std::string CPartHold::MoveBy(CVertexDrag& drag, std::optional<EAxis> axis) {
  const QPointF moved = (to_ - from_) * view_.devicePixelRatioF();
  CVertexDrag::SPull pull = {.right = moved.x(),
                             .down = moved.y(),
                             .axis = axis,
                             .grid = Snaps() ? GridFor(view_.State(), view_.Camera()).spacing : 0.0};
  const std::optional<int32_t> target = VertexUnderPointer(drag);
  if (target) pull.onto = view_.Document().Model().Vertex(*target).Position();
  view_.MarkSnap(target);
  drag.MoveTo(pull);
  const SPoint offset = drag.OffsetAt(pull);
  return "Moved " + Counted(static_cast<int64_t>(drag.Count()), "vertex", "vertices") +
         Format(" by %d, %d, %d", offset.x, offset.y, offset.z) +
         (target ? Format(axis ? ", level with vertex %d" : ", onto vertex %d", *target) : "");
}

void CVertexHold::TakeKey(int key, bool is_down) {
  const std::optional<EAxis> axis = AxisOf(key);
  if (axis && is_down) {
    axis_ = axis;
  } else if (axis && axis_ == axis) {
    axis_.reset();
  }
  CPartHold::TakeKey(key, is_down);
}

// --- The gizmo -------------------------------------------------------------------------------------------------------

namespace {

const char* StepName(SGizmoHandle::EKind kind) {
  constexpr const char* kNames[] = {"Move Vertices", "Turn", "Resize"};
  return kNames[static_cast<size_t>(kind)];
}

SPoint NearestUnit(const Vector3& point) {
  return {Truncate(std::round(point[0])), Truncate(std::round(point[1])), Truncate(std::round(point[2]))};
}

}  // namespace

CGizmoHold::CGizmoHold(CTarnView& view, const QPointF& from, const CGizmo& gizmo, const SGizmoHandle& handle,
                       std::vector<int32_t> moving)
    : CPartHold(view, from, NearestUnit(gizmo.Pivot()), std::move(moving), StepName(handle.kind)),
      gizmo_(gizmo),
      handle_(handle),
      last_(Pixels(from)) {
  view.HoldGizmo(handle);
}

CGizmoHold::~CGizmoHold() {
  View().HoldGizmo(std::nullopt);
}

SScreenPoint CGizmoHold::Pixels(const QPointF& at) const {
  const double ratio = View().devicePixelRatioF();
  return {.x = at.x() * ratio, .y = at.y() * ratio};
}

std::string CGizmoHold::Apply(CVertexDrag& drag) {
  if (handle_.kind == SGizmoHandle::EKind::kMove) return MoveBy(drag, handle_.axis);
  return handle_.kind == SGizmoHandle::EKind::kTurn ? Turn(drag) : Resize(drag);
}

std::string CGizmoHold::Turn(CVertexDrag& drag) {
  constexpr double kSnap = 15.0;
  constexpr char kNames[] = {'X', 'Y', 'Z'};
  const SScreenPoint now = Pixels(To());
  degrees_ += gizmo_.DegreesBetween(*handle_.axis, last_, now);
  last_ = now;
  const double step = Snaps() ? kSnap : 0.1;
  const double degrees = std::round(degrees_ / step) * step;
  drag.Turn(*handle_.axis, degrees, gizmo_.Pivot());
  return Format("Turned by %.1f degrees about %c", degrees, kNames[static_cast<size_t>(*handle_.axis)]);
}

std::string CGizmoHold::Resize(CVertexDrag& drag) const {
  const double step = Snaps() ? 0.1 : 0.01;
  const double factor = std::round(gizmo_.FactorBetween(*handle_.axis, Pixels(From()), Pixels(To())) / step) * step;
  const bool is_even = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
  Vector3 factors = {factor, factor, factor};
  for (size_t i = 0; i < factors.size(); ++i)
    if (!is_even && i != static_cast<size_t>(*handle_.axis)) factors[i] = 1.0;
  drag.Resize(factors, gizmo_.Pivot());
  return Format("Resized by %.2f, %.2f, %.2f", factors[0], factors[1], factors[2]);
}

}  // namespace veldra

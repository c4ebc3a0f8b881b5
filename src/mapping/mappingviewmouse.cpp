#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "mapping/mappingview.h"

namespace veldra {

namespace {

/// A press that moves no farther is a click, in pixels.
constexpr double kStillClick = 3.0;
constexpr double kPointReach = 7.0;
constexpr double kGuideReach = 4.0;
constexpr double kZoomPerNotch = 1.25;
constexpr double kNotch = 120.0;
constexpr double kLongStep = 8.0;  ///< of the arrow keys, in texels

ESelect HowBy(Qt::KeyboardModifiers modifiers) {
  if (modifiers.testFlag(Qt::ControlModifier)) return ESelect::kToggle;
  return modifiers.testFlag(Qt::ShiftModifier) ? ESelect::kAdd : ESelect::kOnly;
}

std::optional<STexel> StepOf(const QKeyEvent& event) {
  const double step = event.modifiers().testFlag(Qt::ShiftModifier) ? kLongStep : 1.0;
  switch (event.key()) {
    case Qt::Key_Left:
      return STexel{-step, 0};
    case Qt::Key_Right:
      return STexel{step, 0};
    case Qt::Key_Up:
      return STexel{0, -step};
    case Qt::Key_Down:
      return STexel{0, step};
    default:
      return std::nullopt;
  }
}

}  // namespace

double CMappingView::Reach() const {
  return kPointReach / zoom_;
}

// --- Pressing --------------------------------------------------------------------------------------------------------

void CMappingView::mousePressEvent(QMouseEvent* event) {
  if (hold_ != EHold::kNone) return;
  pressed_at_ = last_ = event->position();
  is_click_ = true;
  selects_on_release_ = false;
  grabbed_.reset();
  if (event->button() == Qt::MiddleButton) hold_ = EHold::kPan;
  if (event->button() == Qt::LeftButton && !image_.isNull()) Press(*event);
}

void CMappingView::Press(const QMouseEvent& event) {
  if (session_.OwnPivot() && QLineF(PlaceOf(*session_.OwnPivot()), event.position()).length() <= kPointReach) {
    hold_ = EHold::kPivot;
  } else if (TakeSelected(event)) {
    hold_ = EHold::kDrag;
    // A click without a drag is a click all the same.
    selects_on_release_ = true;
  } else if (TakeGuide(event.position())) {
    hold_ = EHold::kGuide;
  } else {
    const ESelect how = HowBy(event.modifiers());
    const bool is_taken =
        session_.Mode() == EMappingMode::kCorners ? TakePoint(event.position(), how) : TakeFace(event.position(), how);
    hold_ = is_taken ? EHold::kDrag : EHold::kBand;
  }
}

/// Something that is selected lies under the press, and modifiers do not ask for something else.
bool CMappingView::TakeSelected(const QMouseEvent& event) {
  if (HowBy(event.modifiers()) == ESelect::kToggle) return false;
  const CMappedFaces& faces = session_.Faces();
  const STexel at = TexelAt(event.position());
  if (session_.Mode() == EMappingMode::kCorners) {
    const std::vector<int32_t> hits = faces.PointsNear(at, Reach());
    const auto point =
        std::ranges::find_if(hits, [&](int32_t i) { return faces.Points()[static_cast<size_t>(i)].is_selected; });
    if (point != hits.end()) grabbed_ = faces.Points()[static_cast<size_t>(*point)].at;
    if (!hits.empty()) return point != hits.end();
  }
  return std::ranges::any_of(faces.FacesAt(at),
                             [&](int32_t face) { return faces.Faces()[static_cast<size_t>(face)].is_selected; });
}

bool CMappingView::TakeGuide(const QPointF& place) {
  if (session_.Settings().show_guides == 0) return false;
  const auto is_near = [&](const SGuide& guide) {
    const QPointF at = PlaceOf({guide.place, guide.place});
    return std::abs(guide.is_upright ? at.x() - place.x() : at.y() - place.y()) <= kGuideReach;
  };
  STextureGuides guides = session_.Guides();
  for (const bool is_upright : {true, false}) {
    std::vector<double>& lines = is_upright ? guides.across : guides.down;
    const auto found = std::ranges::find_if(lines, [&](double line) { return is_near({is_upright, line}); });
    if (found == lines.end()) continue;
    guide_ = {is_upright, *found};
    taken_guide_ = guide_;
    lines.erase(found);
    session_.SetGuides(guides);
    return true;
  }
  return false;
}

bool CMappingView::TakePoint(const QPointF& place, ESelect how) {
  const std::vector<int32_t> hits = session_.Faces().PointsNear(TexelAt(place), Reach());
  if (hits.empty()) return false;
  const int32_t point = hits.front();
  grabbed_ = session_.Faces().Points()[static_cast<size_t>(point)].at;
  session_.Select([&](CMappedFaces& faces) { faces.SelectPoints(std::span(&point, 1), how); });
  return true;
}

bool CMappingView::TakeFace(const QPointF& place, ESelect how) {
  if (session_.Faces().FacesAt(TexelAt(place)).empty()) return false;
  SelectFaceAt(place, how);
  return true;
}

/// The topmost one; where it is all that is selected, the one below it, so that faces that lie on each other can all be
/// reached by clicking again.
void CMappingView::SelectFaceAt(const QPointF& place, ESelect how) {
  const std::vector<int32_t> at = session_.Faces().FacesAt(TexelAt(place));
  if (at.empty()) return;
  int32_t face = at.front();
  const std::vector<int32_t> selected = session_.Faces().SelectedFaces();
  const auto here = selected.size() == 1 ? std::ranges::find(at, selected.front()) : at.end();
  if (how == ESelect::kOnly && here != at.end()) face = here + 1 == at.end() ? at.front() : *(here + 1);
  session_.Select([&](CMappedFaces& faces) {
    const std::span one(&face, 1);
    session_.Mode() == EMappingMode::kIslands ? faces.SelectIslands(one, how) : faces.SelectFaces(one, how);
  });
}

// --- Dragging --------------------------------------------------------------------------------------------------------

void CMappingView::mouseMoveEvent(QMouseEvent* event) {
  PointAt(event->position());
  if (hold_ == EHold::kNone) return;
  if (is_click_ && QLineF(pressed_at_, event->position()).length() <= kStillClick) return;
  if (is_click_ && hold_ == EHold::kDrag) BeginDrag();
  is_click_ = false;
  const QPointF before = std::exchange(last_, event->position());
  if (hold_ == EHold::kPan) {
    origin_ += last_ - before;
    is_fitted_ = false;
    KeepInSight();
  } else if (hold_ == EHold::kDrag) {
    DragTo(last_, event->modifiers());
  } else if (hold_ == EHold::kGuide) {
    HoldGuide(guide_.is_upright, last_.toPoint());
  } else if (hold_ == EHold::kPivot) {
    session_.SetPivot(Rounded(TexelAt(last_)));
  }
  update();
}

void CMappingView::BeginDrag() {
  if (!session_.Begin("Move Mapping")) {
    hold_ = EHold::kNone;
    return;
  }
  start_bounds_ = BoundsOf(session_.Start());
  staying_ = snaps_to_corners_ && grabbed_ ? session_.Staying() : Texels();
}

void CMappingView::DragTo(const QPointF& place, Qt::KeyboardModifiers modifiers) {
  STexel by = TexelAt(place) - TexelAt(pressed_at_);
  if (modifiers.testFlag(Qt::ShiftModifier)) (std::abs(by.x) >= std::abs(by.y) ? by.y : by.x) = 0.0;
  const CSettings& settings = session_.Settings();
  const bool to_guides = settings.show_guides != 0 && settings.snap_to_guides != 0;
  STexelSnap snap = {.reach = settings.snap_within / zoom_,
                     .guides = to_guides ? &session_.Guides() : nullptr,
                     .corners = staying_,
                     .to_texels = session_.IsOnTexels()};
  if (modifiers.testFlag(Qt::ControlModifier)) snap = {.to_texels = session_.IsOnTexels()};
  by = SnappedOffset({grabbed_, start_bounds_}, by, snap);
  session_.Try(Moved(session_.Start(), StoppedAtEdge(start_bounds_, by, session_.Faces().Width())));
}

void CMappingView::mouseReleaseEvent(QMouseEvent* event) {
  const Qt::MouseButton button = hold_ == EHold::kPan ? Qt::MiddleButton : Qt::LeftButton;
  if (hold_ != EHold::kNone && event->button() == button) Release(*event);
}

void CMappingView::Release(const QMouseEvent& event) {
  const EHold held = hold_;
  const ESelect how = HowBy(event.modifiers());
  if (held == EHold::kGuide) {
    DropGuide();
    return;
  }
  LetGo();
  if (held == EHold::kDrag && !is_click_) {
    session_.Finish();
  } else if (held == EHold::kDrag && selects_on_release_ && how == ESelect::kOnly) {
    if (session_.Mode() != EMappingMode::kCorners || !TakePoint(event.position(), how))
      SelectFaceAt(event.position(), how);
  } else if (held == EHold::kBand && !is_click_) {
    SelectInBand(how);
  } else if (held == EHold::kBand) {
    if (session_.Faces().FacesAt(TexelAt(event.position())).empty() && how == ESelect::kOnly)
      session_.SelectAll(false);
    else
      SelectFaceAt(event.position(), how);
  }
}

void CMappingView::SelectInBand(ESelect how) {
  const STexel from = TexelAt(pressed_at_);
  const STexel to = TexelAt(last_);
  const STexel both[] = {from, to};
  const STexelRect area = BoundsOf(both);
  session_.Select([&](CMappedFaces& faces) {
    if (session_.Mode() == EMappingMode::kCorners)
      faces.SelectPoints(faces.PointsIn(area), how);
    else if (session_.Mode() == EMappingMode::kFaces)
      faces.SelectFaces(faces.FacesIn(area), how);
    else
      faces.SelectIslands(faces.FacesIn(area), how);
  });
}

void CMappingView::LetGo() {
  hold_ = EHold::kNone;
  staying_.clear();
  update();
}

// --- Guides ----------------------------------------------------------------------------------------------------------

void CMappingView::HoldGuide(bool is_upright, const QPoint& at) {
  if (image_.isNull()) return;
  hold_ = EHold::kGuide;
  last_ = at;
  const STexel texel = TexelAt(last_);
  guide_ = {is_upright, std::clamp(std::round(is_upright ? texel.x : texel.y), 0.0, image_.width() - 1.0)};
  update();
}

void CMappingView::DropGuide() {
  if (hold_ != EHold::kGuide) return;
  LetGo();
  taken_guide_.reset();
  STextureGuides guides = session_.Guides();
  std::vector<double>& lines = guide_.is_upright ? guides.across : guides.down;
  const bool is_inside = rect().contains(last_.toPoint());
  if (is_inside && std::ranges::find(lines, guide_.place) == lines.end()) lines.push_back(guide_.place);
  // Who pulls a guide wants to see it.
  if (is_inside) session_.Settings().show_guides = 1;
  session_.SetGuides(guides);
}

void CMappingView::GiveUpGuide() {
  if (hold_ != EHold::kGuide) return;
  LetGo();
  const auto before = std::exchange(taken_guide_, std::nullopt);
  if (!before) return;
  STextureGuides guides = session_.Guides();
  (before->is_upright ? guides.across : guides.down).push_back(before->place);
  session_.SetGuides(guides);
}

// --- Pointer, wheel and keys -----------------------------------------------------------------------------------------

void CMappingView::PointAt(const QPointF& place) {
  emit PointedAt(TexelAt(place));
  if (hold_ != EHold::kNone) return;
  const CMappedFaces& faces = session_.Faces();
  const STexel at = TexelAt(place);
  constexpr size_t kFew = 3000;  // all are looked at with each move
  const bool can_take =
      faces.Faces().size() <= kFew && (!faces.FacesAt(at).empty() || !faces.PointsNear(at, Reach()).empty());
  setCursor(can_take ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void CMappingView::wheelEvent(QWheelEvent* event) {
  ZoomBy(std::pow(kZoomPerNotch, event->angleDelta().y() / kNotch), event->position());
  event->accept();
}

bool CMappingView::IsOwnKey(const QKeyEvent& event) const {
  return event.key() == Qt::Key_Escape || StepOf(event) || keys_.Find(event);
}

/// Keys mean here what they mean in this window.
bool CMappingView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsOwnKey(static_cast<QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void CMappingView::keyPressEvent(QKeyEvent* event) {
  if (!IsOwnKey(*event) || !TakeKey(*event)) QWidget::keyPressEvent(event);
}

bool CMappingView::TakeKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) {
    if (hold_ == EHold::kGuide) GiveUpGuide();
    if (hold_ == EHold::kDrag) session_.Cancel();
    LetGo();
    return true;
  }
  if (hold_ != EHold::kNone) return true;
  if (const auto step = StepOf(event)) {
    session_.Move(*step);
    return true;
  }
  Do(*keys_.Find(event));
  return true;
}

void CMappingView::Do(EMappingKey command) {
  switch (command) {
    case EMappingKey::kCorners:
    case EMappingKey::kFaces:
    case EMappingKey::kIslands:
      return session_.SetMode(static_cast<EMappingMode>(command));
    case EMappingKey::kSelectAll:
    case EMappingKey::kDeselectAll:
      return session_.SelectAll(command == EMappingKey::kSelectAll);
    case EMappingKey::kInvert:
      return session_.InvertSelection();
    case EMappingKey::kTurn:
    case EMappingKey::kTurnBack:
      return session_.Turn(command == EMappingKey::kTurn ? 90.0 : -90.0);
    case EMappingKey::kFlipAcross:
      return session_.Flip(ETexelAxis::kAcross);
    case EMappingKey::kFlipDown:
      return session_.Flip(ETexelAxis::kDown);
    case EMappingKey::kFit:
      return Fit();
    case EMappingKey::kZoomIn:
    case EMappingKey::kZoomOut:
      return ZoomBy(command == EMappingKey::kZoomIn ? kZoomPerNotch : 1 / kZoomPerNotch, QRectF(rect()).center());
  }
}

void CMappingView::contextMenuEvent(QContextMenuEvent* event) {
  if (hold_ == EHold::kNone) emit MenuWanted(event->globalPos());
}

}  // namespace veldra

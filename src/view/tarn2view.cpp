#include "view/tarn2view.h"

#include <QMouseEvent>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "model/geometry.h"
#include "platform/text.h"
#include "render/glstate.h"
#include "render/viewmarkers.h"
#include "view/modelholds.h"

namespace veldra {

CTarnView::CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent)
    : C3DView(document->Settings(), parent), document_(std::move(document)), cursor_(*document_) {
  setObjectName("modelView");
  document_->AddObserver(this);
  cursor_.SetOnChanged([this] { OnCursorChanged(); });
  MutableState().ZoomToFit(ShownBounds(State(), document_->Model()));
  is_begun_ = document_->Model().FaceCount() > 0;
}

CTarnView::~CTarnView() {
  Mouse().LetGo();
  document_->RemoveObserver(this);
}

EGroupKind CTarnView::PickedKind() const {
  return State().ShowsMarkers(document_->Model()) ? EGroupKind::kVertices : EGroupKind::kFaces;
}

SMarks CTarnView::Marks() const {
  return {.selection = true, .face = cursor_.Face(), .vertex = cursor_.Vertex(), .tagged = cursor_.Tagged()};
}

void CTarnView::MarkSnap(std::optional<int32_t> vertex) {
  if (std::exchange(snapped_onto_, vertex) != vertex) Redraw();
}

void CTarnView::ShowBand(const std::optional<QRectF>& band) {
  band_ = band;
  Redraw();
}

/// The rubber band is part of the picture: a widget over one that OpenGL draws would leave its traces there.
void CTarnView::DrawOver(const CViewCamera& camera) {
  const std::optional<CGizmo> gizmo = Gizmo();
  if (!band_ && !gizmo && !snapped_onto_) return;
  const double ratio = devicePixelRatioF();
  const CSavedGlState saved;
  StartClean();
  EnterWindow(camera.Width(), camera.Height());
  if (gizmo) gizmo->Draw(held_gizmo_ ? std::optional(held_gizmo_->handle) : std::nullopt);
  if (snapped_onto_ && *snapped_onto_ < document_->Model().VertexCount()) {
    constexpr double kHalfMark = 8.0;
    const SScreenPoint at = camera.Project(document_->Model().Vertex(*snapped_onto_).Position());
    const double half = kHalfMark * ratio;
    DrawBand({.x = at.x - half, .y = at.y - half}, {.x = at.x + half, .y = at.y + half}, ratio);
  }
  if (!band_) return;
  DrawBand({.x = band_->left() * ratio, .y = band_->top() * ratio},
           {.x = band_->right() * ratio, .y = band_->bottom() * ratio}, ratio);
}

// --- The gizmo -------------------------------------------------------------------------------------------------------

const std::vector<int32_t>& CTarnView::SelectedPart() const {
  const CBinModel& model = document_->Model();
  if (selected_part_ && selected_part_->revision == model.SelectionRevision()) return selected_part_->vertices;
  const std::vector<int32_t> vertices = model.Selected(EGroupKind::kVertices);
  const std::vector<int32_t> corners = VerticesInScope(model, SScope::OfFaces(model.Selected(EGroupKind::kFaces)));
  selected_part_ = SSelectedPart{.revision = model.SelectionRevision(), .vertices = {}};
  std::ranges::set_union(vertices, corners, std::back_inserter(selected_part_->vertices));
  return selected_part_->vertices;
}

std::optional<CGizmo> CTarnView::Gizmo() const {
  if (!State().gizmo || State().only_3d || document_->IsReadOnly() || document_->Model().IsBusy()) return std::nullopt;
  if (held_gizmo_) return CGizmo(Camera(), held_gizmo_->pivot, devicePixelRatioF());
  const auto bounds = document_->Model().BoundsOfVertices(SelectedPart());
  if (!bounds) return std::nullopt;
  const Vector3 pivot = GizmoPivotPoint();
  return CGizmo(Camera(), pivot, devicePixelRatioF(), bounds->min == bounds->max && pivot == ToVector(bounds->min));
}

void CTarnView::SetGizmoPivot(const SPivotInput& pivot) {
  gizmo_pivot_ = pivot;
  Redraw();
}

Vector3 CTarnView::GizmoPivotPoint() const {
  SPivotInput pivot = gizmo_pivot_;
  pivot.vertex = cursor_.Vertex();
  if (pivot.kind == SPivotInput::EKind::kVertex && pivot.vertex < 0) pivot.kind = SPivotInput::EKind::kMiddle;
  return PivotPoint(document_->Model(), SelectedPart(), pivot);
}

void CTarnView::TogglePickPivot() {
  is_picking_pivot_ = !is_picking_pivot_;
  is_picking_pivot_ ? setCursor(Qt::CrossCursor) : unsetCursor();
  document_->Say(is_picking_pivot_ ? "Click the point that the gizmo is to stand at; Esc gives up" : "");
  emit StateChanged();
}

void CTarnView::PickPivot(const QPointF& position) {
  const std::optional<SPoint> point = PointAt(position);
  if (!point) return document_->Say("There is nothing at the pointer: click a vertex or a face");
  TogglePickPivot();
  document_->Say(Format("The gizmo stands at %d, %d, %d", point->x, point->y, point->z));
  emit PivotPicked(*point);
}

void CTarnView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && is_picking_pivot_) return TogglePickPivot();
  C3DView::keyPressEvent(event);
}

void CTarnView::HoldGizmo(const std::optional<SGizmoHandle>& handle) {
  const std::optional<CGizmo> gizmo = Gizmo();
  held_gizmo_.reset();
  if (handle && gizmo) held_gizmo_ = {*handle, gizmo->Pivot()};
  Redraw();
}

std::unique_ptr<CViewHold> CTarnView::GrabGizmo(const QMouseEvent& press) {
  const std::optional<CGizmo> gizmo = Gizmo();
  if (!gizmo || is_picking_pivot_ || !IsPlainPress(press)) return nullptr;
  const QPointF at = press.position() * devicePixelRatioF();
  const auto handle = gizmo->HandleAt(at.x(), at.y());
  if (!handle) return nullptr;
  return std::make_unique<CGizmoHold>(*this, press.position(), *gizmo, *handle, SelectedPart());
}

// --- What changes ----------------------------------------------------------------------------------------------------

void CTarnView::OnDocumentChanged(const CTarnDoc&, const SModelChange& change) {
  if (change.topology) Mouse().LetGo();
  if (!Mouse().IsHolding()) KeepInSight();
  Redraw();
}

/// An edit leaves the view where it is, but for two cases: a model that is just begun, which is shown whole until it
/// has its first face, and one that has gone elsewhere altogether.
void CTarnView::KeepInSight() {
  const CBinModel& model = document_->Model();
  if (model.VertexCount() == 0) is_begun_ = false;
  if (is_begun_) {
    FollowWhatLeft(MutableState(), model.Bounds());
  } else if (model.VertexCount() > 0) {
    const bool is_point = model.Bounds().min == model.Bounds().max;
    if (is_point || State().extent <= 1.0 || !IsInSight(Camera(), model.Bounds()))
      MutableState().ZoomToFit(model.Bounds());
    is_begun_ = model.FaceCount() > 0;
  }
}

void CTarnView::OnCursorChanged() {
  const CBinFace* face = cursor_.FaceObject();
  const bool is_new = followed_face_ != cursor_.Face();
  followed_face_ = cursor_.Face();
  if (is_new && face != nullptr && State().follow_current_face && !is_choosing_ && !IsPlaying())
    BringIntoSight(MutableState(), document_->Model(), *face, width(), height());
  Redraw();
  emit CursorChanged();
}

// --- The mouse -------------------------------------------------------------------------------------------------------

/// The selected vertices or faces, one of which is under a plain press of the left button.
std::optional<CTarnView::SGrabbed> CTarnView::GrabbedPart(const QMouseEvent& press) {
  const CBinModel& model = document_->Model();
  const bool has_selection =
      cursor_.SelectedCount(EGroupKind::kVertices) > 0 || cursor_.SelectedCount(EGroupKind::kFaces) > 0;
  if (document_->IsReadOnly() || !has_selection || !IsPlainPress(press)) return std::nullopt;
  const std::optional<SPick> pick = PickAt(press.position());
  if (!pick) return std::nullopt;
  const std::vector<int32_t> selected = model.Selected(pick->kind);
  if (!std::ranges::binary_search(selected, pick->index)) return std::nullopt;
  if (pick->kind == EGroupKind::kVertices) return SGrabbed{model.Vertex(pick->index).Position(), selected};
  return SGrabbed{NearestCorner(model.Face(pick->index), press.position()).Position(),
                  VerticesInScope(model, SScope::OfFaces(selected))};
}

/// In the window.
double CTarnView::PixelsTo(const SPoint& point, const QPointF& from) const {
  const SScreenPoint place = Camera().Project(point);
  const QPointF at = from * devicePixelRatioF();
  return std::hypot(place.x - at.x(), place.y - at.y());
}

const CBinVertex& CTarnView::NearestCorner(const CBinFace& face, const QPointF& to) const {
  const auto distance = [&](const CBinVertex* corner) { return PixelsTo(corner->Position(), to); };
  return **std::ranges::min_element(face.Corners(), {}, distance);
}

/// The face under a press with Alt, which lends its texture. Who turns with Alt has no other use for it.
std::optional<int32_t> CTarnView::GrabbedTexture(const QMouseEvent& press) {
  const bool is_alt = press.button() == Qt::LeftButton && press.modifiers().testFlag(Qt::AltModifier);
  if (!is_alt || document_->IsReadOnly() || MouseScheme(Settings().mouse_scheme) == EMouseScheme::kAltTurns)
    return std::nullopt;
  const std::optional<SPick> pick = PickAt(press.position());
  if (!pick || pick->kind != EGroupKind::kFaces) return std::nullopt;
  return CTextureTransfer::CanTake(document_->Model().Face(pick->index)) ? std::optional(pick->index) : std::nullopt;
}

std::unique_ptr<CViewHold> CTarnView::Grab(const QMouseEvent& press, EMouseDrag drag) {
  if (auto gizmo = GrabGizmo(press)) return gizmo;
  if (const auto part = GrabbedPart(press))
    return std::make_unique<CVertexHold>(*this, press.position(), part->at, part->moving);
  if (const auto face = GrabbedTexture(press)) return std::make_unique<CTextureHold>(*this, *face);
  if (drag == EMouseDrag::kBand) return std::make_unique<CBandHold>(*this, press.position());
  return nullptr;
}

void CTarnView::Click(const QMouseEvent& event) {
  if (event.button() == Qt::RightButton) OfferMenu(event.position());
  if (event.button() != Qt::LeftButton) return;
  if (is_picking_pivot_) return PickPivot(event.position());
  const std::optional<SPick> pick = PickAt(event.position());
  if (pick) Choose(*pick, event.modifiers().testFlag(Qt::ControlModifier));
}

void CTarnView::contextMenuEvent(QContextMenuEvent* event) {
  // With the mouse the menu comes when the button goes up: with some schemes the same button turns or moves.
  if (event->reason() == QContextMenuEvent::Keyboard) emit MenuWanted(EGroupKind::kFaces, event->globalPos());
}

}  // namespace veldra

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "document/tarn2doc.h"
#include "editing/commandinputs.h"
#include "editing/editcursor.h"
#include "render/gizmo.h"
#include "render/modelpicker.h"
#include "view/view3d.h"

namespace veldra {

/// A document in 3D.
///
/// Mouse: a click makes the face or vertex under it the current one, with Ctrl it also takes it into the selection or
/// out of it; dragging moves the view, or the selected vertices or faces when it begins on one of them, or selects by
/// rubber band. Keys come through the command table.
class CTarnView : public C3DView, private CDocumentObserver {
  Q_OBJECT

 public:
  explicit CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent = nullptr);
  ~CTarnView() override;

  CTarnDoc& Document() const { return *document_; }
  const std::shared_ptr<CTarnDoc>& SharedDocument() const { return document_; }
  /// The current face and vertex and the tagged vertices of this view.
  CEditCursor& Cursor() { return cursor_; }
  const CEditCursor& Cursor() const { return cursor_; }

  // --- Finding things; positions are the widget's -----------------------------------------------------------------
  /// From the middle of what is seen, of length 1.
  SUnitNormal ToViewer() const;
  /// The model point in the middle of the window, as deep as what the view turns about.
  SPoint MiddleOfView() const;
  std::optional<SPick> PickAt(const QPointF& position);
  /// All of KIND that can be seen in RECTANGLE, ascending.
  std::vector<int32_t> PickIn(const QRectF& rectangle, EGroupKind kind);
  /// What a rubber band selects: vertices where they are marked, else faces.
  EGroupKind PickedKind() const;
  /// PICK becomes the current face or vertex; with TOGGLE it also joins or leaves the selection.
  void Choose(const SPick& pick, bool toggle);
  /// What is at POSITION becomes the current face or vertex, and what can be done with it is offered there.
  void OfferMenu(const QPointF& position);

  /// A rubber band from corner to corner, in the widget, or none.
  void ShowBand(const std::optional<QRectF>& band);
  const std::optional<QRectF>& Band() const { return band_; }

  /// VERTEX stands out as what a drag has been brought onto; nothing for none.
  void MarkSnap(std::optional<int32_t> vertex);

  /// Arrows, boxes and rings about the gizmo's pivot while something is selected; nothing where they are not shown.
  std::optional<CGizmo> Gizmo() const;
  /// Where it stands: the current vertex is this view's, and without one the middle.
  void SetGizmoPivot(const SPivotInput& pivot);
  Vector3 GizmoPivotPoint() const;
  /// The next click says where; the same again, or Escape, gives that up.
  void TogglePickPivot();
  bool IsPickingPivot() const { return is_picking_pivot_; }
  /// What is seen at POSITION: a vertex, or the place on a face, on whole units.
  std::optional<SPoint> PointAt(const QPointF& position);
  /// While HANDLE is held its gizmo stays where it is.
  void HoldGizmo(const std::optional<SGizmoHandle>& handle);

  // The view's commands; each redraws.
  void ToggleSelectThrough() { Toggle(&SViewState::select_through); }
  void ToggleEdges() { Toggle(&SViewState::edges); }
  void ToggleGizmo() { Toggle(&SViewState::gizmo); }
  /// What is selected, or else the current face, as large as it goes.
  void ZoomToSelection();
  /// The same, but only where not all of it is in the window; a current face that looks away is turned to the viewer.
  void BringSelectionIntoSight();
  void ShowVerticesOnly() { SetMode(ERenderMode::kVertices); }
  void ShowWireframe() { SetMode(ERenderMode::kWireframe); }
  void ShowSolid() { SetMode(ERenderMode::kSolid); }
  void ShowTextured() { SetMode(ERenderMode::kTextured); }
  void ToggleOnly3D() { Toggle(&SViewState::only_3d); }
  void ToggleAxes() { Toggle(&SViewState::axes); }
  void ToggleVertices() { Toggle(&SViewState::vertices); }
  void ToggleVertexNumbers() { Toggle(&SViewState::vertex_numbers); }
  void ToggleSphericalMarkers() { Toggle(&SViewState::spherical_markers); }
  void ToggleHighQuality() { Toggle(&SViewState::high_quality); }
  void ToggleTransparency() { Toggle(&SViewState::transparency); }
  void ToggleFollowFace() { Toggle(&SViewState::follow_current_face); }

 signals:
  /// The current face or vertex, or what is tagged.
  void CursorChanged();
  /// A click with the right button on the model: what can be done with the current face or vertex is to be offered at
  /// AT on the screen.
  void MenuWanted(EGroupKind kind, const QPoint& at);
  /// TogglePickPivot's click.
  void PivotPicked(const SPoint& at);

 protected:
  const CBinModel& Model() const override { return document_->Model(); }
  bool PrepareFrame() override { return !document_->Model().IsBusy(); }
  SMarks Marks() const override;
  void DrawOver(const CViewCamera& camera) override;
  std::unique_ptr<CViewHold> Grab(const QMouseEvent& press, EMouseDrag drag) override;
  void Click(const QMouseEvent& event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /// Tab and Shift+Tab are commands here.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc&) override {}

  void OnCursorChanged();
  /// What a drag that begins with PRESS moves.
  struct SGrabbed {
    SPoint at;  ///< the vertex under the pointer, or the corner of a face that is next to it
    std::vector<int32_t> moving;
  };
  std::optional<SGrabbed> GrabbedPart(const QMouseEvent& press);
  const CBinVertex& NearestCorner(const CBinFace& face, const QPointF& to) const;
  double PixelsTo(const SPoint& point, const QPointF& from) const;
  void PickPivot(const QPointF& position);
  std::unique_ptr<CViewHold> GrabGizmo(const QMouseEvent& press);
  const std::vector<int32_t>& SelectedPart() const;
  std::optional<SBounds> BoundsOfSelection() const;
  std::optional<int32_t> GrabbedTexture(const QMouseEvent& press);
  void KeepInSight();

  std::shared_ptr<CTarnDoc> document_;
  CEditCursor cursor_;  ///< after the document, and told of its changes before the view
  CModelPicker picker_;
  std::optional<QRectF> band_;
  struct SHeldGizmo {
    SGizmoHandle handle;
    Vector3 pivot;
  };
  std::optional<SHeldGizmo> held_gizmo_;
  /// The vertices that belong to the selection, found anew when that is another one.
  struct SSelectedPart {
    uint64_t revision = 0;
    std::vector<int32_t> vertices;
  };
  mutable std::optional<SSelectedPart> selected_part_;
  SPivotInput gizmo_pivot_ = {.kind = SPivotInput::EKind::kMiddle};
  bool is_picking_pivot_ = false;
  std::optional<int32_t> snapped_onto_;
  int32_t followed_face_ = -1;
  bool is_choosing_ = false;  ///< what is clicked on is in sight
  bool is_begun_ = false;     ///< the model has something to be seen in its place
};

}  // namespace veldra

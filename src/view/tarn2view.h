#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QOpenGLWidget>
#include <QPointF>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "document/tarn2doc.h"
#include "editing/editcursor.h"
#include "render/modelpicker.h"
#include "render/modelrenderer.h"
#include "render/viewaim.h"
#include "render/viewstate.h"
#include "view/orbit.h"

namespace veldra {

class CViewMouse;

/// A document in 3D. Draws when something changed or while it plays, never idly.
///
/// Mouse: a click makes the face or vertex under it the current one, with Ctrl it also takes it into the selection or
/// out of it; dragging turns, moves and selects as the mouse scheme of the settings says, or moves the selected
/// vertices when it begins on one of them; the wheel zooms to the pointer. Keys come through the command table.
class CTarnView : public QOpenGLWidget, private CDocumentObserver {
  Q_OBJECT

 public:
  /// Play turns the model about its Y axis by kPlayStep on each tick: tenths of a degree, so that a turn takes two
  /// seconds where the ticks come on time, and about six where the screen only keeps up with 60 frames a second.
  static constexpr double kPlayStep = 10.0;
  static constexpr double kPlayUnitDegrees = 0.1;
  static constexpr int kPlayIntervalMs = 5;
  static constexpr double kLargestZoom = 1000.0;

  /// How many samples a pixel has in the views that are made from now on; 0 for edges that are not smoothed.
  static void SetSamples(int samples);

  explicit CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent = nullptr);
  ~CTarnView() override;

  CTarnDoc& Document() const { return *document_; }
  const std::shared_ptr<CTarnDoc>& SharedDocument() const { return document_; }
  const SViewState& State() const { return state_; }
  /// The current face and vertex and the tagged vertices of this view.
  CEditCursor& Cursor() { return cursor_; }
  const CEditCursor& Cursor() const { return cursor_; }
  bool IsPlaying() const { return play_timer_.isActive(); }
  bool HasDrawn() const { return has_drawn_; }
  /// Why nothing can be drawn; empty while all is well.
  const QString& Fault() const { return fault_; }
  const CModelRenderer& Renderer() const { return *renderer_; }
  const CModelPicker& Picker() const { return picker_; }

  // --- Finding things; positions are the widget's -----------------------------------------------------------------
  /// The model as it is seen now, in the screen's own pixels.
  CViewCamera Camera() const;
  /// From the middle of what is seen, of length 1.
  SUnitNormal ToViewer() const;
  std::optional<SPick> PickAt(const QPointF& position);
  /// All of KIND that can be seen in RECTANGLE, ascending.
  std::vector<int32_t> PickIn(const QRectF& rectangle, EGroupKind kind);
  /// What a rubber band selects: vertices where they are marked, else faces.
  EGroupKind PickedKind() const { return state_.ShowsMarkers() ? EGroupKind::kVertices : EGroupKind::kFaces; }
  /// PICK becomes the current face or vertex; with TOGGLE it also joins or leaves the selection.
  void Choose(const SPick& pick, bool toggle);
  /// What is at POSITION becomes the current face or vertex, and what can be done with it is offered there.
  void OfferMenu(const QPointF& position);

  // The view's commands; each redraws.
  void ShowVerticesOnly() { SetMode(ERenderMode::kVertices); }
  void ShowWireframe() { SetMode(ERenderMode::kWireframe); }
  void ShowSolid() { SetMode(ERenderMode::kSolid); }
  void ShowTextured() { SetMode(ERenderMode::kTextured); }
  void ToggleOnly3D() { Toggle(&SViewState::only_3d); }
  void ToggleAxes() { Toggle(&SViewState::axes); }
  void ToggleVertices() { Toggle(&SViewState::vertices); }
  void ToggleSphericalMarkers() { Toggle(&SViewState::spherical_markers); }
  void ToggleHighQuality() { Toggle(&SViewState::high_quality); }
  void ToggleTransparency() { Toggle(&SViewState::transparency); }
  void ToggleFollowFace() { Toggle(&SViewState::follow_current_face); }
  void ToggleOrthographic() { Toggle(&SViewState::orthographic); }
  void ToggleGrid() { Toggle(&SViewState::grid); }
  void ViewFront() { LookFrom(EViewSide::kFront); }
  void ViewBack() { LookFrom(EViewSide::kBack); }
  void ViewLeft() { LookFrom(EViewSide::kLeft); }
  void ViewRight() { LookFrom(EViewSide::kRight); }
  void ViewTop() { LookFrom(EViewSide::kTop); }
  void ViewBottom() { LookFrom(EViewSide::kBottom); }
  void TogglePlay();
  void ZoomIn();
  void ZoomOut();
  void ZoomToFit();
  void RestoreRotation();
  void SetBackground(const SColor& color);
  void Turn(const STurn& turn);
  /// To the right and down, in pixels.
  void Pan(const QPointF& by);
  /// The model point under AT stays there.
  void ZoomBy(double factor, const QPointF& at);
  /// The view's middle stays where it is in the model, though the bounds may change.
  void HoldMiddle();

 signals:
  /// Mode, options or play changed: what the menus show.
  void StateChanged();
  /// The current face or vertex, or what is tagged.
  void CursorChanged();
  /// A click with the right button on the model: what can be done with the current face or vertex is to be offered at
  /// AT on the screen.
  void MenuWanted(EGroupKind kind, const QPoint& at);
  /// Once, when a frame with the model is complete.
  void FirstFrameDrawn();
  /// Nothing can be drawn; Fault() says why.
  void DrawingFailed();

 protected:
  void initializeGL() override;
  void paintGL() override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  /// Tab and Shift+Tab are commands here.
  bool focusNextPrevChild(bool) override { return false; }
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc&) override {}

  void OnCursorChanged();
  void LookFrom(EViewSide side);
  void FollowMiddle(const CBinModel& model);
  bool DrawAside(int width, int height, const std::function<void()>& draw);
  void Redraw();
  void ShowGridSpacing();
  void SetMode(ERenderMode mode);
  void Toggle(bool SViewState::*option);
  void Changed();
  void FitExtent();
  void ZoomTo(double zoom, const QPointF& at);
  double SmallerSide() const;
  void DropGraphics();
  void ShowFault(const QString& text);
  void CheckContext();

  std::shared_ptr<CTarnDoc> document_;
  CEditCursor cursor_;  ///< after the document, and told of its changes before the view
  SViewState state_;
  std::unique_ptr<CModelRenderer> renderer_;
  CModelPicker picker_;
  std::unique_ptr<CViewMouse> mouse_;
  int32_t followed_face_ = -1;
  bool is_choosing_ = false;  ///< what is clicked on is in sight
  QBasicTimer play_timer_;
  QElapsedTimer play_time_;  ///< animated textures run while the view plays
  QLabel* grid_label_ = nullptr;
  QLabel* fault_label_ = nullptr;
  QString fault_;
  bool has_drawn_ = false;
  bool was_empty_ = true;
};

}  // namespace veldra

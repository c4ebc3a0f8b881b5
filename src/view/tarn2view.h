#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QOpenGLWidget>
#include <QPointF>
#include <memory>

#include "document/tarn2doc.h"
#include "view/modelrenderer.h"
#include "view/orbit.h"
#include "view/viewstate.h"

namespace veldra {

/// A document in 3D. Draws when something changed or while it plays, never idly.
///
/// Mouse: dragging with the left button turns the model, with the middle one (or Shift and the left) moves it; the
/// wheel zooms to the pointer. Keys: the arrows turn it about X and Y, Page Up and Page Down about Z, 5 on the number
/// pad restores the rotation, + and - zoom, P plays.
class CTarnView : public QOpenGLWidget, private CDocumentObserver {
  Q_OBJECT

 public:
  /// Play turns the model about its Y axis by kPlayStep on each tick: tenths of a degree, so that a turn takes two
  /// seconds where the ticks come on time, and about six where the screen only keeps up with 60 frames a second.
  static constexpr double kPlayStep = 10.0;
  static constexpr double kPlayUnitDegrees = 0.1;
  static constexpr int kPlayIntervalMs = 5;
  static constexpr double kLargestZoom = 1000.0;

  explicit CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent = nullptr);
  ~CTarnView() override;

  CTarnDoc& Document() const { return *document_; }
  const std::shared_ptr<CTarnDoc>& SharedDocument() const { return document_; }
  const SViewState& State() const { return state_; }
  bool IsPlaying() const { return play_timer_.isActive(); }
  bool HasDrawn() const { return has_drawn_; }
  /// Why nothing can be drawn; empty while all is well.
  const QString& Fault() const { return fault_; }
  const CModelRenderer& Renderer() const { return *renderer_; }

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
  void TogglePlay();
  void ZoomIn();
  void ZoomOut();
  void ZoomToFit();
  void RestoreRotation();
  void SetBackground(const SColor& color);
  void Turn(const STurn& turn);

 signals:
  /// Mode, options or play changed: what the menus show.
  void StateChanged();
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
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc&) override {}

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
  SViewState state_;
  std::unique_ptr<CModelRenderer> renderer_;
  QBasicTimer play_timer_;
  QElapsedTimer play_time_;  ///< animated textures run while the view plays
  QPointF last_mouse_;
  QLabel* fault_label_ = nullptr;
  QString fault_;
  bool has_drawn_ = false;
  bool was_empty_ = true;
};

}  // namespace veldra

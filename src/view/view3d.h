#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointF>
#include <QWidget>
#include <memory>

#include "platform/png.h"
#include "render/modelrenderer.h"
#include "render/viewaim.h"
#include "view/glcanvas.h"
#include "view/orbit.h"

namespace veldra {

class CViewHold;
class CViewMouse;
enum class EMouseDrag;

/// A model in 3D and what moves the view of it: turning, moving, zooming and fitting by mouse and command, play, the
/// grid with its scale, and a message where OpenGL does not work. Draws when something changed or while it plays, never
/// idly. What the model is and what else the mouse does with it is said by who derives from this.
///
/// Mouse: dragging turns, moves and zooms as the mouse scheme of the settings says; the wheel zooms to the pointer.
class C3DView : public QWidget {
  Q_OBJECT

 public:
  /// Play turns the model about its Y axis by kPlayStep on each tick: tenths of a degree, so that a turn takes two
  /// seconds where the ticks come on time, and about six where the screen only keeps up with 60 frames a second.
  static constexpr double kPlayStep = 10.0;
  static constexpr double kPlayUnitDegrees = 0.1;
  static constexpr int kPlayIntervalMs = 5;

  /// How many samples a pixel has in the views that are made from now on; 0 for edges that are not smoothed.
  static void SetSamples(int samples);

  ~C3DView() override;

  const SViewState& State() const { return state_; }
  bool IsPlaying() const { return play_timer_.isActive(); }
  bool HasDrawn() const { return has_drawn_; }
  /// What it shows, small; without pixels before anything is drawn.
  SImage SmallPicture();
  /// What it shows, drawn anew, in the screen's own pixels.
  QImage Picture() { return canvas_->Grab(); }
  /// Why nothing can be drawn; empty while all is well.
  const QString& Fault() const { return fault_; }
  const CModelRenderer& Renderer() const { return *renderer_; }
  /// The model as it is seen now, in the screen's own pixels.
  CViewCamera Camera() const;

  // The view's commands; each redraws.
  void SetMode(ERenderMode mode);
  void Toggle(bool SViewState::*option);
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
  /// Frames what the model shows as seen from this side.
  void ZoomToFit();
  void RestoreRotation();
  void SetBackground(const SColor& color);
  void Turn(const STurn& turn);
  /// To the right and down, in pixels.
  void Pan(const QPointF& by);
  /// The model point under AT stays there.
  void ZoomBy(double factor, const QPointF& at);
  void Redraw();
  /// Would not reach what is drawn on.
  void update() = delete;

 signals:
  /// Mode, options or play changed: what the menus show.
  void StateChanged();
  /// Once, when a frame with the model is complete.
  void FirstFrameDrawn();
  void FrameShown();
  /// Nothing can be drawn; Fault() says why.
  void DrawingFailed();

 protected:
  /// SETTINGS must outlive the view: the mouse scheme and the steps are looked up where they are used.
  C3DView(const CSettings& settings, QWidget* parent);

  // --- For who derives from it ---------------------------------------------------------------------------------------
  virtual const CBinModel& Model() const = 0;
  /// Before each frame. False: there is nothing to be drawn now.
  virtual bool PrepareFrame() { return true; }
  virtual SMarks Marks() const { return {}; }
  /// Over the model, whose depths are still there.
  virtual void DrawOver(const CViewCamera&) {}
  virtual void Fit();
  /// What a drag that begins with PRESS holds, where DRAG is what the mouse scheme makes of it; null when the drag
  /// moves the view. Nothing happens to it before the pointer has moved.
  virtual std::unique_ptr<CViewHold> Grab(const QMouseEvent& press, EMouseDrag drag);
  /// A button was released where it was pressed.
  virtual void Click(const QMouseEvent&) {}

  const CSettings& Settings() const { return settings_; }
  SViewState& MutableState() { return state_; }
  CViewMouse& Mouse() { return *mouse_; }
  double PlaySeconds() const;
  /// DRAW with a picture of WIDTH × HEIGHT pixels of its own to draw into. False when there is none.
  bool DrawAside(int width, int height, const std::function<void()>& draw);
  /// While a frame is prepared: what OpenGL keeps of the model is handed over anew.
  void RenewGraphics() { renderer_ = std::make_unique<CModelRenderer>(); }

  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  friend class CViewMouse;

  void Changed();
  void LookFrom(EViewSide side);
  void ShowGridSpacing();
  void Draw();
  void ShowFault(const QString& text);
  void CheckContext();
  double SmallerSide() const;

  const CSettings& settings_;
  SViewState state_;
  std::unique_ptr<CModelRenderer> renderer_;
  std::unique_ptr<CViewMouse> mouse_;
  std::unique_ptr<CGlCanvas> canvas_;  ///< goes before the renderer, whose textures and lists are in its context
  QBasicTimer play_timer_;
  QElapsedTimer play_time_;  ///< animated textures run while the view plays
  QLabel* grid_label_ = nullptr;
  QLabel* fault_label_ = nullptr;
  QString fault_;
  bool has_drawn_ = false;
};

}  // namespace veldra

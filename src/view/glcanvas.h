#pragma once

#include <QImage>
#include <functional>
#include <memory>

class QWidget;

namespace veldra {

/// The surface that a 3D view draws on: it fills the view, lies behind what else is in it and leaves the mouse and the
/// keys to it. Usually a window's own OpenGL. Where the system has no more than OpenGL 1.1, with which the toolkit
/// cannot put a window together, the view is drawn in memory and shown as a picture: slower, and the same.
class CGlCanvas {
 public:
  struct SCallbacks {
    std::function<void()> draw;         ///< the context is current
    std::function<void()> shown;        ///< what was drawn is on the screen
    std::function<void()> before_loss;  ///< the context is current, and is about to go
  };

  /// All that are made from now on draw in memory.
  static void DrawInMemory();
  static bool DrawsInMemory();

  /// On VIEW, which owns the widget. SAMPLES of a pixel: 0 for edges that are not smoothed; drawn in memory they never
  /// are.
  static std::unique_ptr<CGlCanvas> Make(QWidget& view, int samples, SCallbacks callbacks);
  /// Calls `before_loss` when there is a context.
  virtual ~CGlCanvas() = default;

  /// A context with fixed functions is there. Known only once the widget is shown.
  virtual bool IsUsable() const = 0;
  virtual QWidget& Widget() = 0;
  /// `draw` is called soon.
  virtual void Redraw() = 0;
  /// Draws now, whether that is shown or not, and returns what was drawn.
  virtual QImage Grab() = 0;
  /// DRAW with WIDTH × HEIGHT pixels to draw into that are not shown. False when there are none.
  virtual bool DrawAside(int width, int height, const std::function<void()>& draw) = 0;
  /// FUNCTION while the context is current; nothing where there is no context.
  virtual void WithContext(const std::function<void()>& function) = 0;
};

}  // namespace veldra

#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QOpenGLWidget>
#include <QPointF>
#include <memory>

#include "render/modelrenderer.h"
#include "truckeditor/gamenamefield.h"
#include "truckscene/truckoverlay.h"
#include "truckscene/truckscene.h"

namespace veldra {

/// The whole truck in 3D with its points and light cones. A point under the left button is dragged in the plane of the
/// screen; elsewhere the left button turns the truck, the middle one moves it, the wheel zooms.
class CTruckView : public QOpenGLWidget {
  Q_OBJECT

 public:
  explicit CTruckView(const STruckPageContext& context, QWidget* parent = nullptr);
  ~CTruckView() override;

  /// The models are read again and the view is set to the whole truck.
  void Reload();
  double UnitsPerFoot() const { return units_per_foot_; }
  void SetUnitsPerFoot(double units);
  const std::optional<STruckPointId>& Selected() const { return overlay_.selected; }
  void Select(const std::optional<STruckPointId>& id);
  SOverlay& Overlay() { return overlay_; }
  SViewState& State() { return state_; }
  /// Lights turn and blink.
  void SetAnimated(bool animated);
  const CTruckScene& Scene() const { return scene_; }
  /// Where the point is in the widget, as drawn last; nothing when it cannot be seen.
  std::optional<QPointF> PlaceOf(const STruckPointId& id) const;
  void ZoomToFit();

 signals:
  void SelectedChanged();
  void UnitsPerFootChanged();

 protected:
  void initializeGL() override;
  void paintGL() override;
  void timerEvent(QTimerEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void OnTruckChanged();
  void FollowTruck();
  std::optional<STruckPointId> PointAt(const QPointF& place) const;
  void Drag(const QPointF& to);
  void DropGraphics();
  double SmallerSide() const { return std::max(1, std::min(width(), height())); }

  const STruckPageContext& context_;
  CTruckScene scene_;
  CTruckCamera camera_;
  std::unique_ptr<CModelRenderer> renderer_;
  SViewState state_;
  SOverlay overlay_;
  double units_per_foot_ = kUnitsPerFoot;
  QBasicTimer timer_;
  QElapsedTimer time_;
  QPointF last_mouse_;
  bool is_dragging_ = false;
  bool has_context_ = false;
  bool is_stale_ = true;  ///< the models are to be read before the next picture
};

}  // namespace veldra

#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <memory>

#include "truckeditor/gamenamefield.h"
#include "truckscene/truckoverlay.h"
#include "truckscene/truckscene.h"
#include "view/view3d.h"

namespace veldra {

/// The whole truck in 3D with its points and light cones. A point under a plain press of the left button is selected
/// and dragged in the plane of the screen.
class CTruckView : public C3DView {
  Q_OBJECT

 public:
  explicit CTruckView(const STruckPageContext& context, QWidget* parent = nullptr);

  /// The models are read again and the view is set to the whole truck.
  void Reload();
  double UnitsPerFoot() const { return units_per_foot_; }
  void SetUnitsPerFoot(double units);
  const std::optional<STruckPointId>& Selected() const { return overlay_.selected; }
  void Select(const std::optional<STruckPointId>& id);
  SOverlay& Overlay() { return overlay_; }
  /// What is dragged takes its counterpart on the other side along.
  void SetMirrored(bool mirrored) { is_mirrored_ = mirrored; }
  bool IsMirrored() const { return is_mirrored_; }
  /// Lights turn and blink.
  void SetAnimated(bool animated);
  const CTruckScene& Scene() const { return scene_; }
  /// Where the point is in the widget, as drawn last; nothing when it cannot be seen.
  std::optional<QPointF> PlaceOf(const STruckPointId& id) const;

 signals:
  void SelectedChanged();
  void UnitsPerFootChanged();

 protected:
  const CBinModel& Model() const override { return scene_.Model(); }
  bool PrepareFrame() override;
  void DrawOver(const CViewCamera& camera) override;
  void Fit() override;
  std::unique_ptr<CViewHold> Grab(const QMouseEvent& press, EMouseDrag drag) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void OnTruckChanged();
  void FollowTruck();
  std::optional<STruckPointId> PointAt(const QPointF& place) const;
  Vector3 InUnits(const TruckPoint& feet) const { return units_per_foot_ * feet; }

  const STruckPageContext& context_;
  CTruckScene scene_;
  SOverlay overlay_;
  double units_per_foot_ = kUnitsPerFoot;
  QBasicTimer timer_;
  QElapsedTimer time_;
  bool is_mirrored_ = false;
  bool is_stale_ = true;  ///< the models are to be read before the next picture
};

}  // namespace veldra

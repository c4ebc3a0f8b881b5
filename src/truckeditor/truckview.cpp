#include "truckeditor/truckview.h"

#include <QMouseEvent>
#include <QTimerEvent>
#include <cmath>

#include "view/viewmouse.h"

namespace veldra {

namespace {

constexpr double kPickDistance = 9.0;  ///< pixels
constexpr int kAnimationMs = 16;
constexpr double kUsualReach = 10;  ///< feet
constexpr SRotation kFirstLook = {.x = 18, .y = -35, .z = 0};

/// The selected point of a truck, dragged in the plane of the screen: one step of undoing.
class CPointHold : public CViewHold {
 public:
  CPointHold(CTruckView& view, CTruckDocument& document, const STruckPointId& id, const QPointF& from)
      : view_(view), document_(document), camera_(view.Camera()), id_(id), from_(from) {
    if (const TruckPoint* const point = FindTruckPoint(document.Truck(), id)) start_ = *point;
  }

  void MoveTo(const QPointF& to) override;
  void Drop(Qt::KeyboardModifiers) override { document_.EndStep(); }
  void Cancel() override {
    Put(start_);
    document_.EndStep();
  }

 private:
  void Put(const TruckPoint& at) {
    document_.Change("drag", [&](CTruck& truck) {
      if (TruckPoint* const point = FindTruckPoint(truck, id_)) *point = at;
    });
  }

  CTruckView& view_;
  CTruckDocument& document_;
  CViewCamera camera_;
  STruckPointId id_;
  QPointF from_;
  TruckPoint start_ = {};
};

void CPointHold::MoveTo(const QPointF& to) {
  const QPointF moved = (to - from_) * view_.devicePixelRatioF();
  const double units = view_.UnitsPerFoot();
  TruckPoint target = start_ + 1.0 / units * camera_.Movement(units * start_, moved.x(), moved.y());
  // As many decimals as a truck file holds.
  for (double& value : target)
    value = std::round(value * 1e6) / 1e6;
  Put(target);
}

}  // namespace

CTruckView::CTruckView(const STruckPageContext& context, QWidget* parent)
    : C3DView(context.settings, parent), context_(context) {
  setObjectName("truckView");
  setMinimumSize(320, 240);
  SViewState& state = MutableState();
  state.ChooseMode(ERenderMode::kTextured);
  state.vertices = state.vertex_numbers = false;
  state.only_3d = false;
  state.transparency = true;
  state.rotation = kFirstLook;
  connect(&context.document, &CTruckDocument::Changed, this, &CTruckView::OnTruckChanged);
}

void CTruckView::Reload() {
  is_stale_ = true;
  Redraw();
}

void CTruckView::OnTruckChanged() {
  if (overlay_.selected && FindTruckPoint(context_.document.Truck(), *overlay_.selected) == nullptr) Select({});
  Redraw();
}

void CTruckView::SetUnitsPerFoot(double units) {
  if (!(units > 0) || units == units_per_foot_) return;
  units_per_foot_ = units;
  Redraw();
}

void CTruckView::Select(const std::optional<STruckPointId>& id) {
  if (overlay_.selected == id) return;
  overlay_.selected = id;
  emit SelectedChanged();
  Redraw();
}

void CTruckView::SetAnimated(bool animated) {
  overlay_.seconds = 0;
  if (animated) {
    time_.start();
    timer_.start(kAnimationMs, this);
  } else {
    timer_.stop();
  }
  Redraw();
}

void CTruckView::Fit() {
  C3DView::Fit();
  if (!(scene_.PartBounds() == SBounds())) return;
  // Without models: some room about where the tires usually are.
  const auto reach = static_cast<int32_t>(kUsualReach * units_per_foot_);
  MutableState().ZoomToFit({{-reach, -reach, -reach}, {reach, reach, reach}});
}

/// The models as the truck names them now, in their places.
void CTruckView::FollowTruck() {
  const CTruck& truck = context_.document.Truck();
  const auto follow = [&](bool again) {
    scene_.Follow(truck, *context_.files, *context_.textures, units_per_foot_, again);
  };
  const int before = scene_.Generation();
  follow(is_stale_);
  // The new model's textures may lie where those of the old one did.
  if (scene_.Generation() != before) RenewGraphics();
  if (!is_stale_) return;
  is_stale_ = false;
  const double guess = GuessUnitsPerFoot(truck, scene_.BodyLength());
  if (guess != units_per_foot_) {
    units_per_foot_ = guess;
    follow(false);
    emit UnitsPerFootChanged();
  }
  ZoomToFit();
}

bool CTruckView::PrepareFrame() {
  if (context_.files == nullptr) return false;
  FollowTruck();
  overlay_.pixel_ratio = devicePixelRatioF();
  overlay_.seconds = timer_.isActive() ? static_cast<double>(time_.elapsed()) / 1000.0 : 0.0;
  return true;
}

void CTruckView::DrawOver(const CViewCamera& camera) {
  DrawTruckOverlay(context_.document.Truck(), overlay_, camera, units_per_foot_, *context_.textures, scene_.HasTires());
}

void CTruckView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return C3DView::timerEvent(event);
  Redraw();
}

std::optional<QPointF> CTruckView::PlaceOf(const STruckPointId& id) const {
  const TruckPoint* const point = FindTruckPoint(context_.document.Truck(), id);
  if (point == nullptr || !IsShown(overlay_, id)) return std::nullopt;
  const SScreenPoint at = Camera().Project(InUnits(*point));
  if (!(at.depth >= 0.0 && at.depth <= 1.0)) return std::nullopt;
  return QPointF(at.x, at.y) / devicePixelRatioF();
}

/// The nearest to the place; of two as near, the one in front.
std::optional<STruckPointId> CTruckView::PointAt(const QPointF& place) const {
  std::optional<STruckPointId> best;
  double best_distance = kPickDistance;
  for (const STruckPointId& id : TruckPoints(context_.document.Truck())) {
    const auto at = PlaceOf(id);
    if (!at) continue;
    const double distance = std::hypot(at->x() - place.x(), at->y() - place.y());
    if (distance >= best_distance) continue;
    best = id;
    best_distance = distance;
  }
  return best;
}

std::unique_ptr<CViewHold> CTruckView::Grab(const QMouseEvent& press, EMouseDrag) {
  const auto point = IsPlainPress(press) ? PointAt(press.position()) : std::nullopt;
  if (!point) return nullptr;
  Select(point);
  context_.document.EndStep();
  return std::make_unique<CPointHold>(*this, context_.document, *point, press.position());
}

}  // namespace veldra

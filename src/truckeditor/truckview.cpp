#include "truckeditor/truckview.h"

#include <QMouseEvent>
#include <QTimerEvent>
#include <algorithm>
#include <cmath>

#include "view/viewmouse.h"

namespace veldra {

namespace {

constexpr double kPickDistance = 9.0;  ///< pixels
constexpr int kAnimationMs = 16;
constexpr double kUsualReach = 10;  ///< feet
constexpr double kShortestAim = 3;  ///< feet: how far from a light without a cone the mouse holds it
constexpr SRotation kFirstLook = {.x = 18, .y = -35, .z = 0};

/// As many decimals as a truck file holds.
double Rounded(double value) {
  return std::round(value * 1e6) / 1e6;
}

/// A point of a truck that follows the mouse in the plane of the screen, and its counterpart on the other side where
/// that is wanted: one step of undoing.
class CTruckHold : public CViewHold {
 public:
  CTruckHold(CTruckView& view, CTruckDocument& document, const STruckPointId& id, const QPointF& from)
      : view_(view), document_(document), camera_(view.Camera()), before_(document.Truck()), id_(id), from_(from) {
    if (view.IsMirrored()) other_ = MirroredPoint(before_, id);
  }

  void MoveTo(const QPointF& to) override {
    const QPointF moved = (to - from_) * view_.devicePixelRatioF();
    const double units = view_.UnitsPerFoot();
    TruckPoint target = Start() + 1.0 / units * camera_.Movement(units * Start(), moved.x(), moved.y());
    document_.Change("drag", [&](CTruck& truck) { Put(truck, target, id_, other_); });
  }
  void Drop(Qt::KeyboardModifiers) override { document_.EndStep(); }
  void Cancel() override {
    document_.Change("drag", [this](CTruck& truck) { truck = before_; });
    document_.EndStep();
  }

 protected:
  const CTruck& Before() const { return before_; }
  const STruckPointId& Id() const { return id_; }

 private:
  /// Where what is dragged was.
  virtual TruckPoint Start() const = 0;
  virtual void Put(CTruck& truck, const TruckPoint& at, const STruckPointId& id,
                   const std::optional<STruckPointId>& other) const = 0;

  CTruckView& view_;
  CTruckDocument& document_;
  CViewCamera camera_;
  CTruck before_;
  STruckPointId id_;
  std::optional<STruckPointId> other_;
  QPointF from_;
};

/// Moves it.
class CPointHold : public CTruckHold {
 public:
  using CTruckHold::CTruckHold;

 private:
  TruckPoint Start() const override {
    const TruckPoint* const point = FindTruckPoint(Before(), Id());
    return point != nullptr ? *point : TruckPoint();
  }
  void Put(CTruck& truck, const TruckPoint& at, const STruckPointId& id,
           const std::optional<STruckPointId>& other) const override {
    TruckPoint* const point = FindTruckPoint(truck, id);
    if (point == nullptr) return;
    *point = {Rounded(at[0]), Rounded(at[1]), Rounded(at[2])};
    if (other) *FindTruckPoint(truck, *other) = {0.0 - (*point)[0], (*point)[1], (*point)[2]};
  }
};

/// Turns a light: the end of its cone follows the mouse.
class CAimHold : public CTruckHold {
 public:
  using CTruckHold::CTruckHold;

 private:
  const TruckLight& Light() const { return Before().lights[static_cast<size_t>(Id().index)]; }
  TruckPoint Start() const override {
    return Light().position + std::max(Light().cone_length, kShortestAim) * LightDirection(Light(), 0);
  }
  void Put(CTruck& truck, const TruckPoint& at, const STruckPointId& id,
           const std::optional<STruckPointId>& other) const override {
    const TruckPoint direction = at - Light().position;
    if (!(std::hypot(direction[0], direction[1], direction[2]) > 0)) return;
    AimLight(truck.lights[static_cast<size_t>(id.index)], direction);
    if (other)
      AimLight(truck.lights[static_cast<size_t>(other->index)], {0.0 - direction[0], direction[1], direction[2]});
  }
};

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
  const bool is_shifted = press.button() == Qt::LeftButton && press.modifiers() == Qt::ShiftModifier;
  const auto point = is_shifted || IsPlainPress(press) ? PointAt(press.position()) : std::nullopt;
  if (!point || (is_shifted && point->kind != ETruckPoint::kLight)) return nullptr;
  Select(point);
  context_.document.EndStep();
  if (is_shifted) return std::make_unique<CAimHold>(*this, context_.document, *point, press.position());
  return std::make_unique<CPointHold>(*this, context_.document, *point, press.position());
}

}  // namespace veldra

#include "truckeditor/truckview.h"

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QTimerEvent>
#include <QWheelEvent>
#include <cmath>

#include "view/orbit.h"

namespace veldra {

namespace {

constexpr double kDegreesPerPixel = 0.4;
constexpr double kZoomPerNotch = 1.15;
constexpr double kWheelUnitsPerNotch = 120.0;
constexpr double kLargestZoom = 1000.0;
constexpr double kPickDistance = 9.0;  ///< pixels
constexpr int kAnimationMs = 16;
constexpr SRotation kFirstLook = {.x = 18, .y = -35, .z = 0};

QSurfaceFormat ViewFormat() {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(4);
  return format;
}

}  // namespace

CTruckView::CTruckView(const STruckPageContext& context, QWidget* parent) : QOpenGLWidget(parent), context_(context) {
  setObjectName("truckView");
  setFormat(ViewFormat());
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(320, 240);
  state_ = SViewState::FromSettings(context.settings);
  state_.ChooseMode(ERenderMode::kTextured);
  state_.vertices = false;
  state_.transparency = true;
  state_.rotation = kFirstLook;
  connect(&context.document, &CTruckDocument::Changed, this, &CTruckView::OnTruckChanged);
}

CTruckView::~CTruckView() {
  DropGraphics();
}

void CTruckView::DropGraphics() {
  if (renderer_ == nullptr) return;
  makeCurrent();
  renderer_.reset();
  doneCurrent();
}

void CTruckView::Reload() {
  is_stale_ = true;
  update();
}

void CTruckView::OnTruckChanged() {
  if (overlay_.selected && FindTruckPoint(context_.document.Truck(), *overlay_.selected) == nullptr) Select({});
  update();
}

void CTruckView::SetUnitsPerFoot(double units) {
  if (!(units > 0) || units == units_per_foot_) return;
  units_per_foot_ = units;
  update();
}

void CTruckView::Select(const std::optional<STruckPointId>& id) {
  if (overlay_.selected == id) return;
  overlay_.selected = id;
  emit SelectedChanged();
  update();
}

void CTruckView::SetAnimated(bool animated) {
  overlay_.seconds = 0;
  if (animated) {
    time_.start();
    timer_.start(kAnimationMs, this);
  } else {
    timer_.stop();
  }
  update();
}

void CTruckView::ZoomToFit() {
  const SBounds& bounds = scene_.PartBounds();
  const int32_t corners[6] = {bounds.min.x, bounds.min.y, bounds.min.z, bounds.max.x, bounds.max.y, bounds.max.z};
  state_.ZoomToFit(corners);
  // Without models: some room about where the tires usually are.
  constexpr double kUsualLength = 20;
  if (bounds == SBounds()) state_.extent = kUsualLength * units_per_foot_;
  update();
}

void CTruckView::initializeGL() {
  has_context_ = context() != nullptr && !context()->isOpenGLES();
  renderer_ = std::make_unique<CModelRenderer>();
  connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &CTruckView::DropGraphics, Qt::UniqueConnection);
}

/// The models as the truck names them now, in their places.
void CTruckView::FollowTruck() {
  const CTruck& truck = context_.document.Truck();
  const auto follow = [&](bool again) {
    scene_.Follow(truck, *context_.files, *context_.textures, units_per_foot_, again);
  };
  const int before = scene_.Generation();
  follow(is_stale_);
  // The renderer knows a model by its address, which a new one may have too.
  if (scene_.Generation() != before) renderer_ = std::make_unique<CModelRenderer>();
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

void CTruckView::paintGL() {
  if (!has_context_ || renderer_ == nullptr || context_.files == nullptr) return;
  FollowTruck();
  const double ratio = devicePixelRatioF();
  const int pixels_wide = static_cast<int>(std::lround(width() * ratio));
  const int pixels_high = static_cast<int>(std::lround(height() * ratio));
  overlay_.pixel_ratio = ratio;
  overlay_.seconds = timer_.isActive() ? static_cast<double>(time_.elapsed()) / 1000.0 : 0.0;
  renderer_->Draw(scene_.Model(), state_,
                  {.width = pixels_wide, .height = pixels_high, .seconds = overlay_.seconds, .pixel_ratio = ratio});
  // Half the diagonal of the cube that the scene's bounds are.
  const double radius = std::sqrt(3.0) * scene_.Model().Bound(3);
  camera_ = CTruckCamera(state_, radius, units_per_foot_, pixels_wide, pixels_high);
  DrawTruckOverlay(context_.document.Truck(), overlay_, *context_.textures, scene_.HasTires());
}

void CTruckView::timerEvent(QTimerEvent* event) {
  if (event->timerId() == timer_.timerId()) update();
}

std::optional<QPointF> CTruckView::PlaceOf(const STruckPointId& id) const {
  const TruckPoint* const point = FindTruckPoint(context_.document.Truck(), id);
  const auto at = point != nullptr && IsShown(overlay_, id) ? camera_.Project(*point) : std::nullopt;
  if (!at) return std::nullopt;
  return QPointF(at->x, at->y) / devicePixelRatioF();
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

void CTruckView::mousePressEvent(QMouseEvent* event) {
  last_mouse_ = event->position();
  if (event->button() != Qt::LeftButton) return;
  const auto point = PointAt(event->position());
  if (!point) return;
  Select(point);
  context_.document.EndStep();
  is_dragging_ = true;
}

void CTruckView::Drag(const QPointF& to) {
  const auto id = overlay_.selected;
  const TruckPoint* const point = id ? FindTruckPoint(context_.document.Truck(), *id) : nullptr;
  const auto at = point != nullptr ? camera_.Project(*point) : std::nullopt;
  if (!at) return;
  const QPointF moved = (to - last_mouse_) * devicePixelRatioF();
  auto target = camera_.Unproject({at->x + moved.x(), at->y + moved.y(), at->depth});
  if (!target) return;
  // As many decimals as a truck file holds.
  for (double& value : *target)
    value = std::round(value * 1e6) / 1e6;
  context_.document.Change("drag", [&](CTruck& truck) { *FindTruckPoint(truck, *id) = *target; });
}

void CTruckView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF moved = event->position() - last_mouse_;
  if (is_dragging_) {
    Drag(event->position());
  } else if ((event->buttons() & Qt::MiddleButton) != 0 ||
             ((event->buttons() & Qt::LeftButton) != 0 && (event->modifiers() & Qt::ShiftModifier) != 0)) {
    state_.pan_x += moved.x() / SmallerSide();
    state_.pan_y -= moved.y() / SmallerSide();
  } else if ((event->buttons() & Qt::LeftButton) != 0) {
    state_.rotation =
        Turned(state_.rotation, {.screen_x = moved.y() * kDegreesPerPixel, .model_y = moved.x() * kDegreesPerPixel});
  }
  last_mouse_ = event->position();
  update();
}

void CTruckView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !is_dragging_) return;
  is_dragging_ = false;
  context_.document.EndStep();
}

void CTruckView::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kWheelUnitsPerNotch;
  state_.zoom = std::clamp(state_.zoom * std::pow(kZoomPerNotch, notches), state_.zoom_step, kLargestZoom);
  event->accept();
  update();
}

}  // namespace veldra

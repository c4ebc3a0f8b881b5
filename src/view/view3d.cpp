#include "view/view3d.h"

#include <QMouseEvent>
#include <QTimer>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "render/viewgrid.h"
#include "render/viewmarkers.h"
#include "view/viewmouse.h"

namespace veldra {

namespace {

constexpr double kZoomPerNotch = 1.15;
constexpr double kWheelUnitsPerNotch = 120.0;
int g_samples = 4;

}  // namespace

void C3DView::SetSamples(int samples) {
  g_samples = samples;
}

C3DView::C3DView(const CSettings& settings, QWidget* parent)
    : QWidget(parent),
      settings_(settings),
      state_(SViewState::FromSettings(settings)),
      renderer_(std::make_unique<CModelRenderer>()),
      mouse_(std::make_unique<CViewMouse>(*this)),
      canvas_(CGlCanvas::Make(*this, g_samples,
                              {.draw = [this] { Draw(); },
                               .shown = [this] { emit FrameShown(); },
                               .before_loss = [this] { RenewGraphics(); }})) {
  setAttribute(Qt::WA_NoSystemBackground);  // the canvas covers all of it
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
}

C3DView::~C3DView() = default;

void C3DView::SetMode(ERenderMode mode) {
  state_.ChooseMode(mode);
  Changed();
}

void C3DView::Toggle(bool SViewState::*option) {
  state_.*option = !(state_.*option);
  Changed();
}

void C3DView::Changed() {
  Redraw();
  emit StateChanged();
}

void C3DView::Redraw() {
  ShowGridSpacing();
  canvas_->Redraw();
}

void C3DView::LookFrom(EViewSide side) {
  state_.rotation = RotationFor(side);
  Redraw();
}

void C3DView::TogglePlay() {
  if (IsPlaying()) {
    play_timer_.stop();
  } else {
    play_timer_.start(kPlayIntervalMs, Qt::PreciseTimer, this);
    play_time_.start();
  }
  Changed();
}

void C3DView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != play_timer_.timerId()) {
    QWidget::timerEvent(event);
    return;
  }
  Turn({.model_y = kPlayStep * kPlayUnitDegrees});
}

double C3DView::PlaySeconds() const {
  return IsPlaying() ? static_cast<double>(play_time_.elapsed()) / 1000.0 : 0.0;
}

void C3DView::Turn(const STurn& turn) {
  state_.rotation = Turned(state_.rotation, turn);
  Redraw();
}

void C3DView::RestoreRotation() {
  state_.rotation = {settings_.view_angle_x, settings_.view_angle_y, settings_.view_angle_z};
  Redraw();
}

void C3DView::ZoomIn() {
  state_.zoom_step = settings_.zoom_step;
  state_.ZoomIn();
  Redraw();
}

void C3DView::ZoomOut() {
  state_.zoom_step = settings_.zoom_step;
  state_.ZoomOut();
  Redraw();
}

void C3DView::Fit() {
  Frame(state_, Model(), width(), height());
}

void C3DView::ZoomToFit() {
  Fit();
  Redraw();
}

void C3DView::ZoomBy(double factor, const QPointF& at) {
  state_.zoom_step = settings_.zoom_step;
  const double side = SmallerSide();
  const double x = (at.x() - width() / 2.0) / side;
  const double y = (height() / 2.0 - at.y()) / side;
  const double largest = std::max(SViewState::kLargestZoom, state_.zoom_step);
  const double wanted = std::clamp(state_.zoom * factor, state_.zoom_step, largest);
  const double change = wanted / state_.zoom;
  state_.pan_x = x - (x - state_.pan_x) * change;
  state_.pan_y = y - (y - state_.pan_y) * change;
  state_.zoom = wanted;
  Redraw();
}

void C3DView::Pan(const QPointF& by) {
  state_.pan_x += by.x() / SmallerSide();
  state_.pan_y -= by.y() / SmallerSide();
  Redraw();
}

double C3DView::SmallerSide() const {
  return std::max(1, std::min(width(), height()));
}

void C3DView::SetBackground(const SColor& color) {
  state_.background = color;
  Changed();
}

// --- Drawing -------------------------------------------------------------------------------------------------------

CViewCamera C3DView::Camera() const {
  const double ratio = devicePixelRatioF();
  return {state_, Model().Bounds(), std::max(1, static_cast<int>(width() * ratio)),
          std::max(1, static_cast<int>(height() * ratio))};
}

void C3DView::Draw() {
  if (!fault_.isEmpty() || !PrepareFrame()) return;
  const CViewCamera camera = Camera();
  renderer_->Draw(Model(), state_,
                  {.width = camera.Width(),
                   .height = camera.Height(),
                   .seconds = PlaySeconds(),
                   .pixel_ratio = devicePixelRatioF(),
                   .marks = Marks()});
  DrawOver(camera);
  if (has_drawn_) return;
  has_drawn_ = true;
  emit FirstFrameDrawn();
}

SImage C3DView::SmallPicture() {
  if (!has_drawn_) return {};
  constexpr QSize kSize(160, 120);
  const QImage small = canvas_->Grab()
                           .scaled(kSize, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                           .convertToFormat(QImage::Format_RGBA8888);
  SImage picture = {.width = small.width(), .height = small.height(), .rgba = {}};
  for (int y = 0; y < small.height(); ++y)
    picture.rgba.insert(picture.rgba.end(), small.constScanLine(y),
                        small.constScanLine(y) + ptrdiff_t{4} * small.width());
  return picture;
}

/// The grid's scale, in the lower left corner.
void C3DView::ShowGridSpacing() {
  const bool is_shown = state_.grid && !state_.only_3d;
  if (grid_label_ == nullptr) {
    if (!is_shown) return;
    grid_label_ = new QLabel(this);
    grid_label_->setObjectName("gridSpacing");
    grid_label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    grid_label_->setMargin(6);
  }
  const double spacing = GridFor(state_, Camera()).spacing;
  grid_label_->setText(tr("Grid: %L1 units").arg(spacing, 0, 'f', 0));
  const SColor ink = SInk::For(state_.background).line;
  QPalette palette = grid_label_->palette();
  palette.setColor(QPalette::WindowText, QColor(ink.red, ink.green, ink.blue));
  grid_label_->setPalette(palette);
  grid_label_->adjustSize();
  grid_label_->move(0, height() - grid_label_->height());
  grid_label_->setVisible(is_shown);
}

bool C3DView::DrawAside(int width, int height, const std::function<void()>& draw) {
  return fault_.isEmpty() && canvas_->DrawAside(width, height, draw);
}

void C3DView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // The context is made while the window appears; whether that went well is known afterwards.
  QTimer::singleShot(0, this, [this] { CheckContext(); });
}

void C3DView::CheckContext() {
  if (isVisible() && !canvas_->IsUsable())
    ShowFault(tr("The 3D view needs OpenGL 1.1 with its fixed functions, which this system does not offer."));
}

void C3DView::ShowFault(const QString& text) {
  fault_ = text;
  if (fault_label_ == nullptr) {
    fault_label_ = new QLabel(this);
    fault_label_->setObjectName("viewFault");
    fault_label_->setAlignment(Qt::AlignCenter);
    fault_label_->setWordWrap(true);
    fault_label_->setMargin(24);
    fault_label_->setAutoFillBackground(true);
  }
  fault_label_->setText(text);
  fault_label_->setGeometry(rect());
  fault_label_->show();
  emit DrawingFailed();
}

void C3DView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  canvas_->Widget().setGeometry(rect());
  if (fault_label_ != nullptr) fault_label_->setGeometry(rect());
  ShowGridSpacing();
}

// --- Input ---------------------------------------------------------------------------------------------------------

std::unique_ptr<CViewHold> C3DView::Grab(const QMouseEvent&, EMouseDrag) {
  return nullptr;
}

void C3DView::mousePressEvent(QMouseEvent* event) {
  mouse_->Press(*event);
}

void C3DView::mouseMoveEvent(QMouseEvent* event) {
  mouse_->Move(*event);
}

void C3DView::mouseReleaseEvent(QMouseEvent* event) {
  mouse_->Release(*event);
}

void C3DView::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kWheelUnitsPerNotch;
  // What is held by the mouse keeps its place in the window.
  if (notches == 0.0 || mouse_->IsHolding()) return;
  ZoomBy(std::pow(kZoomPerNotch, notches), event->position());
  event->accept();
}

}  // namespace veldra

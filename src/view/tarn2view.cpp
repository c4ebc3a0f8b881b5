#include "view/tarn2view.h"

#include <QMouseEvent>
#include <QOpenGLContext>
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

QSurfaceFormat ViewFormat() {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(g_samples);
  return format;
}

}  // namespace

void CTarnView::SetSamples(int samples) {
  g_samples = samples;
}

CTarnView::CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent)
    : QOpenGLWidget(parent),
      document_(std::move(document)),
      cursor_(*document_),
      state_(SViewState::FromSettings(document_->Settings())),
      renderer_(std::make_unique<CModelRenderer>()),
      mouse_(std::make_unique<CViewMouse>(*this)) {
  setObjectName("modelView");
  setFormat(ViewFormat());
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
  document_->AddObserver(this);
  cursor_.SetOnChanged([this] { OnCursorChanged(); });
  FitExtent();
}

CTarnView::~CTarnView() {
  document_->RemoveObserver(this);
  // The base class destroys the context when nothing of this class is left to be told.
  if (context() != nullptr) disconnect(context(), nullptr, this, nullptr);
  DropGraphics();
}

void CTarnView::SetMode(ERenderMode mode) {
  state_.ChooseMode(mode);
  Changed();
}

void CTarnView::Toggle(bool SViewState::*option) {
  state_.*option = !(state_.*option);
  Changed();
}

void CTarnView::Changed() {
  Redraw();
  emit StateChanged();
}

void CTarnView::Redraw() {
  ShowGridSpacing();
  update();
}

void CTarnView::LookFrom(EViewSide side) {
  state_.rotation = RotationFor(side);
  Redraw();
}

void CTarnView::TogglePlay() {
  if (IsPlaying()) {
    play_timer_.stop();
  } else {
    play_timer_.start(kPlayIntervalMs, Qt::PreciseTimer, this);
    play_time_.start();
  }
  Changed();
}

void CTarnView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != play_timer_.timerId()) {
    QOpenGLWidget::timerEvent(event);
    return;
  }
  Turn({.model_y = kPlayStep * kPlayUnitDegrees});
}

void CTarnView::Turn(const STurn& turn) {
  state_.rotation = Turned(state_.rotation, turn);
  Redraw();
}

void CTarnView::RestoreRotation() {
  const CSettings& settings = document_->Settings();
  state_.rotation = {settings.view_angle_x, settings.view_angle_y, settings.view_angle_z};
  Redraw();
}

void CTarnView::ZoomIn() {
  state_.ZoomIn();
  Redraw();
}

void CTarnView::ZoomOut() {
  state_.ZoomOut();
  Redraw();
}

void CTarnView::ZoomToFit() {
  FitExtent();
  Redraw();
}

void CTarnView::FitExtent() {
  const CBinModel& model = document_->Model();
  int32_t bounds[6];
  for (int i = 0; i < 6; ++i)
    bounds[i] = model.Bound(i);
  was_empty_ = model.VertexCount() == 0;
  state_.ZoomToFit(bounds);
}

void CTarnView::ZoomBy(double factor, const QPointF& at) {
  const double side = SmallerSide();
  const double x = (at.x() - width() / 2.0) / side;
  const double y = (height() / 2.0 - at.y()) / side;
  const double wanted = std::clamp(state_.zoom * factor, state_.zoom_step, std::max(kLargestZoom, state_.zoom_step));
  const double change = wanted / state_.zoom;
  state_.pan_x = x - (x - state_.pan_x) * change;
  state_.pan_y = y - (y - state_.pan_y) * change;
  state_.zoom = wanted;
  Redraw();
}

void CTarnView::Pan(const QPointF& by) {
  state_.pan_x += by.x() / SmallerSide();
  state_.pan_y -= by.y() / SmallerSide();
  Redraw();
}

void CTarnView::HoldMiddle() {
  state_.center = Camera().Middle();
}

/// A middle that is held is let go of when the model has gone elsewhere.
void CTarnView::FollowMiddle(const CBinModel& model) {
  if (!state_.center || mouse_->IsMovingVertices()) return;
  const auto center = CModelSpace(model.Bounds()).Center();
  const auto& held = *state_.center;
  const double distance = std::hypot(center[0] - held[0], center[1] - held[1], center[2] - held[2]);
  if (distance > state_.extent / 2.0) state_.center.reset();
}

double CTarnView::SmallerSide() const {
  return std::max(1, std::min(width(), height()));
}

void CTarnView::SetBackground(const SColor& color) {
  state_.background = color;
  Changed();
}

// --- Drawing -------------------------------------------------------------------------------------------------------

void CTarnView::initializeGL() {
  connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { DropGraphics(); });
  const bool is_usable = !context()->isOpenGLES() && context()->format().profile() != QSurfaceFormat::CoreProfile;
  if (!is_usable)
    ShowFault(tr("The 3D view needs OpenGL 1.1 with its fixed functions, which this system does not offer."));
}

CViewCamera CTarnView::Camera() const {
  const double ratio = devicePixelRatioF();
  return {state_, document_->Model().Bounds(), std::max(1, static_cast<int>(width() * ratio)),
          std::max(1, static_cast<int>(height() * ratio))};
}

void CTarnView::paintGL() {
  if (!fault_.isEmpty() || document_->Model().IsBusy()) return;
  const CViewCamera camera = Camera();
  renderer_->Draw(
      document_->Model(), state_,
      {.width = camera.Width(),
       .height = camera.Height(),
       .seconds = IsPlaying() ? static_cast<double>(play_time_.elapsed()) / 1000.0 : 0.0,
       .pixel_ratio = devicePixelRatioF(),
       .marks = {.selection = true, .face = cursor_.Face(), .vertex = cursor_.Vertex(), .tagged = cursor_.Tagged()}});
  if (has_drawn_) return;
  has_drawn_ = true;
  emit FirstFrameDrawn();
}

/// The grid's scale, in the lower left corner.
void CTarnView::ShowGridSpacing() {
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

void CTarnView::DropGraphics() {
  if (context() == nullptr) return;
  makeCurrent();
  renderer_ = std::make_unique<CModelRenderer>();
  doneCurrent();
}

void CTarnView::showEvent(QShowEvent* event) {
  QOpenGLWidget::showEvent(event);
  // The context is made while the window appears; whether that went well is known afterwards.
  QTimer::singleShot(0, this, [this] { CheckContext(); });
}

void CTarnView::CheckContext() {
  if (isVisible() && !isValid()) ShowFault(tr("The 3D view needs OpenGL, which this system does not offer."));
}

void CTarnView::ShowFault(const QString& text) {
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

void CTarnView::resizeEvent(QResizeEvent* event) {
  QOpenGLWidget::resizeEvent(event);
  if (fault_label_ != nullptr) fault_label_->setGeometry(rect());
  ShowGridSpacing();
}

void CTarnView::OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) {
  if (change.topology) mouse_->LetGo();
  if (was_empty_ && document.Model().VertexCount() > 0) FitExtent();
  FollowMiddle(document.Model());
  Redraw();
}

void CTarnView::OnCursorChanged() {
  const CBinFace* face = cursor_.FaceObject();
  const bool is_new = followed_face_ != cursor_.Face();
  followed_face_ = cursor_.Face();
  if (is_new && face != nullptr && state_.follow_current_face && !is_choosing_ && !IsPlaying())
    BringIntoSight(state_, document_->Model(), *face, width(), height());
  Redraw();
  emit CursorChanged();
}

// --- Input ---------------------------------------------------------------------------------------------------------

void CTarnView::mousePressEvent(QMouseEvent* event) {
  mouse_->Press(*event);
}

void CTarnView::mouseMoveEvent(QMouseEvent* event) {
  mouse_->Move(*event);
}

void CTarnView::mouseReleaseEvent(QMouseEvent* event) {
  mouse_->Release(*event);
}

void CTarnView::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kWheelUnitsPerNotch;
  // What is held by the mouse keeps its place in the window.
  if (notches == 0.0 || mouse_->IsMovingVertices()) return;
  ZoomBy(std::pow(kZoomPerNotch, notches), event->position());
  event->accept();
}

void CTarnView::contextMenuEvent(QContextMenuEvent* event) {
  // With the mouse the menu comes when the button goes up: with some schemes the same button turns or moves.
  if (event->reason() == QContextMenuEvent::Keyboard) emit MenuWanted(EGroupKind::kFaces, event->globalPos());
}

}  // namespace veldra

#include "view/tarn2view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QTimer>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace veldra {

namespace {

/// What a press of an arrow or page key turns the model by.
constexpr double kKeyStepDegrees = 5.0;
constexpr double kDegreesPerPixel = 0.4;
constexpr double kZoomPerNotch = 1.15;
constexpr double kWheelUnitsPerNotch = 120.0;
constexpr int kSamples = 4;

QSurfaceFormat ViewFormat() {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(kSamples);
  return format;
}

/// A key of the view: pressed without Ctrl, Alt or Meta. Shift and the number pad only where they make a difference.
struct SViewKey {
  int key;
  bool number_pad_only;
  void (*action)(CTarnView&);
};

constexpr SViewKey kViewKeys[] = {
    {Qt::Key_P, false, [](CTarnView& view) { view.TogglePlay(); }},
    {Qt::Key_5, true, [](CTarnView& view) { view.RestoreRotation(); }},
    {Qt::Key_Clear, false, [](CTarnView& view) { view.RestoreRotation(); }},  // the same key with Num Lock off
    {Qt::Key_Up, false, [](CTarnView& view) { view.Turn({.screen_x = -kKeyStepDegrees}); }},
    {Qt::Key_Down, false, [](CTarnView& view) { view.Turn({.screen_x = kKeyStepDegrees}); }},
    {Qt::Key_Left, false, [](CTarnView& view) { view.Turn({.model_y = -kKeyStepDegrees}); }},
    {Qt::Key_Right, false, [](CTarnView& view) { view.Turn({.model_y = kKeyStepDegrees}); }},
    {Qt::Key_PageUp, false, [](CTarnView& view) { view.Turn({.screen_z = kKeyStepDegrees}); }},
    {Qt::Key_PageDown, false, [](CTarnView& view) { view.Turn({.screen_z = -kKeyStepDegrees}); }},
    {Qt::Key_Plus, false, [](CTarnView& view) { view.ZoomIn(); }},
    {Qt::Key_Equal, false, [](CTarnView& view) { view.ZoomIn(); }},  // "+" without its Shift
    {Qt::Key_Minus, false, [](CTarnView& view) { view.ZoomOut(); }},
};

bool Matches(const SViewKey& row, const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  if ((modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return false;
  return event.key() == row.key && (!row.number_pad_only || (modifiers & Qt::KeypadModifier) != 0);
}

}  // namespace

CTarnView::CTarnView(std::shared_ptr<CTarnDoc> document, QWidget* parent)
    : QOpenGLWidget(parent),
      document_(std::move(document)),
      state_(SViewState::FromSettings(document_->Settings())),
      renderer_(std::make_unique<CModelRenderer>()) {
  setObjectName("modelView");
  setFormat(ViewFormat());
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(64, 64);
  document_->AddObserver(this);
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
  update();
  emit StateChanged();
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
  update();
}

void CTarnView::RestoreRotation() {
  const CSettings& settings = document_->Settings();
  state_.rotation = {settings.view_angle_x, settings.view_angle_y, settings.view_angle_z};
  update();
}

void CTarnView::ZoomIn() {
  state_.ZoomIn();
  update();
}

void CTarnView::ZoomOut() {
  state_.ZoomOut();
  update();
}

void CTarnView::ZoomToFit() {
  FitExtent();
  update();
}

void CTarnView::FitExtent() {
  const CBinModel& model = document_->Model();
  int32_t bounds[6];
  for (int i = 0; i < 6; ++i)
    bounds[i] = model.Bound(i);
  was_empty_ = model.VertexCount() == 0;
  state_.ZoomToFit(bounds);
}

/// The model point under AT stays there.
void CTarnView::ZoomTo(double zoom, const QPointF& at) {
  const double side = SmallerSide();
  const double x = (at.x() - width() / 2.0) / side;
  const double y = (height() / 2.0 - at.y()) / side;
  const double wanted = std::clamp(zoom, state_.zoom_step, std::max(kLargestZoom, state_.zoom_step));
  const double factor = wanted / state_.zoom;
  state_.pan_x = x - (x - state_.pan_x) * factor;
  state_.pan_y = y - (y - state_.pan_y) * factor;
  state_.zoom = wanted;
  update();
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

void CTarnView::paintGL() {
  if (!fault_.isEmpty() || document_->Model().IsBusy()) return;
  const double ratio = devicePixelRatioF();
  const double seconds = IsPlaying() ? static_cast<double>(play_time_.elapsed()) / 1000.0 : 0.0;
  renderer_->Draw(document_->Model(), state_,
                  {.width = static_cast<int>(width() * ratio),
                   .height = static_cast<int>(height() * ratio),
                   .seconds = seconds,
                   .pixel_ratio = ratio});
  if (has_drawn_) return;
  has_drawn_ = true;
  emit FirstFrameDrawn();
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
}

void CTarnView::OnDocumentChanged(const CTarnDoc& document, const SModelChange&) {
  if (was_empty_ && document.Model().VertexCount() > 0) FitExtent();
  update();
}

// --- Input ---------------------------------------------------------------------------------------------------------

void CTarnView::keyPressEvent(QKeyEvent* event) {
  const auto row = std::find_if(std::begin(kViewKeys), std::end(kViewKeys),
                                [&](const SViewKey& candidate) { return Matches(candidate, *event); });
  if (row == std::end(kViewKeys)) {
    QOpenGLWidget::keyPressEvent(event);
    return;
  }
  row->action(*this);
}

void CTarnView::mousePressEvent(QMouseEvent* event) {
  last_mouse_ = event->position();
}

void CTarnView::mouseMoveEvent(QMouseEvent* event) {
  const QPointF moved = event->position() - last_mouse_;
  last_mouse_ = event->position();
  const bool left = (event->buttons() & Qt::LeftButton) != 0;
  const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
  if ((event->buttons() & Qt::MiddleButton) != 0 || (left && shift)) {
    state_.pan_x += moved.x() / SmallerSide();
    state_.pan_y -= moved.y() / SmallerSide();
  } else if (left) {
    Turn({.screen_x = moved.y() * kDegreesPerPixel, .model_y = moved.x() * kDegreesPerPixel});
  } else {
    return;
  }
  update();
}

void CTarnView::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kWheelUnitsPerNotch;
  if (notches == 0.0) return;
  ZoomTo(state_.zoom * std::pow(kZoomPerNotch, notches), event->position());
  event->accept();
}

}  // namespace veldra

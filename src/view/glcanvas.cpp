#include "view/glcanvas.h"

#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "platform/glcontext.h"
#include "platform/glframebuffer.h"
#include "platform/trace.h"

namespace veldra {

namespace {

bool g_in_memory = false;

QSurfaceFormat CanvasFormat(int samples) {
  QSurfaceFormat format;
  format.setRenderableType(QSurfaceFormat::OpenGL);
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(samples);
  return format;
}

void PrepareWidget(QWidget& widget) {
  widget.setObjectName("canvas");
  widget.setAttribute(Qt::WA_TransparentForMouseEvents);
  widget.setFocusPolicy(Qt::NoFocus);
  widget.lower();
}

class CWindowCanvas final : public QOpenGLWidget, public CGlCanvas {
 public:
  CWindowCanvas(QWidget& view, int samples, SCallbacks callbacks)
      : QOpenGLWidget(&view), callbacks_(std::move(callbacks)) {
    setFormat(CanvasFormat(samples));
    connect(this, &QOpenGLWidget::frameSwapped, this, [this] { callbacks_.shown(); });
    PrepareWidget(*this);
  }
  ~CWindowCanvas() override {
    // The base class destroys the context when nothing of this class is left to be told.
    if (context() != nullptr) disconnect(context(), nullptr, this, nullptr);
    Lose();
  }

  bool IsUsable() const override { return isValid() && has_fixed_functions_; }
  QWidget& Widget() override { return *this; }
  void Redraw() override { update(); }
  QImage Grab() override { return grabFramebuffer(); }
  bool DrawAside(int width, int height, const std::function<void()>& draw) override;
  void WithContext(const std::function<void()>& function) override {
    if (context() == nullptr) return;
    makeCurrent();
    function();
    doneCurrent();
  }

 protected:
  void initializeGL() override {
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { Lose(); });
    has_fixed_functions_ = !context()->isOpenGLES() && context()->format().profile() != QSurfaceFormat::CoreProfile;
  }
  void paintGL() override {
    if (has_fixed_functions_) callbacks_.draw();
  }

 private:
  void Lose() { WithContext(callbacks_.before_loss); }

  SCallbacks callbacks_;
  bool has_fixed_functions_ = true;
};

bool CWindowCanvas::DrawAside(int width, int height, const std::function<void()>& draw) {
  if (!IsUsable()) return false;
  const auto loader = [](const char* name) { return QOpenGLContext::currentContext()->getProcAddress(name); };
  bool is_ready = false;
  WithContext([&] {
    CGlFramebuffer buffer;
    SError error;
    is_ready = buffer.Create(loader, width, height, &error);
    if (is_ready) draw();
    if (!is_ready) Trace(">> CGlCanvas::DrawAside: %s\n", error.what.c_str());
  });
  return is_ready;
}

class CMemoryCanvas final : public QWidget, public CGlCanvas {
 public:
  CMemoryCanvas(QWidget& view, SCallbacks callbacks) : QWidget(&view), callbacks_(std::move(callbacks)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    PrepareWidget(*this);
  }
  ~CMemoryCanvas() override { WithContext(callbacks_.before_loss); }

  bool IsUsable() const override { return context_ != nullptr; }
  QWidget& Widget() override { return *this; }
  void Redraw() override {
    is_stale_ = true;
    update();
  }
  QImage Grab() override {
    is_stale_ = true;
    Draw();
    return picture_;
  }
  bool DrawAside(int width, int height, const std::function<void()>& draw) override;
  void WithContext(const std::function<void()>& function) override {
    if (context_ != nullptr && context_->MakeCurrent()) function();
  }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent*) override { is_stale_ = true; }

 private:
  bool UseSize(const QSize& size);
  void Draw();

  SCallbacks callbacks_;
  std::unique_ptr<CMemoryGlContext> context_;
  QSize size_;      ///< of what the context draws into
  QImage picture_;  ///< what is shown
  bool is_stale_ = true;
};

/// The context is current afterwards.
bool CMemoryCanvas::UseSize(const QSize& size) {
  if (context_ == nullptr) {
    SError error;
    context_ = CMemoryGlContext::Create(size.width(), size.height(), &error);
    size_ = size;
    if (context_ == nullptr) Trace(">> CGlCanvas: %s\n", error.what.c_str());
    return context_ != nullptr;
  }
  if (!context_->MakeCurrent()) return false;
  if (size_ == size) return true;
  size_ = context_->Resize(size.width(), size.height()) ? size : QSize();
  return size_ == size;
}

void CMemoryCanvas::Draw() {
  const QSize size = (QSizeF(this->size()) * devicePixelRatioF()).toSize().expandedTo(QSize(1, 1));
  is_stale_ = false;  // first, since a drawing may find that it wants another
  if (!UseSize(size)) return;
  callbacks_.draw();
  const std::vector<uint8_t> pixels = context_->ReadPixels();
  picture_ =
      QImage(pixels.data(), size.width(), size.height(), QImage::Format_RGBX8888).convertToFormat(QImage::Format_RGB32);
  picture_.setDevicePixelRatio(devicePixelRatioF());
}

bool CMemoryCanvas::DrawAside(int width, int height, const std::function<void()>& draw) {
  if (context_ == nullptr || !UseSize({width, height})) return false;
  draw();
  return true;
}

void CMemoryCanvas::paintEvent(QPaintEvent* event) {
  if (is_stale_ || picture_.devicePixelRatio() != devicePixelRatioF()) Draw();
  QPainter painter(this);
  if (picture_.isNull()) return painter.fillRect(event->rect(), Qt::black);
  painter.drawImage(0, 0, picture_);
  callbacks_.shown();
}

}  // namespace

void CGlCanvas::DrawInMemory() {
  g_in_memory = true;
}

bool CGlCanvas::DrawsInMemory() {
  return g_in_memory;
}

std::unique_ptr<CGlCanvas> CGlCanvas::Make(QWidget& view, int samples, SCallbacks callbacks) {
  if (g_in_memory) return std::make_unique<CMemoryCanvas>(view, std::move(callbacks));
  return std::make_unique<CWindowCanvas>(view, samples, std::move(callbacks));
}

}  // namespace veldra

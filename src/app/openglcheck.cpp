#include "app/openglcheck.h"

#include <QByteArrayView>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <algorithm>

namespace veldra {

namespace {

constexpr QByteArrayView kSoftwareRenderers[] = {
    "llvmpipe", "softpipe", "swrast", "Software Rasterizer", "GDI Generic", "SwiftShader", "Microsoft Basic Render"};

bool IsSoftware(QByteArrayView renderer) {
  return std::any_of(std::begin(kSoftwareRenderers), std::end(kSoftwareRenderers),
                     [&](QByteArrayView name) { return renderer.contains(name); });
}

}  // namespace

EOpenGl CheckOpenGl() {
  QOpenGLContext* shared = QOpenGLContext::globalShareContext();
  if (shared == nullptr || !shared->isValid()) return EOpenGl::kTooOld;
  QOffscreenSurface surface;
  surface.setFormat(shared->format());
  surface.create();
  if (!shared->makeCurrent(&surface)) return EOpenGl::kHardware;  // cannot be told
  // The renderer is content with less, but the toolkit puts views and the rest of the window together with these.
  const bool is_enough = shared->format().version() >= qMakePair(2, 1) &&
                         shared->functions()->hasOpenGLFeature(QOpenGLFunctions::Framebuffers);
  const auto* renderer = reinterpret_cast<const char*>(shared->functions()->glGetString(GL_RENDERER));
  const bool is_software = renderer != nullptr && IsSoftware(renderer);
  shared->doneCurrent();
  if (!is_enough) return EOpenGl::kTooOld;
  return is_software ? EOpenGl::kSoftware : EOpenGl::kHardware;
}

}  // namespace veldra

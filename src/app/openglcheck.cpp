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
  if (shared == nullptr || !shared->isValid()) return EOpenGl::kNone;
  QOffscreenSurface surface;
  surface.setFormat(shared->format());
  surface.create();
  if (!shared->makeCurrent(&surface)) return EOpenGl::kHardware;  // cannot be told
  const auto* renderer = reinterpret_cast<const char*>(shared->functions()->glGetString(GL_RENDERER));
  const bool is_software = renderer != nullptr && IsSoftware(renderer);
  shared->doneCurrent();
  return is_software ? EOpenGl::kSoftware : EOpenGl::kHardware;
}

}  // namespace veldra

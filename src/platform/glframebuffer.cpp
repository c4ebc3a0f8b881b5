#include "platform/glframebuffer.h"

#include <algorithm>
#include <string>

// After gl.h: what came later than 1.1.
#include <GL/glext.h>

#include "platform/text.h"

namespace veldra {

namespace {

template <typename T>
bool LoadCall(T& call, CGlFramebuffer::Loader loader, const std::string& name) {
  // The extension has the same calls under the same names with a suffix.
  for (const char* suffix : {"", "EXT"}) {
    call = reinterpret_cast<T>(loader((name + suffix).c_str()));
    if (call != nullptr) return true;
  }
  return false;
}

}  // namespace

struct CGlFramebuffer::SCalls {
  PFNGLGENFRAMEBUFFERSPROC gen_framebuffers = nullptr;
  PFNGLDELETEFRAMEBUFFERSPROC delete_framebuffers = nullptr;
  PFNGLBINDFRAMEBUFFERPROC bind_framebuffer = nullptr;
  PFNGLCHECKFRAMEBUFFERSTATUSPROC check_status = nullptr;
  PFNGLFRAMEBUFFERRENDERBUFFERPROC attach = nullptr;
  PFNGLGENRENDERBUFFERSPROC gen_renderbuffers = nullptr;
  PFNGLDELETERENDERBUFFERSPROC delete_renderbuffers = nullptr;
  PFNGLBINDRENDERBUFFERPROC bind_renderbuffer = nullptr;
  PFNGLRENDERBUFFERSTORAGEPROC storage = nullptr;

  bool Load(Loader loader) {
    return LoadCall(gen_framebuffers, loader, "glGenFramebuffers") &&
           LoadCall(delete_framebuffers, loader, "glDeleteFramebuffers") &&
           LoadCall(bind_framebuffer, loader, "glBindFramebuffer") &&
           LoadCall(check_status, loader, "glCheckFramebufferStatus") &&
           LoadCall(attach, loader, "glFramebufferRenderbuffer") &&
           LoadCall(gen_renderbuffers, loader, "glGenRenderbuffers") &&
           LoadCall(delete_renderbuffers, loader, "glDeleteRenderbuffers") &&
           LoadCall(bind_renderbuffer, loader, "glBindRenderbuffer") &&
           LoadCall(storage, loader, "glRenderbufferStorage");
  }

  GLuint MakeBuffer(GLenum format, GLenum attachment, int width, int height) const {
    GLuint buffer = 0;
    gen_renderbuffers(1, &buffer);
    bind_renderbuffer(GL_RENDERBUFFER, buffer);
    storage(GL_RENDERBUFFER, format, width, height);
    attach(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    return buffer;
  }
};

CGlFramebuffer::CGlFramebuffer() : calls_(std::make_unique<SCalls>()) {}

CGlFramebuffer::~CGlFramebuffer() {
  if (framebuffer_ == 0) return;
  calls_->bind_framebuffer(GL_FRAMEBUFFER, 0);
  calls_->delete_framebuffers(1, &framebuffer_);
  calls_->delete_renderbuffers(1, &color_);
  calls_->delete_renderbuffers(1, &depth_);
}

bool CGlFramebuffer::Allocate(int width, int height) {
  GLint largest = 0;
  glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &largest);
  if (width > largest || height > largest) return false;
  calls_->gen_framebuffers(1, &framebuffer_);
  calls_->bind_framebuffer(GL_FRAMEBUFFER, framebuffer_);
  color_ = calls_->MakeBuffer(GL_RGBA8, GL_COLOR_ATTACHMENT0, width, height);
  depth_ = calls_->MakeBuffer(GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT, width, height);
  return glGetError() == GL_NO_ERROR && calls_->check_status(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

bool CGlFramebuffer::Create(Loader loader, int width, int height, SError* error) {
  if (!calls_->Load(loader)) {
    SetGlError(error, "this OpenGL cannot draw into memory");
    return false;
  }
  if (Allocate(width, height)) return true;
  SetGlError(error, Format("OpenGL has no room for a picture of %d x %d pixels", width, height));
  return false;
}

std::vector<uint8_t> ReadFramebuffer(int width, int height) {
  const size_t row = static_cast<size_t>(width) * 4;
  std::vector<uint8_t> pixels(row * static_cast<size_t>(height));
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  // OpenGL counts rows from the bottom.
  for (size_t top = 0, bottom = static_cast<size_t>(height); top + 1 < bottom; ++top) {
    --bottom;
    std::swap_ranges(pixels.data() + top * row, pixels.data() + (top + 1) * row, pixels.data() + bottom * row);
  }
  return pixels;
}

void SetGlError(SError* error, std::string what) {
  if (error != nullptr) error->what = std::move(what);
}

}  // namespace veldra

#include "platform/glcontext.h"
#include "platform/glframebuffer.h"

// Xlib's headers would bring macros named None, Bool and Status.
#define EGL_NO_X11
#define MESA_EGL_NO_X11_HEADERS
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <array>
#include <string_view>

namespace veldra {

namespace {

/// A context with the little that OpenGL needs to be made current. Displays stay initialised: they belong to the
/// process, and terminating one would take it away from whoever else uses it.
class CEglContext : public CMemoryGlContext {
 public:
  CEglContext() = default;
  ~CEglContext() override;

  bool Open(EGLDisplay display);
  bool MakeFramebuffer(int width, int height, SError* error);
  bool MakeCurrent() override { return eglMakeCurrent(display_, surface_, surface_, context_) == EGL_TRUE; }
  bool Resize(int width, int height) override { return MakeFramebuffer(width, height, nullptr); }
  std::vector<uint8_t> ReadPixels() override { return ReadFramebuffer(width_, height_); }

 private:
  bool MakeFirstCurrent(EGLConfig config);

  int width_ = 0;
  int height_ = 0;
  EGLDisplay display_ = EGL_NO_DISPLAY;
  EGLContext context_ = EGL_NO_CONTEXT;
  EGLSurface surface_ = EGL_NO_SURFACE;
  std::unique_ptr<CGlFramebuffer> framebuffer_;
};

CEglContext::~CEglContext() {
  if (display_ == EGL_NO_DISPLAY) return;
  if (context_ != EGL_NO_CONTEXT && MakeCurrent()) framebuffer_.reset();
  eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  if (context_ != EGL_NO_CONTEXT) eglDestroyContext(display_, context_);
  if (surface_ != EGL_NO_SURFACE) eglDestroySurface(display_, surface_);
  eglReleaseThread();
}

bool CEglContext::Open(EGLDisplay display) {
  if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE) return false;
  if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE) return false;
  display_ = display;
  const EGLint wanted[] = {EGL_SURFACE_TYPE,
                           EGL_PBUFFER_BIT,
                           EGL_RENDERABLE_TYPE,
                           EGL_OPENGL_BIT,
                           EGL_RED_SIZE,
                           8,
                           EGL_GREEN_SIZE,
                           8,
                           EGL_BLUE_SIZE,
                           8,
                           EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (eglChooseConfig(display, wanted, &config, 1, &count) == EGL_FALSE || count == 0) return false;
  context_ = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  return context_ != EGL_NO_CONTEXT && MakeFirstCurrent(config);
}

bool CEglContext::MakeFirstCurrent(EGLConfig config) {
  if (MakeCurrent()) return true;  // without any surface
  const EGLint size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
  surface_ = eglCreatePbufferSurface(display_, config, size);
  return surface_ != EGL_NO_SURFACE && MakeCurrent();
}

bool CEglContext::MakeFramebuffer(int width, int height, SError* error) {
  framebuffer_.reset();
  framebuffer_ = std::make_unique<CGlFramebuffer>();
  width_ = width;
  height_ = height;
  return framebuffer_->Create(&eglGetProcAddress, width, height, error);
}

bool ClientHasExtension(std::string_view name) {
  const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
  return extensions != nullptr && std::string_view(extensions).find(name) != std::string_view::npos;
}

EGLDisplay PlatformDisplay(EGLenum platform, void* native) {
  const auto get = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  return get != nullptr ? get(platform, native, nullptr) : EGL_NO_DISPLAY;
}

/// Mesa without any display server.
EGLDisplay SurfacelessDisplay() {
  if (!ClientHasExtension("EGL_MESA_platform_surfaceless")) return EGL_NO_DISPLAY;
  return PlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY);
}

/// The first graphics card, which other drivers offer without a display server.
EGLDisplay DeviceDisplay() {
  if (!ClientHasExtension("EGL_EXT_platform_device")) return EGL_NO_DISPLAY;
  const auto query = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
  EGLDeviceEXT device = nullptr;
  EGLint count = 0;
  if (query == nullptr || query(1, &device, &count) == EGL_FALSE || count == 0) return EGL_NO_DISPLAY;
  return PlatformDisplay(EGL_PLATFORM_DEVICE_EXT, device);
}

EGLDisplay DefaultDisplay() {
  return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

}  // namespace

std::unique_ptr<CMemoryGlContext> CMemoryGlContext::Create(int width, int height, SError* error) {
  constexpr std::array<EGLDisplay (*)(), 3> kDisplays = {SurfacelessDisplay, DeviceDisplay, DefaultDisplay};
  SetGlError(error, "no OpenGL driver can draw without a display");
  for (const auto get_display : kDisplays) {
    auto context = std::make_unique<CEglContext>();
    if (context->Open(get_display()) && context->MakeFramebuffer(width, height, error)) return context;
  }
  return nullptr;
}

}  // namespace veldra

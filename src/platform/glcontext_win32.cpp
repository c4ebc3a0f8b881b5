#include "platform/glcontext.h"
#include "platform/glframebuffer.h"

namespace veldra {

namespace {

constexpr const wchar_t* kWindowClass = L"VeldraMemoryGlContext";

/// A window that is never shown, for its rendering context; the drawing goes into a framebuffer object, since a hidden
/// window's pixels belong to nobody.
class CWglContext : public CMemoryGlContext {
 public:
  CWglContext(int width, int height) : width_(width), height_(height) {}
  ~CWglContext() override;

  bool Open();
  bool MakeFramebuffer(SError* error);
  std::vector<uint8_t> ReadPixels() override { return ReadFramebuffer(width_, height_); }

 private:
  bool ChooseFormat();

  int width_;
  int height_;
  HWND window_ = nullptr;
  HDC device_ = nullptr;
  HGLRC context_ = nullptr;
  std::unique_ptr<CGlFramebuffer> framebuffer_;
};

CWglContext::~CWglContext() {
  framebuffer_.reset();
  if (context_ != nullptr) {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context_);
  }
  if (device_ != nullptr) ReleaseDC(window_, device_);
  if (window_ != nullptr) DestroyWindow(window_);
}

bool CWglContext::Open() {
  WNDCLASSW window_class = {};
  window_class.style = CS_OWNDC;
  window_class.lpfnWndProc = DefWindowProcW;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kWindowClass;
  RegisterClassW(&window_class);  // fails from the second context on, and then it is there already
  window_ =
      CreateWindowExW(0, kWindowClass, L"", WS_POPUP, 0, 0, 16, 16, nullptr, nullptr, window_class.hInstance, nullptr);
  if (window_ == nullptr) return false;
  device_ = GetDC(window_);
  if (device_ == nullptr || !ChooseFormat()) return false;
  context_ = wglCreateContext(device_);
  return context_ != nullptr && wglMakeCurrent(device_, context_) != FALSE;
}

bool CWglContext::ChooseFormat() {
  PIXELFORMATDESCRIPTOR wanted = {};
  wanted.nSize = sizeof(wanted);
  wanted.nVersion = 1;
  wanted.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = 24;
  wanted.cDepthBits = 24;
  const int format = ChoosePixelFormat(device_, &wanted);
  return format != 0 && SetPixelFormat(device_, format, &wanted) != FALSE;
}

CGlFramebuffer::EntryPoint FindEntryPoint(const char* name) {
  return reinterpret_cast<CGlFramebuffer::EntryPoint>(reinterpret_cast<void*>(wglGetProcAddress(name)));
}

bool CWglContext::MakeFramebuffer(SError* error) {
  framebuffer_ = std::make_unique<CGlFramebuffer>();
  return framebuffer_->Create(&FindEntryPoint, width_, height_, error);
}

}  // namespace

std::unique_ptr<CMemoryGlContext> CMemoryGlContext::Create(int width, int height, SError* error) {
  SetGlError(error, "no OpenGL driver can be had");
  auto context = std::make_unique<CWglContext>(width, height);
  if (!context->Open() || !context->MakeFramebuffer(error)) return nullptr;
  return context;
}

}  // namespace veldra

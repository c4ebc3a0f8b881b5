#include "platform/glcontext.h"
#include "platform/glframebuffer.h"

namespace veldra {

namespace {

constexpr const wchar_t* kWindowClass = L"VeldraMemoryGlContext";
/// The pixel format is to be that of the bitmap: nobody converts.
constexpr BYTE kBitmapBits = 32;

PIXELFORMATDESCRIPTOR WantedFormat(DWORD flags, BYTE color_bits) {
  PIXELFORMATDESCRIPTOR wanted = {};
  wanted.nSize = sizeof(wanted);
  wanted.nVersion = 1;
  wanted.dwFlags = flags | PFD_SUPPORT_OPENGL;
  wanted.iPixelType = PFD_TYPE_RGBA;
  wanted.cColorBits = color_bits;
  wanted.cDepthBits = 24;
  return wanted;
}

/// A rendering context, on whatever it draws.
class CWglContext : public CMemoryGlContext {
 public:
  ~CWglContext() override {
    if (context_ == nullptr) return;
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context_);
  }

  bool MakeCurrent() override { return context_ != nullptr && wglMakeCurrent(device_, context_) != FALSE; }
  std::vector<uint8_t> ReadPixels() override { return ReadFramebuffer(width_, height_); }

 protected:
  bool ChooseFormat(DWORD flags, BYTE color_bits) {
    const PIXELFORMATDESCRIPTOR wanted = WantedFormat(flags, color_bits);
    const int format = ChoosePixelFormat(device_, &wanted);
    return format != 0 && SetPixelFormat(device_, format, &wanted) != FALSE;
  }
  bool OpenContext() {
    if (context_ == nullptr) context_ = wglCreateContext(device_);
    return MakeCurrent();
  }
  void SetSize(int width, int height) {
    width_ = width;
    height_ = height;
  }

  HDC device_ = nullptr;

 private:
  int width_ = 0;
  int height_ = 0;
  HGLRC context_ = nullptr;
};

CGlFramebuffer::EntryPoint FindEntryPoint(const char* name) {
  return reinterpret_cast<CGlFramebuffer::EntryPoint>(reinterpret_cast<void*>(wglGetProcAddress(name)));
}

/// A window that is never shown, for its rendering context; the drawing goes into a framebuffer object, since a hidden
/// window's pixels belong to nobody.
class CHiddenWindowContext : public CWglContext {
 public:
  ~CHiddenWindowContext() override {
    if (MakeCurrent()) framebuffer_.reset();
    wglMakeCurrent(nullptr, nullptr);
    if (device_ != nullptr) ReleaseDC(window_, device_);
    if (window_ != nullptr) DestroyWindow(window_);
  }

  bool Open();
  bool MakeFramebuffer(int width, int height, SError* error) {
    framebuffer_.reset();
    framebuffer_ = std::make_unique<CGlFramebuffer>();
    SetSize(width, height);
    return framebuffer_->Create(&FindEntryPoint, width, height, error);
  }
  bool Resize(int width, int height) override { return MakeFramebuffer(width, height, nullptr); }

 private:
  HWND window_ = nullptr;
  std::unique_ptr<CGlFramebuffer> framebuffer_;
};

bool CHiddenWindowContext::Open() {
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
  return device_ != nullptr && ChooseFormat(PFD_DRAW_TO_WINDOW | PFD_DOUBLEBUFFER, 24) && OpenContext();
}

/// The system's own OpenGL draws into bitmaps, whatever driver there is.
class CBitmapContext : public CWglContext {
 public:
  ~CBitmapContext() override {
    wglMakeCurrent(nullptr, nullptr);
    Drop(device_, bitmap_);
  }

  bool Resize(int width, int height) override;

 private:
  static void Drop(HDC device, HBITMAP bitmap) {
    if (device != nullptr) DeleteDC(device);
    if (bitmap != nullptr) DeleteObject(bitmap);
  }

  HBITMAP bitmap_ = nullptr;
};

/// A context may go from one device to another with the same pixel format, but a device's format is for good.
bool CBitmapContext::Resize(int width, int height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = kBitmapBits;
  const HDC old_device = device_;
  const HBITMAP old_bitmap = bitmap_;
  void* pixels = nullptr;
  device_ = CreateCompatibleDC(nullptr);
  bitmap_ = CreateDIBSection(device_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  SetSize(width, height);
  const bool is_ready = bitmap_ != nullptr && SelectObject(device_, bitmap_) != nullptr &&
                        ChooseFormat(PFD_DRAW_TO_BITMAP, kBitmapBits) && OpenContext();
  Drop(old_device, old_bitmap);
  return is_ready;
}

}  // namespace

std::unique_ptr<CMemoryGlContext> CMemoryGlContext::Create(int width, int height, SError* error) {
  SetGlError(error, "no OpenGL driver can be had");
  auto hidden_window = std::make_unique<CHiddenWindowContext>();
  if (hidden_window->Open() && hidden_window->MakeFramebuffer(width, height, error)) return hidden_window;
  hidden_window.reset();
  return CreateInBitmap(width, height);
}

std::unique_ptr<CMemoryGlContext> CMemoryGlContext::CreateInBitmap(int width, int height) {
  auto bitmap = std::make_unique<CBitmapContext>();
  if (bitmap->Resize(width, height)) return bitmap;
  return nullptr;
}

}  // namespace veldra

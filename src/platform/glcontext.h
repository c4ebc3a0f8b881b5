#pragma once

#include <memory>
#include <vector>

#include "platform/files.h"

#ifdef _WIN32
#include "platform/windows_system.h"
#endif
// The one place that includes OpenGL's headers: Windows wants its own before them.
#include <GL/gl.h>
#include <GL/glu.h>

namespace veldra {

/// An OpenGL context that draws into memory and needs no display and no window: EGL's surfaceless platform, or on
/// Windows a hidden window, or a bitmap where the driver has no framebuffer objects (the system's own OpenGL 1.1).
class CMemoryGlContext {
 public:
  /// WIDTH × HEIGHT pixels with colour and depth; current on this thread afterwards. Nothing when the system offers
  /// none; ERROR says why.
  static std::unique_ptr<CMemoryGlContext> Create(int width, int height, SError* error);
#ifdef _WIN32
  /// The bitmap, whatever driver there is.
  static std::unique_ptr<CMemoryGlContext> CreateInBitmap(int width, int height);
#endif
  virtual ~CMemoryGlContext() = default;

  /// On the thread that made it. False when the driver refuses.
  virtual bool MakeCurrent() = 0;
  /// While it is current: other dimensions; what was drawn is gone, textures and lists stay. False when there is no
  /// memory for so many, and then nothing can be drawn before a call that returns true.
  virtual bool Resize(int width, int height) = 0;
  /// What was drawn: four bytes a pixel (red, green, blue, alpha), the top row first.
  virtual std::vector<uint8_t> ReadPixels() = 0;
};

}  // namespace veldra

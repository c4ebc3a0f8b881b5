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

/// An OpenGL context that draws into memory and needs no display: EGL's surfaceless platform, or a hidden window on
/// Windows. Current on the thread that made it, for as long as it lives; no other context may be current there when it
/// is made.
class CMemoryGlContext {
 public:
  /// WIDTH × HEIGHT pixels with colour and depth. Nothing when the system offers none; ERROR says why.
  static std::unique_ptr<CMemoryGlContext> Create(int width, int height, SError* error);
  virtual ~CMemoryGlContext() = default;

  /// What was drawn: four bytes a pixel (red, green, blue, alpha), the top row first.
  virtual std::vector<uint8_t> ReadPixels() = 0;
};

}  // namespace veldra

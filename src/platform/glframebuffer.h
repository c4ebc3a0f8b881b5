#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/glcontext.h"

namespace veldra {

/// A picture in memory that the current context draws into, in place of a window. Newer than OpenGL 1.1, so its entry
/// points are asked for while the program runs.
class CGlFramebuffer {
 public:
  using EntryPoint = void (*)();
  /// Finds an entry point of the current context by name; null when there is none.
  using Loader = EntryPoint (*)(const char* name);

  CGlFramebuffer();
  /// The context must still be current when something was created.
  ~CGlFramebuffer();
  CGlFramebuffer(const CGlFramebuffer&) = delete;
  CGlFramebuffer& operator=(const CGlFramebuffer&) = delete;

  /// WIDTH × HEIGHT pixels of 8-bit RGBA and 24-bit depth, bound for drawing and reading. False when the context has no
  /// framebuffer objects or none so large; ERROR says which. Once an object.
  bool Create(Loader loader, int width, int height, SError* error);

 private:
  struct SCalls;
  bool Allocate(int width, int height);

  std::unique_ptr<SCalls> calls_;
  GLuint framebuffer_ = 0;
  GLuint color_ = 0;
  GLuint depth_ = 0;
};

/// The pixels of what the current context reads from, four bytes each, the top row first.
std::vector<uint8_t> ReadFramebuffer(int width, int height);

/// Sets ERROR, where there is one.
void SetGlError(SError* error, std::string what);

}  // namespace veldra

#pragma once

namespace veldra {

/// What the system's OpenGL is. Looks at the context that all views share, which is made with the application.
enum class EOpenGl {
  kNone,      ///< or less than 2.1: a window with an OpenGL view would fall over when it comes to be drawn
  kSoftware,  ///< the processor draws: without the smoothing of edges, which takes longer than all the rest
  kHardware
};
EOpenGl CheckOpenGl();

}  // namespace veldra

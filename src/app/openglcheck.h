#pragma once

namespace veldra {

/// What the system's OpenGL is. Looks at the context that all views share, which is made with the application.
enum class EOpenGl {
  kTooOld,    ///< none for windows, or less than 2.1, with which a window with an OpenGL view falls over
  kSoftware,  ///< the processor draws: without the smoothing of edges, which takes longer than all the rest
  kHardware
};
EOpenGl CheckOpenGl();

}  // namespace veldra

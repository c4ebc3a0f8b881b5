#pragma once

#include "platform/glcontext.h"
#include "settings/settings.h"

/// OpenGL's state, borrowed for a drawing.
namespace veldra {

/// Leaves OpenGL as it was found.
class CSavedGlState {
 public:
  CSavedGlState();
  ~CSavedGlState();
  CSavedGlState(const CSavedGlState&) = delete;
  CSavedGlState& operator=(const CSavedGlState&) = delete;
};

/// Switches off what an earlier user of the context may have switched on; filled faces, smooth, with depth.
void StartClean();

void SetColor(const SColor& color);

}  // namespace veldra

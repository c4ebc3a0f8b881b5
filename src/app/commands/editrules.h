#pragma once

#include "app/commands/commandtable.h"
#include "editing/facecommands.h"
#include "editing/texturecommands.h"
#include "editing/vertexcommands.h"

namespace veldra {

/// The rule of an editing command, which goes by the active view's cursor.
template <bool (*kRule)(const CEditCursor&)>
bool If(const SCommandState& state) {
  return state.view != nullptr && kRule(state.view->Cursor());
}

}  // namespace veldra

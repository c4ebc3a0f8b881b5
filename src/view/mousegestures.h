#pragma once

#include <string>
#include <vector>

#include "settings/settings.h"

namespace veldra {

enum class EMouseButton { kLeft, kMiddle, kRight };

struct SModifiers {
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
};

/// What dragging does.
enum class EMouseDrag { kNone, kTurn, kPan, kZoom, kBand };

/// The table of mouse schemes. A click picks in all of them: it is a left press that moves no farther than a click may.
/// The rubber band is where the left button is free or Shift is held; Ctrl only says whether it adds.
EMouseDrag DragOf(EMouseScheme scheme, EMouseButton button, const SModifiers& modifiers);

/// What the mouse does in a 3D view, for who reads.
struct SGestureText {
  std::string gesture;
  std::string effect;
};
/// Those of SCHEME first, then those that all schemes share.
std::vector<SGestureText> GestureTexts(EMouseScheme scheme);

/// A number from the settings; one that is none of the schemes is the first.
EMouseScheme MouseScheme(int32_t number);

}  // namespace veldra

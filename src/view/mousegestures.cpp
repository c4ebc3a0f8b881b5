#include "view/mousegestures.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veldra {

namespace {

enum class EHeld { kEither, kYes, kNo };

bool Fits(EHeld wanted, bool held) {
  return wanted == EHeld::kEither || (wanted == EHeld::kYes) == held;
}

/// The first row that fits counts.
struct SSchemeRow {
  EMouseScheme scheme;
  EMouseButton button;
  EHeld shift;
  EHeld alt;
  EMouseDrag drag;
};

using enum EMouseScheme;
using enum EMouseButton;

constexpr SSchemeRow kRows[] = {
    {kLeftTurns, kLeft, EHeld::kYes, EHeld::kEither, EMouseDrag::kBand},
    {kLeftTurns, kLeft, EHeld::kNo, EHeld::kEither, EMouseDrag::kTurn},
    {kLeftTurns, kMiddle, EHeld::kEither, EHeld::kEither, EMouseDrag::kPan},
    {kLeftTurns, kRight, EHeld::kEither, EHeld::kEither, EMouseDrag::kPan},

    {kMiddleTurns, kMiddle, EHeld::kYes, EHeld::kEither, EMouseDrag::kPan},
    {kMiddleTurns, kMiddle, EHeld::kNo, EHeld::kEither, EMouseDrag::kTurn},
    {kMiddleTurns, kLeft, EHeld::kEither, EHeld::kEither, EMouseDrag::kBand},

    {kRightTurns, kRight, EHeld::kEither, EHeld::kEither, EMouseDrag::kTurn},
    {kRightTurns, kMiddle, EHeld::kEither, EHeld::kEither, EMouseDrag::kPan},
    {kRightTurns, kLeft, EHeld::kEither, EHeld::kEither, EMouseDrag::kBand},

    {kAltTurns, kLeft, EHeld::kEither, EHeld::kYes, EMouseDrag::kTurn},
    {kAltTurns, kMiddle, EHeld::kEither, EHeld::kYes, EMouseDrag::kPan},
    {kAltTurns, kRight, EHeld::kEither, EHeld::kYes, EMouseDrag::kZoom},
    {kAltTurns, kLeft, EHeld::kEither, EHeld::kNo, EMouseDrag::kBand},
};

const char* NameOf(EMouseButton button) {
  constexpr const char* kNames[] = {"left button", "middle button", "right button"};
  return kNames[static_cast<size_t>(button)];
}

const char* EffectOf(EMouseDrag drag) {
  constexpr const char* kEffects[] = {"", "Turns the model", "Moves the view", "Zooms in and out",
                                      "Selects what shows in a rectangle; with Ctrl it joins the selection"};
  return kEffects[static_cast<size_t>(drag)];
}

constexpr std::pair<const char*, const char*> kCommonGestures[] = {
    {"Wheel", "Zooms to the pointer"},
    {"Click", "Makes the face or vertex under the pointer the current one"},
    {"Ctrl+Click", "Makes it current, and takes it into the selection or out of it"},
    {"Drag a selected vertex or face", "Moves the selected vertices, or faces, in the plane of the screen"},
    {"Drag an arrow, a ring or a box", "Moves, turns or resizes what is selected along that axis"},
    {"X, Y or Z while they are dragged", "Moves them along that axis only"},
    {"Ctrl while they are dragged",
     "Onto the grid; a ring turns by 15 degrees, a box resizes by tenths, with Shift evenly"},
    {"Shift while they are dragged", "Exactly onto the vertex at the pointer; along an axis, level with it"},
    {"Alt+Drag from a face", "Gives its texture to the faces under the pointer, round their edges"},
    {"Shift or Ctrl meanwhile", "To all faces in their plane; or straight through, and not round edges"},
    {"Esc while dragging", "Gives up the rectangle, or puts vertices and textures back"},
};

}  // namespace

std::vector<SGestureText> GestureTexts(EMouseScheme scheme) {
  std::vector<SGestureText> texts;
  for (const SSchemeRow& row : kRows) {
    if (row.scheme != scheme) continue;
    const std::string held =
        std::string(row.shift == EHeld::kYes ? "Shift+" : "") + (row.alt == EHeld::kYes ? "Alt+" : "");
    texts.push_back({held + "Drag with the " + NameOf(row.button), EffectOf(row.drag)});
  }
  for (const auto& [gesture, effect] : kCommonGestures)
    texts.push_back({gesture, effect});
  return texts;
}

EMouseDrag DragOf(EMouseScheme scheme, EMouseButton button, const SModifiers& modifiers) {
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows), [&](const SSchemeRow& candidate) {
    return candidate.scheme == scheme && candidate.button == button && Fits(candidate.shift, modifiers.shift) &&
           Fits(candidate.alt, modifiers.alt);
  });
  return row != std::end(kRows) ? row->drag : EMouseDrag::kNone;
}

EMouseScheme MouseScheme(int32_t number) {
  const auto scheme = static_cast<EMouseScheme>(number);
  const bool is_known =
      std::any_of(std::begin(kRows), std::end(kRows), [scheme](const SSchemeRow& row) { return row.scheme == scheme; });
  return is_known ? scheme : kLeftTurns;
}

}  // namespace veldra

#include "view/mousegestures.h"

#include <algorithm>
#include <iterator>

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

}  // namespace

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

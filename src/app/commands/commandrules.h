#pragma once

#include "app/commands/commandtable.h"

/// The enabling rules that rows of several menus share.
namespace veldra {

inline bool HasDocument(const SCommandState& state) {
  return state.document != nullptr;
}
/// A document that says so itself.
template <bool (CTarnDoc::*kRule)() const>
bool Allows(const SCommandState& state) {
  return HasDocument(state) && (state.document->*kRule)();
}

}  // namespace veldra

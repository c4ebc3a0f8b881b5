#pragma once

#include <functional>

#include "app/commands/commandtarget.h"
#include "editing/vertexcommands.h"

/// The enabling rules and handlers that rows of several menus share.
namespace veldra {

// --- Rules ---------------------------------------------------------------------------------------------------------

inline bool HasDocument(const SCommandTarget& on) {
  return on.document != nullptr;
}

/// The document says so itself, or a rule of the commands on whole models.
template <auto kRule>
bool IfDocument(const SCommandTarget& on) {
  return HasDocument(on) && std::invoke(kRule, *on.document);
}

/// The rule of an editing command, which goes by the active view's cursor.
template <bool (*kRule)(const CEditCursor&)>
bool IfCursor(const SCommandTarget& on) {
  return on.view != nullptr && kRule(on.view->Cursor());
}

inline bool HasEarlierStates(const CTarnDoc& document) {
  return !document.StatesKey().empty();
}

// --- Handlers: a function or member function of what its name says, with arguments that are always the same ----------

template <auto kFunction, auto... kArguments>
void WithDocument(const SCommandTarget& on) {
  std::invoke(kFunction, *on.document, kArguments...);
}

template <auto kFunction, auto... kArguments>
void WithCursor(const SCommandTarget& on) {
  std::invoke(kFunction, on.view->Cursor(), kArguments...);
}

template <auto kFunction, auto... kArguments>
void WithModel(const SCommandTarget& on) {
  std::invoke(kFunction, on.document->Model(), kArguments...);
}

template <auto kFunction, auto... kArguments>
void WithView(const SCommandTarget& on) {
  std::invoke(kFunction, *on.view, kArguments...);
}

/// Into a plane, which a dialog of that title asks for.
template <const char* kTitle>
void AskPlane(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskPlane(on.Cursor(), kTitle, &on.window)) SetToPlane(on.Cursor(), *input);
}

template <auto kFunction>
void WithFiles(const SCommandTarget& on) {
  std::invoke(kFunction, on.files);
}

template <auto kFunction>
void WithTools(const SCommandTarget& on) {
  std::invoke(kFunction, on.tools);
}

template <auto kFunction>
void WithWindows(const SCommandTarget& on) {
  std::invoke(kFunction, on.windows);
}

template <auto kFunction>
void WithDocks(const SCommandTarget& on) {
  std::invoke(kFunction, on.docks);
}

}  // namespace veldra

#include "app/recoveryoffer.h"

#include <vector>

#include "app/documentwindows.h"
#include "app/recoverydlg.h"
#include "app/toolcommands.h"
#include "platform/text.h"

namespace veldra {

namespace {

using EChoice = CRecoveryDialog::EChoice;

/// What FILE holds, opened meanwhile and untouched, would only stand in the way of what was made of it.
void CloseUntouched(CTarn2App& app, CDocumentWindows& windows, const std::string& path) {
  const auto open = path.empty() ? nullptr : app.FindDocument(path);
  if (open == nullptr || open->IsModified()) return;
  for (CChildFrame* child : windows.Children())
    if (&child->Document() == open.get()) child->close();
}

void RecoverModel(CTarn2App& app, CDocumentWindows& windows, const SLeftover& leftover) {
  const auto document = app.OpenLeftover(leftover);
  if (document == nullptr) return;
  CloseUntouched(app, windows, leftover.label.path);
  windows.AddView(document, false);
}

void Recover(CTarn2App& app, CDocumentWindows& windows, CToolCommands& tools, const SLeftover& leftover) {
  switch (leftover.label.kind) {
    case ECopyKind::kModel:
      return RecoverModel(app, windows, leftover);
    case ECopyKind::kTruck:
      return tools.RecoverTruck(leftover);
    case ECopyKind::kArchive:
      return tools.RecoverArchive(leftover);
  }
}

/// False when one of them cannot be deleted.
bool Discard(CTarn2App& app, const std::vector<SLeftover>& leftovers, const std::vector<size_t>& chosen) {
  const size_t count = chosen.size();
  const std::string text = Format("Discard %zu unsaved document%s for good?", count, count == 1 ? "" : "s");
  const SMessage question = {.text = text, .icon = EIcon::kWarning, .usual = EAnswer::kNo};
  if (app.Questions().AskYesNo(question) != EAnswer::kYes) return true;
  bool all_gone = true;
  for (const size_t i : chosen)
    all_gone = app.Recovery().Discard(leftovers[i]) && all_gone;
  return all_gone;
}

}  // namespace

bool OfferLeftovers(CTarn2App& app, CDocumentWindows& windows, CToolCommands& tools, QWidget* parent) {
  for (bool was_offered = false;; was_offered = true) {
    const std::vector<SLeftover> leftovers = app.Recovery().Leftovers();
    if (leftovers.empty()) return was_offered;
    CRecoveryDialog dialog(leftovers, parent);
    dialog.exec();
    if (dialog.Choice() == EChoice::kRecover)
      for (const size_t i : dialog.Chosen())
        Recover(app, windows, tools, leftovers[i]);
    // What was not ticked is offered once more, so that it can be looked at on its own.
    if (dialog.Choice() != EChoice::kDiscard || !Discard(app, leftovers, dialog.Chosen())) return true;
  }
}

}  // namespace veldra

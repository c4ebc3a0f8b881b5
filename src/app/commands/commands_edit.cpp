#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"

namespace veldra {

namespace {

std::string StepBackName(const SCommandTarget& on) {
  return on.document != nullptr ? on.document->Steps().BackName() : "";
}

std::string StepForwardName(const SCommandTarget& on) {
  return on.document != nullptr ? on.document->Steps().ForwardName() : "";
}

const SCommandRow kEditRows[] = {
    {.id = ECommand::kEditUndo,
     .name = "undo",
     .text = "&Undo",
     .status = "Undoes last action",
     .key = "Ctrl+Z",
     .needs = "Edit > Step Back takes back the last change; the preferences can give it this key",
     .when = IfDocument<&CTarnDoc::CanUndo>,
     .run = WithDocument<&CTarnDoc::Undo>},
    {.id = ECommand::kEditRedo,
     .name = "redo",
     .text = "&Redo",
     .status = "Redoes last action",
     .key = "Ctrl+Y",
     .needs = "Edit > Step Forward makes again what was taken back; the preferences can give it this key",
     .when = IfDocument<&CTarnDoc::CanRedo>,
     .run = WithDocument<&CTarnDoc::Redo>},
    {.id = ECommand::kEditStepBack,
     .name = "stepBack",
     .text = "&Step Back",
     .status = "Takes back the last change of the active document\nStep Back",
     .key = "Alt+Backspace",
     .needs = "There is no step to take back. Edit > Earlier States has what was before",
     .when = IfDocument<&CTarnDoc::CanStepBack>,
     .object = StepBackName,
     .run = WithDocument<&CTarnDoc::StepBack>},
    {.id = ECommand::kEditStepForward,
     .name = "stepForward",
     .text = "Step &Forward",
     .status = "Makes the change again that was taken back last\nStep Forward",
     .key = "Alt+Shift+Backspace",
     .when = IfDocument<&CTarnDoc::CanStepForward>,
     .object = StepForwardName,
     .run = WithDocument<&CTarnDoc::StepForward>},
    {.id = ECommand::kEditEarlierStates,
     .name = "editEarlierStates",
     .text = "&Earlier States...",
     .status = "Goes back to what the active document was before an earlier command, also in earlier sessions",
     .when = IfDocument<&HasEarlierStates>,
     .run = WithFiles<&CFileCommands::EarlierStates>},
};

}  // namespace

std::span<const SCommandRow> EditCommands() {
  return kEditRows;
}

}  // namespace veldra

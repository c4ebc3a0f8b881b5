#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/mainfrm.h"

namespace veldra {

namespace {

const SCommandRow kRows[] = {
    {.id = ECommand::kWindowNew,
     .name = "newWindow",
     .text = "&New Window",
     .status = "Open another window for the active document\nNew Window",
     .when = HasDocument,
     .handler = &CDocumentWindows::NewWindow},
    {.id = ECommand::kWindowCascade,
     .name = "cascade",
     .text = "&Cascade",
     .status = "Arrange windows so they overlap\nCascade Windows",
     .when = HasDocument,
     .handler = &CDocumentWindows::Cascade},
    {.id = ECommand::kWindowTile,
     .name = "tile",
     .text = "&Tile",
     .status = "Arrange windows as non-overlapping tiles\nTile Windows",
     .when = HasDocument,
     .handler = &CDocumentWindows::Tile},
    {.id = ECommand::kWindowNext,
     .name = "nextWindow",
     .text = "Ne&xt Window",
     .status = "Switch to the next document window\nNext Window",
     .key = "Ctrl+F6",
     .when = HasDocument,
     .handler = &CDocumentWindows::Next},
    {.id = ECommand::kWindowPrevious,
     .name = "previousWindow",
     .text = "&Previous Window",
     .status = "Switch back to the previous document window\nPrevious Window",
     .key = "Ctrl+Shift+F6",
     .when = HasDocument,
     .handler = &CDocumentWindows::Previous},
    {.id = ECommand::kWindowList, .name = "windowList", .text = "", .status = "Activate this window"},
    {.id = ECommand::kHelpKeyboard,
     .name = "keyboard",
     .text = "&Keyboard...",
     .status = "Displays all keyboard commands\nKeyboard",
     .handler = &CMainFrame::ShowKeyboard},
    {.id = ECommand::kHelpAbout,
     .name = "about",
     .text = "&About Veldra...",
     .status = "Display program information, version number and copyright\nAbout",
     .handler = &CMainFrame::About},
};

}  // namespace

std::span<const SCommandRow> WindowCommands() {
  return kRows;
}

}  // namespace veldra

#include "app/commands/commandkeys.h"
#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/help/aboutdlg.h"
#include "app/help/helpwindow.h"
#include "view/keyboarddlg.h"

namespace veldra {

namespace {

void ShowKeyboard(const SCommandTarget& on) {
  const SKeyTexts keys = CCommandKeys(on.app.Settings().keys).Texts();
  const int wish = CKeyboardDialog(on.app.Settings(), on.app.Questions(), keys, &on.window).exec();
  if (wish == CKeyboardDialog::kChangeKeys) on.files.PreferencesOn(ESettingPage::kKeys);
}

void ShowAbout(const SCommandTarget& on) {
  CAboutDialog(&on.window).exec();
}

template <const char* const& kPage>
void ShowHelp(const SCommandTarget& on) {
  CHelpWindow::Open(HelpUrl(kPage, {}), on.window);
}

const SCommandRow kWindowRows[] = {
    {.id = ECommand::kWindowNew,
     .name = "newWindow",
     .text = "&New Window",
     .status = "Open another window for the active document\nNew Window",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::NewWindow>},
    {.id = ECommand::kWindowCascade,
     .name = "cascade",
     .text = "&Cascade",
     .status = "Arrange windows so they overlap\nCascade Windows",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::Cascade>},
    {.id = ECommand::kWindowTile,
     .name = "tile",
     .text = "&Tile",
     .status = "Arrange windows as non-overlapping tiles\nTile Windows",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::Tile>},
    {.id = ECommand::kWindowFourViews,
     .name = "fourViews",
     .text = "&Four Views",
     .status = "Shows the active document from above, in front, from the right, and freely, side by side\nFour Views",
     .view_key = "4",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::FourViews>},
    {.id = ECommand::kWindowNext,
     .name = "nextWindow",
     .text = "Ne&xt Window",
     .status = "Switch to the next document window\nNext Window",
     .key = "Ctrl+F6",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::Next>},
    {.id = ECommand::kWindowPrevious,
     .name = "previousWindow",
     .text = "&Previous Window",
     .status = "Switch back to the previous document window\nPrevious Window",
     .key = "Ctrl+Shift+F6",
     .when = HasDocument,
     .run = WithWindows<&CDocumentWindows::Previous>},
    {.id = ECommand::kWindowList, .name = "windowList", .text = "", .status = "Activate this window"},
    {.id = ECommand::kHelpGuide,
     .name = "guide",
     .text = "&Guide",
     .status = "How things are done, to read and to search\nGuide",
     .key = "F1",
     .run = ShowHelp<kGuidePage>},
    {.id = ECommand::kHelpCommandLine,
     .name = "commandLine",
     .text = "&Command Line",
     .status = "What the program does without a window\nCommand Line",
     .run = ShowHelp<kCommandLinePage>},
    {.id = ECommand::kHelpNews,
     .name = "news",
     .text = "What Is &New",
     .status = "What is new in this version\nWhat Is New",
     .run = ShowHelp<kNewsPage>},
    {.id = ECommand::kHelpSample,
     .name = "sampleTruck",
     .text = "Open &Sample Truck",
     .status = "Open a truck to play with, in a project of its own\nSample Truck",
     .run = WithFiles<&CFileCommands::OpenSample>},
    {.id = ECommand::kHelpKeyboard,
     .name = "keyboard",
     .text = "&Keyboard...",
     .status = "Displays all keyboard commands\nKeyboard",
     .run = ShowKeyboard},
    {.id = ECommand::kHelpAbout,
     .name = "about",
     .text = "&About Veldra...",
     .status = "Display program information, version number and copyright\nAbout",
     .run = ShowAbout},
};

}  // namespace

std::span<const SCommandRow> WindowCommands() {
  return kWindowRows;
}

}  // namespace veldra

#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/commands/otherkeys.h"

#include <QApplication>
#include <QMessageBox>

#include "view/keyboarddlg.h"

namespace veldra {

namespace {

void ShowKeyboard(const SCommandTarget& on) {
  CKeyboardDialog(on.app.Settings(), on.app.Questions(), OtherKeys(), &on.window).exec();
}

void ShowAbout(const SCommandTarget& on) {
  QMessageBox box(&on.window);
  box.setObjectName("about");
  box.setWindowTitle(QObject::tr("About Veldra"));
  box.setIconPixmap(QApplication::windowIcon().pixmap(64, 64));
  box.setText(QStringLiteral("<h3>Veldra %1</h3>").arg(VELDRA_VERSION));
  box.setInformativeText(QObject::tr("An editor for the 3D models of Monster Truck Madness 2.\n\nRuns on Qt %1.")
                             .arg(QString::fromUtf8(qVersion())));
  box.exec();
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

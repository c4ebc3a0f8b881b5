#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/mainfrm.h"

namespace veldra {

namespace {

bool HasFile(const SCommandState& state) {
  return HasDocument(state) && !state.document->Path().empty();
}
bool HasEarlierStates(const SCommandState& state) {
  return HasDocument(state) && !state.document->StatesKey().empty();
}
bool HasRecentFiles(const SCommandState& state) {
  return state.has_recent_files;
}

const SCommandRow kRows[] = {
    {.id = ECommand::kFileNew,
     .name = "new",
     .text = "&New",
     .status = "Creates a new model\nNew",
     .key = "Ctrl+N",
     .has_icon = true,
     .handler = &CFileCommands::New},
    {.id = ECommand::kFileOpen,
     .name = "open",
     .text = "&Open...",
     .status = "Open an existing document\nOpen",
     .key = "Ctrl+O",
     .has_icon = true,
     .handler = &CFileCommands::AskAndOpen},
    {.id = ECommand::kFileClose,
     .name = "close",
     .text = "&Close",
     .status = "Close the active document\nClose",
     .key = "Ctrl+W",
     .when = HasDocument,
     .handler = &CFileCommands::Close},
    {.id = ECommand::kFileSave,
     .name = "save",
     .text = "&Save",
     .status = "Save the active document",
     .key = "Ctrl+S",
     .has_icon = true,
     .when = Allows<&CTarnDoc::CanSave>,
     .handler = &CFileCommands::Save},
    {.id = ECommand::kFileSaveAs,
     .name = "saveAs",
     .text = "Save &As...",
     .status = "Saves the active docmunet as an MTM model",
     .key = "Ctrl+Shift+S",
     .has_icon = true,
     .when = HasDocument,
     .handler = &CFileCommands::SaveAs},
    {.id = ECommand::kFileReload,
     .name = "reload",
     .text = "Re&load",
     .status = "Reads the active document anew from its file\nReload",
     .key = "F5",
     .when = HasFile,
     .handler = &CFileCommands::Reload},
    {.id = ECommand::kFileEarlierStates,
     .name = "earlierStates",
     .text = "&Earlier States...",
     .status = "Opens what the active document was before an earlier command",
     .when = HasEarlierStates,
     .handler = &CFileCommands::EarlierStates},
    {.id = ECommand::kFileRecover,
     .name = "recover",
     .text = "Reco&ver Documents...",
     .status = "Offers what was unsaved when the program ended unexpectedly",
     .handler = &CFileCommands::Recover},
    {.id = ECommand::kExportWavefront,
     .name = "exportWavefront",
     .text = "&Wavefront...",
     .status = "Saves active document as a Wavefront file",
     .when = Allows<&CTarnDoc::CanExportWavefront>,
     .handler = &CTarnDoc::ExportWavefront},
    {.id = ECommand::kExport3ds,
     .name = "export3ds",
     .text = "&3D Studio...",
     .status = "Export model as an Autodesk 3D Studio File",
     .when = Allows<&CTarnDoc::CanExport3ds>,
     .handler = &CTarnDoc::Export3ds},
    {.id = ECommand::kExportVrml,
     .name = "exportVrml",
     .text = "&VRML...",
     .status = "Saves active document as a VRML file",
     .when = Allows<&CTarnDoc::CanExportVrml>,
     .handler = &CTarnDoc::ExportVrml},
    {.id = ECommand::kFileTextureList,
     .name = "saveTextureList",
     .text = "Save &Texture List...",
     .status = "Saves current texture names within an LST file",
     .when = Allows<&CTarnDoc::CanSaveTextureList>,
     .handler = &CTarnDoc::SaveTextureList},
    {.id = ECommand::kFileRecent,
     .name = "recentFiles",
     .text = "&Recent Files",
     .status = "Open a document that was open before",
     .when = HasRecentFiles},
    {.id = ECommand::kFilePreferences,
     .name = "preferences",
     .text = "Pre&ferences...",
     .status = "Changes the settings of the program\nPreferences",
     .handler = &CFileCommands::Preferences},
    {.id = ECommand::kFileExit,
     .name = "exit",
     .text = "E&xit",
     .status = "Quit the application; prompts to save documents",
     .key = "Ctrl+Q",
     .handler = &CMainFrame::Exit},
    // --- Edit
    {.id = ECommand::kEditUndo,
     .name = "undo",
     .text = "&Undo",
     .status = "Undoes last action",
     .key = "Ctrl+Z",
     .when = Allows<&CTarnDoc::CanUndo>,
     .handler = &CTarnDoc::Undo},
    {.id = ECommand::kEditRedo,
     .name = "redo",
     .text = "&Redo",
     .status = "Redoes last action",
     .key = "Ctrl+Y",
     .when = Allows<&CTarnDoc::CanRedo>,
     .handler = &CTarnDoc::Redo},
};

}  // namespace

std::span<const SCommandRow> FileCommands() {
  return kRows;
}

}  // namespace veldra

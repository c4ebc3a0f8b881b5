#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "document/exports.h"

namespace veldra {

namespace {

bool HasFile(const SCommandTarget& on) {
  return HasDocument(on) && !on.document->Path().empty();
}
bool HasRecentFiles(const SCommandTarget& on) {
  return !on.app.RecentFiles().Paths().empty();
}

void Exit(const SCommandTarget& on) {
  on.window.close();
}

const SCommandRow kFileRows[] = {
    {.id = ECommand::kFileNew,
     .name = "new",
     .text = "&New",
     .status = "Creates a new model\nNew",
     .key = "Ctrl+N",
     .has_icon = true,
     .run = WithFiles<&CFileCommands::New>},
    {.id = ECommand::kFileOpen,
     .name = "open",
     .text = "&Open...",
     .status = "Open an existing document\nOpen",
     .key = "Ctrl+O",
     .has_icon = true,
     .run = WithFiles<&CFileCommands::AskAndOpen>},
    {.id = ECommand::kFileClose,
     .name = "close",
     .text = "&Close",
     .status = "Close the active document\nClose",
     .key = "Ctrl+W",
     .when = HasDocument,
     .run = WithFiles<&CFileCommands::Close>},
    {.id = ECommand::kFileSave,
     .name = "save",
     .text = "&Save",
     .status = "Save the active document",
     .key = "Ctrl+S",
     .has_icon = true,
     .when = IfDocument<&CTarnDoc::CanSave>,
     .run = WithFiles<&CFileCommands::Save>},
    {.id = ECommand::kFileSaveAs,
     .name = "saveAs",
     .text = "Save &As...",
     .status = "Saves the active docmunet as an MTM model",
     .key = "Ctrl+Shift+S",
     .has_icon = true,
     .when = HasDocument,
     .run = WithFiles<&CFileCommands::SaveAs>},
    {.id = ECommand::kFileEditInArchive,
     .name = "editInArchive",
     .text = "E&dit in Its Archive",
     .status = "Lets a model that was opened from an archive be changed and saved back into it",
     .key = "Ctrl+Shift+E",
     .when = IfDocument<&CTarnDoc::CanEditInArchive>,
     .run = WithFiles<&CFileCommands::EditInArchive>},
    {.id = ECommand::kFileReload,
     .name = "reload",
     .text = "Re&load",
     .status = "Reads the active document anew from its file\nReload",
     .key = "F5",
     .when = HasFile,
     .run = WithFiles<&CFileCommands::Reload>},
    {.id = ECommand::kFileEarlierStates,
     .name = "earlierStates",
     .text = "&Earlier States...",
     .status = "Opens what the active document was before an earlier command",
     .when = IfDocument<&HasEarlierStates>,
     .run = WithFiles<&CFileCommands::EarlierStates>},
    {.id = ECommand::kFileRecover,
     .name = "recover",
     .text = "Reco&ver Documents...",
     .status = "Offers what was unsaved when the program ended unexpectedly",
     .run = WithFiles<&CFileCommands::Recover>},
    {.id = ECommand::kExportWavefront,
     .name = "exportWavefront",
     .text = "&Wavefront...",
     .status = "Saves active document as a Wavefront file",
     .when = HasDocument,
     .run = WithDocument<&ExportWavefront>},
    {.id = ECommand::kExport3ds,
     .name = "export3ds",
     .text = "&3ds File",
     .status = "Export model as an Autodesk 3D Studio File",
     .when = IfDocument<&CanExport3ds>,
     .run = WithDocument<&Export3ds>},
    {.id = ECommand::kExportVrml,
     .name = "exportVrml",
     .text = "&VRML",
     .status = "Saves active document as a VRML file",
     .when = HasDocument,
     .run = WithDocument<&ExportVrml>},
    {.id = ECommand::kFileTextureList,
     .name = "saveTextureList",
     .text = "Save &Texture List...",
     .status = "Saves current texture names within an LST file",
     .when = IfDocument<&CanSaveTextureList>,
     .run = WithDocument<&SaveTextureList>},
    {.id = ECommand::kFileRecent,
     .name = "recentFiles",
     .text = "&Recent Files",
     .status = "Open a document that was open before",
     .when = HasRecentFiles},
    {.id = ECommand::kFilePreferences,
     .name = "preferences",
     .text = "Pre&ferences...",
     .status = "Changes the settings of the program\nPreferences",
     .run = WithFiles<&CFileCommands::Preferences>},
    {.id = ECommand::kFileExit,
     .name = "exit",
     .text = "E&xit",
     .status = "Quit the application; prompts to save documents",
     .key = "Ctrl+Q",
     .run = Exit},
};

}  // namespace

std::span<const SCommandRow> FileCommands() {
  return kFileRows;
}

}  // namespace veldra

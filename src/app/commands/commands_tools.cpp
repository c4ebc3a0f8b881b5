#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"

namespace veldra {

namespace {

const SCommandRow kToolsRows[] = {
    {.id = ECommand::kImport3ds,
     .name = "import3ds",
     .text = "&3ds File",
     .status = "Import an Autodesk 3D Studio File",
     .run = WithTools<&CToolCommands::Import3ds>},
    {.id = ECommand::kImportWavefront,
     .name = "importWavefront",
     .text = "&Wavefront File...",
     .status = "Import WaveFront Model",
     .run = WithTools<&CToolCommands::ImportWavefront>},
    {.id = ECommand::kImportMeshes,
     .name = "importMeshes",
     .text = "Meshes with &Materials...",
     .status = "Import Wavefront, 3D Studio, glTF, PLY and STL files with their materials",
     .run = WithTools<&CToolCommands::ImportMeshes>},
    {.id = ECommand::kToolsTruckEditor,
     .name = "truckEditor",
     .text = "&Truck Editor...",
     .status = "Edit a truck file, and pack a truck with all that it needs\nTruck Editor",
     .run = WithTools<&CToolCommands::ShowTruckEditor>},
    {.id = ECommand::kToolsNewTruck,
     .name = "newTruck",
     .text = "&New Truck...",
     .status = "Make a truck step by step, from one that is there or from the sample\nNew Truck",
     .run = WithTools<&CToolCommands::NewTruck>},
    {.id = ECommand::kToolsExtractor,
     .name = "podExtractor",
     .text = "POD &Extractor...",
     .status = "Look into an archive and extract files from it\nPOD Extractor",
     .run = WithTools<&CToolCommands::ShowExtractor>},
    {.id = ECommand::kToolsCreator,
     .name = "podCreator",
     .text = "POD &Creator...",
     .status = "Put files into a new archive\nPOD Creator",
     .run = WithTools<&CToolCommands::ShowCreator>},
    {.id = ECommand::kToolsStockList,
     .name = "stockList",
     .text = "&Build Stock-File List...",
     .status =
         "Make the list of files that every installation has, from the archives of an installed game\nStock-file list",
     .run = WithTools<&CToolCommands::BuildStockList>},
    {.id = ECommand::kToolsSetUp,
     .name = "setUp",
     .text = "&Set Up Again...",
     .status = "Say where the game is: folders, colour table and the list of its files follow from it\nSet Up Again",
     .run = WithFiles<&CFileCommands::SetUpAgain>},
};

}  // namespace

std::span<const SCommandRow> ToolCommands() {
  return kToolsRows;
}

}  // namespace veldra

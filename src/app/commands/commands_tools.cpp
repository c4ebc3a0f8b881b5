#include "app/commands/commandrows.h"
#include "app/toolcommands.h"

namespace veldra {

namespace {

const SCommandRow kRows[] = {
    {.id = ECommand::kImport3ds,
     .name = "import3ds",
     .text = "&3ds File...",
     .status = "Import an Autodesk 3D Studio File",
     .handler = &CToolCommands::Import3ds},
    {.id = ECommand::kImportWavefront,
     .name = "importWavefront",
     .text = "&Wavefront File...",
     .status = "Import WaveFront Model",
     .handler = &CToolCommands::ImportWavefront},
    {.id = ECommand::kToolsTruckEditor,
     .name = "truckEditor",
     .text = "&Truck Editor...",
     .status = "Edit a truck file, and pack a truck with all that it needs\nTruck Editor",
     .handler = &CToolCommands::ShowTruckEditor},
    {.id = ECommand::kToolsExtractor,
     .name = "podExtractor",
     .text = "POD &Extractor...",
     .status = "Look into an archive and extract files from it\nPOD Extractor",
     .handler = &CToolCommands::ShowExtractor},
    {.id = ECommand::kToolsCreator,
     .name = "podCreator",
     .text = "POD &Creator...",
     .status = "Put files into a new archive\nPOD Creator",
     .handler = &CToolCommands::ShowCreator},
    {.id = ECommand::kToolsStockList,
     .name = "stockList",
     .text = "&Build stock-file list...",
     .status =
         "Make the list of files that every installation has, from the archives of an installed game\nStock-file list",
     .handler = &CToolCommands::BuildStockList},
};

}  // namespace

std::span<const SCommandRow> ToolCommands() {
  return kRows;
}

}  // namespace veldra

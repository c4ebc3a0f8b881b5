#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"

namespace veldra {

namespace {

/// While a view is seen alone, no tool window can be opened beside it.
bool CanToggle(const SCommandTarget& on) {
  return !on.docks.AreAway();
}

template <EToolDock kDock>
bool IsOpen(const SCommandTarget& on) {
  return on.docks.IsOpen(kDock);
}

const SCommandRow kDocksRows[] = {
    {.id = ECommand::kDockModelTree,
     .name = "modelTree",
     .text = "&Model Tree",
     .status = "Show or hide the tree of faces, vertices, textures and groups\nModel Tree",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kModelTree>,
     .run = WithDocks<&CToolDocks::ToggleModelTree>},
    {.id = ECommand::kDockTextureList,
     .name = "textureList",
     .text = "Texture &List",
     .status = "Show or hide the list of textures\nTexture List",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kTextureList>,
     .run = WithDocks<&CToolDocks::ToggleTextureList>},
    {.id = ECommand::kDockCurrentFace,
     .name = "currentFace",
     .text = "Current &Face",
     .status = "Show or hide the details of the current face\nCurrent Face",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kCurrentFace>,
     .run = WithDocks<&CToolDocks::ToggleCurrentFace>},
    {.id = ECommand::kDockVertexStatus,
     .name = "vertexStatus",
     .text = "Current &Vertex",
     .status = "Show or hide the coordinates of the current vertex\nCurrent Vertex",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kVertexStatus>,
     .run = WithDocks<&CToolDocks::ToggleVertexStatus>},
    {.id = ECommand::kDockModelInfo,
     .name = "modelInfoDock",
     .text = "Model &Information",
     .status = "Show or hide the model information text\nModel Information",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kModelInfo>,
     .run = WithDocks<&CToolDocks::ToggleModelInfo>},
    {.id = ECommand::kDockMapping,
     .name = "mappingDock",
     .text = "Texture Ma&pping",
     .status = "Show or hide the mapping editor\nTexture Mapping",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kMapping>,
     .run = WithDocks<&CToolDocks::ToggleMapping>},
    {.id = ECommand::kDockMappingTools,
     .name = "mappingToolsDock",
     .text = "Mapping &Tools",
     .status = "Show or hide the tools of the mapping editor\nMapping Tools",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kMappingTools>,
     .run = WithDocks<&CToolDocks::ToggleMappingTools>},
    {.id = ECommand::kDockTextureBrowser,
     .name = "textureBrowserDock",
     .text = "Texture &Browser",
     .status = "Show or hide the texture browser\nTexture Browser",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kTextureBrowser>,
     .run = WithDocks<&CToolDocks::ToggleTextureBrowser>},
    {.id = ECommand::kDockProblems,
     .name = "problems",
     .text = "P&roblems",
     .status = "Show or hide what is wrong with the model, or may become so in the game, with mends\nProblems",
     .when = CanToggle,
     .checked = IsOpen<EToolDock::kProblems>,
     .run = WithDocks<&CToolDocks::ToggleProblems>},
};

}  // namespace

std::span<const SCommandRow> DockCommands() {
  return kDocksRows;
}

}  // namespace veldra

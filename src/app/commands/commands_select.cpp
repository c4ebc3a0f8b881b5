#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "editing/selectcommands.h"

namespace veldra {

namespace {

constexpr const char* kNeedsFace = "Select a face first, or make one the current one";

const SCommandRow kSelectRows[] = {
    {.id = ECommand::kSelectLinked,
     .name = "selectLinked",
     .text = "&Linked",
     .status = "Selects everything that hangs together with the selection\nSelect Linked",
     .view_key = "L",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectAround>,
     .run = WithCursor<&SelectLinked>},
    {.id = ECommand::kSelectGrow,
     .name = "selectGrow",
     .text = "&Grow",
     .status = "Selects what touches the selection, too\nGrow Selection",
     .view_key = "M",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectAround>,
     .run = WithCursor<&GrowSelection>},
    {.id = ECommand::kSelectShrink,
     .name = "selectShrink",
     .text = "Shrin&k",
     .status = "Takes the rim of the selection away\nShrink Selection",
     .view_key = "Shift+M",
     .when = IfCursor<CanShrinkSelection>,
     .run = WithCursor<&ShrinkSelection>},
    {.id = ECommand::kSelectSameTexture,
     .name = "selectSameTexture",
     .text = "Same T&exture",
     .status = "Selects all faces with the textures of the selected ones\nSelect Same Texture",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectFrom>,
     .run = WithCursor<&SelectSame, ESame::kTexture>},
    {.id = ECommand::kSelectSameType,
     .name = "selectSameType",
     .text = "Same &Type",
     .status = "Selects all faces of the types of the selected ones\nSelect Same Type",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectFrom>,
     .run = WithCursor<&SelectSame, ESame::kType>},
    {.id = ECommand::kSelectSameGroup,
     .name = "selectSameGroup",
     .text = "Same Gr&oup",
     .status = "Selects all faces of the groups that the selected ones are in\nSelect Same Group",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectFrom>,
     .run = WithCursor<&SelectSame, ESame::kGroup>},
    {.id = ECommand::kSelectSameFacing,
     .name = "selectSameFacing",
     .text = "Same &Facing",
     .status = "Selects all faces that look where the current one looks, up to 5 degrees\nSelect Same Facing",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectFrom>,
     .run = WithCursor<&SelectSame, ESame::kFacing>},
    {.id = ECommand::kSelectSameSize,
     .name = "selectSameSize",
     .text = "Similar &Size",
     .status = "Selects all faces whose area is that of the current one, up to a tenth\nSelect Similar Size",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectFrom>,
     .run = WithCursor<&SelectSame, ESame::kSize>},
    {.id = ECommand::kSelectLoop,
     .name = "selectLoop",
     .text = "&Quad Loop",
     .status =
         "Selects the quads in line with the current one, over the edge behind the current vertex\nSelect Quad Loop",
     .view_key = "K",
     .needs = "Make a quad the current face first",
     .when = IfCursor<CanSelectLoop>,
     .run = WithCursor<&SelectQuadLoop, false>},
    {.id = ECommand::kSelectLoopAcross,
     .name = "selectLoopAcross",
     .text = "Quad Loop &Across",
     .status = "Selects the quads in line with the current one, the other way\nSelect Quad Loop Across",
     .view_key = "Shift+K",
     .needs = "Make a quad the current face first",
     .when = IfCursor<CanSelectLoop>,
     .run = WithCursor<&SelectQuadLoop, true>},
    {.id = ECommand::kSelectZoom,
     .name = "zoomToSelection",
     .text = "&Zoom To Selection",
     .status = "Shows what is selected as large as it goes\nZoom To Selection",
     .view_key = "C",
     .needs = kNeedsFace,
     .when = IfCursor<CanSelectAround>,
     .run = WithView<&CTarnView::ZoomToSelection>},
};

}  // namespace

std::span<const SCommandRow> SelectCommands() {
  return kSelectRows;
}

}  // namespace veldra

#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "editing/editfacedlg.h"
#include "editing/facecommands.h"
#include "editing/groupdlg.h"
#include "editing/groupfacesdlg.h"
#include "editing/vertexcommands.h"

namespace veldra {

namespace {

bool HasTags(const CEditCursor& cursor) {
  return !cursor.Tagged().empty();
}

void AskFacing(const SCommandTarget& on) {
  const SUnitNormal to_viewer = on.view->ToViewer();
  if (const auto input = on.dialogs.AskFacing(on.Model(), to_viewer, &on.window))
    SelectByFacing(on.Cursor(), *input, to_viewer);
}

void AskEditFace(const SCommandTarget& on) {
  CEditFaceDialog dialog(*on.Cursor().FaceObject(), &on.window);
  if (dialog.exec() == QDialog::Accepted) EditFace(on.Cursor(), dialog.Input());
}

void AskGroupFaces(const SCommandTarget& on) {
  CGroupFacesDialog dialog(on.Cursor(), &on.window);
  if (dialog.exec() == QDialog::Accepted) GroupFaces(on.Cursor(), dialog.Input());
}

void ShowFaceGroups(const SCommandTarget& on) {
  CGroupDialog(*on.document, EGroupKind::kFaces, &on.window).exec();
}

const SCommandRow kFaceRows[] = {
    {.id = ECommand::kFaceSelect,
     .name = "selectFace",
     .text = "&Select Current",
     .status = "Adds current face to the selection",
     .view_key = "F",
     .when = IfCursor<HasCurrentFace>,
     .run = WithCursor<&SelectCurrentFace>},
    {.id = ECommand::kFaceSelectAll,
     .name = "selectAllFaces",
     .text = "Select &All",
     .status = "Selects all faces",
     .view_key = "Ctrl+A",
     .when = IfCursor<HasFaces>,
     .run = WithModel<&CBinModel::SelectAll, EGroupKind::kFaces, true>},
    {.id = ECommand::kFaceDeselectAll,
     .name = "deselectAllFaces",
     .text = "&Deselect All",
     .status = "Deselects all faces",
     .view_key = "Ctrl+D",
     .when = IfCursor<HasSelectedFaces>,
     .run = WithModel<&CBinModel::SelectAll, EGroupKind::kFaces, false>},
    {.id = ECommand::kFaceInvert,
     .name = "invertFaces",
     .text = "&Invert Selection",
     .status = "Inverts the face selection",
     .view_key = "Ctrl+I",
     .when = IfCursor<HasFaces>,
     .run = WithModel<&CBinModel::InvertSelection, EGroupKind::kFaces>},
    {.id = ECommand::kFaceFacing,
     .name = "selectByFacing",
     .text = "Select By &Facing...",
     .status = "Selects the faces that look in a direction",
     .when = IfCursor<HasFaces>,
     .run = AskFacing},
    {.id = ECommand::kFaceCycle,
     .name = "cycleFaces",
     .text = "&Next",
     .status = "Cycles through all faces",
     .view_key = "Space",
     .when = IfCursor<HasFaces>,
     .run = WithCursor<&CEditCursor::CycleFaces, true>},
    {.id = ECommand::kFaceReverseCycle,
     .name = "reverseCycleFaces",
     .text = "&Previous",
     .status = "Reverse-cycles through all faces",
     .view_key = "Shift+Space",
     .when = IfCursor<HasFaces>,
     .run = WithCursor<&CEditCursor::CycleFaces, false>},
    {.id = ECommand::kFaceCycleSelected,
     .name = "cycleSelectedFaces",
     .text = "Next &Selected",
     .status = "Cycles through all selected faces",
     .view_key = "G",
     .when = IfCursor<HasSelectedFaces>,
     .run = WithCursor<&CEditCursor::CycleSelectedFaces, true>},
    {.id = ECommand::kFaceReverseCycleSelected,
     .name = "reverseCycleSelectedFaces",
     .text = "P&revious Selected",
     .status = "Reverse-cycles through all selected faces",
     .view_key = "Shift+G",
     .when = IfCursor<HasSelectedFaces>,
     .run = WithCursor<&CEditCursor::CycleSelectedFaces, false>},
    {.id = ECommand::kFaceNone,
     .name = "noCurrentFace",
     .text = "N&one",
     .status = "Sets the current face to -1",
     .view_key = "Home",
     .when = IfCursor<HasCurrentFace>,
     .run = WithCursor<&CEditCursor::SetFace, -1>},
    {.id = ECommand::kFaceEdit,
     .name = "editFace",
     .text = "&Edit Current Face...",
     .status = "Opens the dialog of the current face",
     .view_key = "Return",
     .when = IfCursor<CanEditFace>,
     .run = AskEditFace},
    {.id = ECommand::kFaceFlip,
     .name = "flipFaces",
     .text = "Fli&p",
     .status = "Turns the selected faces, or the current one, to look the other way",
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&FlipFaces>},
    {.id = ECommand::kFaceTag,
     .name = "tagVertex",
     .text = "Tag Current &Vertex",
     .status = "Tags the current vertex as the next corner of a new face, or takes its tag off",
     .view_key = "Ins",
     .when = IfCursor<CanEditVertex>,
     .run = WithCursor<&TagCurrentVertex>},
    {.id = ECommand::kFaceClearTags,
     .name = "clearTags",
     .text = "&Clear Tags",
     .status = "Takes the tags off all vertices",
     .when = IfCursor<HasTags>,
     .run = WithCursor<&ClearTags>},
    {.id = ECommand::kFaceMakeTagged,
     .name = "makeTaggedFace",
     .text = "&Make Face",
     .status = "Makes a face of three or four tagged vertices",
     .view_key = "Ctrl+Ins",
     .when = IfCursor<CanMakeTaggedFace>,
     .run = WithCursor<&MakeTaggedFace>},
    {.id = ECommand::kFaceGroupType,
     .name = "groupFaceType",
     .text = "&Group Face Type and Magic Number...",
     .status = "Sets face type and magic number of many faces",
     .when = IfCursor<CanGroupFaces>,
     .run = AskGroupFaces},
    {.id = ECommand::kFaceGroups,
     .name = "faceGroups",
     .text = "Face Gr&oups...",
     .status = "Opens the Face Groups dialog",
     .when = IfCursor<HasFaces>,
     .run = ShowFaceGroups},
    {.id = ECommand::kFaceDelete,
     .name = "deleteFace",
     .text = "Delete &Current",
     .status = "Deletes the current face",
     .view_key = "Ctrl+Del",
     .when = IfCursor<CanEditFace>,
     .run = WithCursor<&DeleteCurrentFace>},
    {.id = ECommand::kFaceDeleteSelected,
     .name = "deleteSelectedFaces",
     .text = "De&lete Selected",
     .status = "Deletes the selected faces",
     .view_key = "Del",
     .when = IfCursor<CanDeleteSelectedFaces>,
     .run = WithCursor<&DeleteSelectedFaces>},
};

}  // namespace

std::span<const SCommandRow> FaceCommands() {
  return kFaceRows;
}

}  // namespace veldra

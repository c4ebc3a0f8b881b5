#include <algorithm>
#include <cmath>

#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/insertshapedlg.h"
#include "editing/infodlg.h"
#include "editing/modelcommands.h"
#include "editing/pivotdlg.h"
#include "editing/shapecommands.h"

namespace veldra {

namespace {

bool Never(const SCommandTarget&) {
  return false;
}

void AskResize(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskResize(on.Model(), &on.window, on.Cursor().Vertex()))
    Resize(*on.document, *input);
}

void AskTranslate(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskTranslate(on.Model(), &on.window)) Translate(*on.document, *input);
}

void AskRotate(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskRotate(on.Model(), &on.window, on.Cursor().Vertex()))
    Rotate(*on.document, *input);
}

void AskMirror(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskMirror(on.Model(), &on.window, on.Cursor().Vertex()))
    Mirror(*on.document, *input);
}

void AskReplaceTexture(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskReplaceTexture(on.Model(), &on.window)) ReplaceTexture(*on.document, *input);
}

void AskAddFace(const SCommandTarget& on) {
  if (!CheckTextureLoaded(*on.document)) return;
  const auto input = on.dialogs.AskAddFace(on.Model(), &on.window);
  if (input && AddFace(*on.document, *input)) on.Cursor().SetFace(on.Model().FaceCount() - 1);
}

void AskAddVertex(const SCommandTarget& on) {
  const auto input = on.dialogs.AskAddVertex(&on.window);
  if (input && AddVertex(*on.document, *input)) on.Cursor().SetVertex(on.Model().VertexCount() - 1);
}

void AskMerge(const SCommandTarget& on) {
  if (const auto input = on.dialogs.AskMerge(on.Model(), &on.window)) MergeCloseVertices(*on.document, *input);
}

/// About a quarter of what is there, in round numbers; as the command line has it where nothing is.
SPoint UsualSize(const CBinModel& model) {
  constexpr int32_t kUsual = 100;
  const SBounds& bounds = model.Bounds();
  const int64_t largest = std::max({int64_t{bounds.max.x} - bounds.min.x, int64_t{bounds.max.y} - bounds.min.y,
                                    int64_t{bounds.max.z} - bounds.min.z});
  const auto side = static_cast<int32_t>(std::max<int64_t>(kUsual, largest / 4 / kUsual * kUsual));
  return model.VertexCount() == 0 ? SPoint{kUsual, kUsual, kUsual} : SPoint{side, side, side};
}

void AskInsertShape(const SCommandTarget& on) {
  auto& last = on.dialogs.Shape();
  SInsertShapeInput offered = last.value_or(SInsertShapeInput{
      .shape = {.size = UsualSize(on.Model())}, .type = static_cast<uint32_t>(on.app.Settings().def_face_type)});
  offered.texture = std::min(std::max(offered.texture, 0), on.Model().TextureCount() - 1);
  offered.shape.middle = PlaceForShape(on.Model(), on.view->MiddleOfView());
  const CStep step(*on.document, "Insert Shape");  // with the textures that are loaded for it
  CInsertShapeDialog dialog(*on.document, offered, &on.window);
  if (dialog.exec() != QDialog::Accepted) return;
  last = dialog.Input();
  const bool was_empty = on.Model().VertexCount() == 0;
  if (InsertShape(*on.document, *last) && was_empty) on.view->ZoomToFit();
}

void ShowInfo(const SCommandTarget& on) {
  CInfoDialog(on.Cursor(), &on.window).exec();
}

void JumpTo(const SCommandTarget& on) {
  on.dialogs.JumpTo(on.Cursor(), &on.window);
}

using EPivot = SPivotInput::EKind;

template <EPivot kKind>
bool IsPivot(const SCommandTarget& on) {
  return on.view != nullptr && on.windows.GizmoPivot().kind == kKind;
}

template <EPivot kKind>
void UsePivot(const SCommandTarget& on) {
  on.windows.SetGizmoPivot({.kind = kKind});
}

/// Starts where the gizmo is.
void AskPivot(const SCommandTarget& on) {
  CPivotDialog dialog(on.Model(), on.Cursor().Vertex(), on.view->GizmoPivotPoint(), &on.window);
  if (dialog.exec() == QDialog::Accepted) on.windows.SetGizmoPivot(dialog.Pivot());
}

/// There is a point, and it is not the origin already.
bool CanMoveOrigin(const SCommandTarget& on) {
  if (on.view == nullptr || !CanMoveVertices(*on.document)) return false;
  const CEditCursor& cursor = on.Cursor();
  const EPivot kind = on.windows.GizmoPivot().kind;
  if (kind == EPivot::kOrigin || kind == EPivot::kPoint) return kind == EPivot::kPoint;
  return (kind == EPivot::kVertex && cursor.Vertex() >= 0) || cursor.SelectedCount(EGroupKind::kFaces) > 0 ||
         cursor.SelectedCount(EGroupKind::kVertices) > 0;
}

/// A point that was picked or typed goes with the model.
void MoveOrigin(const SCommandTarget& on) {
  const Vector3 pivot = on.view->GizmoPivotPoint();
  const auto back = [&](size_t axis) { return static_cast<int32_t>(-std::lround(pivot[axis])); };
  if (!Translate(*on.document, {.x = back(0), .y = back(1), .z = back(2)})) return;
  if (on.windows.GizmoPivot().kind == EPivot::kPoint) UsePivot<EPivot::kOrigin>(on);
}

const SCommandRow kModelRows[] = {
    {.id = ECommand::kModelInfo,
     .name = "info",
     .text = "I&nfo...",
     .status = "Displays information about current model",
     .view_key = "I",
     .when = HasDocument,
     .run = ShowInfo},
    {.id = ECommand::kModelJump,
     .name = "jumpTo",
     .text = "&Jump To...",
     .status = "Opens the Jump To Face/Vertex dialog",
     .view_key = "J",
     .when = HasDocument,
     .run = JumpTo},
    {.id = ECommand::kModelCenterAll,
     .name = "centerAll",
     .text = "Center &All",
     .status = "Centers model relative to all axes",
     .when = IfDocument<&CTarnDoc::CanCenter>,
     .run = WithDocument<&CTarnDoc::CenterAll>},
    {.id = ECommand::kModelCenterX,
     .name = "centerX",
     .text = "Center &X",
     .status = "Centers model relative to the X axis",
     .when = IfDocument<&CTarnDoc::CanCenter>,
     .run = WithDocument<&CTarnDoc::CenterX>},
    {.id = ECommand::kModelCenterY,
     .name = "centerY",
     .text = "Center &Y",
     .status = "Centers model relative to the Y axis",
     .when = IfDocument<&CTarnDoc::CanCenter>,
     .run = WithDocument<&CTarnDoc::CenterY>},
    {.id = ECommand::kModelCenterZ,
     .name = "centerZ",
     .text = "Center &Z",
     .status = "Centers model relative to the Z axis",
     .when = IfDocument<&CTarnDoc::CanCenter>,
     .run = WithDocument<&CTarnDoc::CenterZ>},
    {.id = ECommand::kModelResize,
     .name = "resize",
     .text = "&Resize...",
     .status = "Opens the Resize Model dialog",
     .when = IfDocument<&CanResize>,
     .run = AskResize},
    {.id = ECommand::kModelTranslate,
     .name = "translate",
     .text = "&Translate...",
     .status = "Opens the Translate Model dialog",
     .when = IfDocument<&CanMoveVertices>,
     .run = AskTranslate},
    {.id = ECommand::kModelRotate,
     .name = "rotate",
     .text = "R&otate...",
     .status = "Opens the Rotate Model dialog",
     .when = IfDocument<&CanMoveVertices>,
     .run = AskRotate},
    {.id = ECommand::kModelMirror,
     .name = "mirror",
     .text = "&Mirror...",
     .status = "Mirror the model along the X, Y, and Z axes",
     .when = IfDocument<&CanMoveVertices>,
     .run = AskMirror},
    {.id = ECommand::kGizmoMiddle,
     .name = "gizmoMiddle",
     .text = "&Middle of Selection",
     .status = "The gizmo stands in the middle of what is selected\nGizmo In The Middle",
     .when = HasDocument,
     .checked = IsPivot<EPivot::kMiddle>,
     .is_choice = true,
     .run = UsePivot<EPivot::kMiddle>},
    {.id = ECommand::kGizmoOrigin,
     .name = "gizmoOrigin",
     .text = "&Origin",
     .status = "The gizmo stands at 0, 0, 0, whatever is selected\nGizmo At The Origin",
     .when = HasDocument,
     .checked = IsPivot<EPivot::kOrigin>,
     .is_choice = true,
     .run = UsePivot<EPivot::kOrigin>},
    {.id = ECommand::kGizmoVertex,
     .name = "gizmoVertex",
     .text = "Current &Vertex",
     .status = "The gizmo stands at the current vertex, whatever is selected\nGizmo At The Current Vertex",
     .when = HasDocument,
     .checked = IsPivot<EPivot::kVertex>,
     .is_choice = true,
     .run = UsePivot<EPivot::kVertex>},
    {.id = ECommand::kGizmoPick,
     .name = "gizmoPick",
     .text = "&Pick a Point",
     .status = "The next click says where the gizmo stands: on a vertex, or anywhere on a face\nPick Gizmo Point",
     .view_key = "Shift+O",
     .when = HasDocument,
     .checked = [](const SCommandTarget& on) { return on.view != nullptr && on.view->IsPickingPivot(); },
     .run = WithView<&CTarnView::TogglePickPivot>},
    {.id = ECommand::kGizmoPoint,
     .name = "gizmoPoint",
     .text = "&Type a Point...",
     .status = "Asks for the point at which the gizmo stands\nGizmo Point",
     .when = HasDocument,
     .checked = IsPivot<EPivot::kPoint>,
     .run = AskPivot},
    {.id = ECommand::kGizmoToOrigin,
     .name = "gizmoToOrigin",
     .text = "Make It the Model's O&rigin",
     .status = "Moves the whole model so that the point at which the gizmo stands is at 0, 0, 0\nGizmo To Origin",
     .needs = "Select something, or choose a point for the gizmo first",
     .when = CanMoveOrigin,
     .run = MoveOrigin},
    {.id = ECommand::kModelAddFace,
     .name = "addFace",
     .text = "Add &Face...",
     .status = "Opens the Add Face dialog",
     .when = IfDocument<&CanAddFace>,
     .run = AskAddFace},
    {.id = ECommand::kModelAddVertex,
     .name = "addVertex",
     .text = "Add &Vertex...",
     .status = "Opens the Add Vertex dialog",
     .when = IfDocument<&CanEditModel>,
     .run = AskAddVertex},
    {.id = ECommand::kModelDeleteUnused,
     .name = "deleteUnused",
     .text = "Delete All &Unused",
     .status = "Deletes all unused vertices",
     .when = IfDocument<&CTarnDoc::CanCenter>,
     .run = WithDocument<&CTarnDoc::DeleteAllUnused>},
    {.id = ECommand::kModelMerge,
     .name = "mergeVertices",
     .text = "Merge &Close Vertices...",
     .status = "Merges close vertices into one vertex",
     .when = IfDocument<&CanMoveVertices>,
     .run = AskMerge},
    {.id = ECommand::kModelReplaceTexture,
     .name = "replaceTexture",
     .text = "Re&place Texture...",
     .status = "Replace a currently loaded texture with another",
     .when = IfDocument<&CanReplaceTexture>,
     .run = AskReplaceTexture},
    {.id = ECommand::kInsertShape,
     .name = "insertShape",
     .text = "&Shape...",
     .status = "Inserts a generated shape into the active document\nInsert Shape",
     .key = "Ctrl+Shift+I",
     .when = IfDocument<&CanEditModel>,
     .run = AskInsertShape},
    {.id = ECommand::kInsertBin,
     .name = "insertBin",
     .text = "&BIN Model...",
     .status = "Inserts a bin model into the active document",
     .when = IfDocument<&CanEditModel>,
     .run = WithDocument<&InsertBin>},
    {.id = ECommand::kInsertGenericObject,
     .name = "insertGenericObject",
     .text = "&Generic Object...",
     .status = "Inserts a generic object into the active document",
     .when = Never},
};

}  // namespace

std::span<const SCommandRow> ModelCommands() {
  return kModelRows;
}

}  // namespace veldra

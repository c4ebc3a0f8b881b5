#include <algorithm>

#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "editing/facecommands.h"
#include "editing/makecommands.h"
#include "editing/modelcommands.h"
#include "editing/numberdlg.h"
#include "editing/vertexcommands.h"
#include "editing/vertexlistdlg.h"

namespace veldra {

namespace {

constexpr char kFlatten[] = "Flatten";
constexpr const char* kNeedsSomeFace = "Select a face first, or make one the current one";

void AskExtrude(const SCommandTarget& on) {
  CNumberDialog dialog("extrude", QObject::tr("Extrude"), QObject::tr("&Distance, in units:"),
                       QObject::tr("Faces go out along their normals, with a number below 0 inward."),
                       SNumberRule::Integer(), on.dialogs.ExtrudeDistance(), &on.window);
  if (dialog.exec() != QDialog::Accepted) return;
  on.dialogs.ExtrudeDistance() = dialog.Value();
  Extrude(on.Cursor(), dialog.Value());
}

void AskSnap(const SCommandTarget& on) {
  CNumberDialog dialog("snapToGrid", QObject::tr("Snap To Grid"), QObject::tr("&Multiples of:"),
                       QObject::tr("The coordinates of the selected vertices go to the nearest ones."),
                       SNumberRule::Integer(1), on.dialogs.SnapSpacing(), &on.window);
  if (dialog.exec() != QDialog::Accepted) return;
  on.dialogs.SnapSpacing() = dialog.Value();
  SnapSelected(on.Cursor(), dialog.Value());
}

void AskVertices(const SCommandTarget& on) {
  CVertexListDialog dialog(&on.window);
  if (dialog.exec() == QDialog::Accepted) AddVertices(on.Cursor(), dialog.Points());
}

void BridgeHere(const SCommandTarget& on) {
  Bridge(on.Cursor(), on.view->ToViewer());
}

void TunnelHere(const SCommandTarget& on) {
  Tunnel(on.Cursor(), on.view->ToViewer());
}

void MakeFaceHere(const SCommandTarget& on) {
  MakeFaceOfSelected(on.Cursor(), on.view->ToViewer());
}

template <EAxis kAxis>
void DuplicateMirrored(const SCommandTarget& on) {
  Duplicate(on.Cursor(), kAxis);
}

void DuplicateInPlace(const SCommandTarget& on) {
  Duplicate(on.Cursor(), std::nullopt);
}

const SCommandRow kMakeRows[] = {
    {.id = ECommand::kMakeFace,
     .name = "makeFace",
     .text = "&Face From Selected Vertices",
     .status = "Makes a face of the 3 or 4 selected vertices, as they were clicked, looking to the viewer\nMake Face",
     .view_key = "O",
     .needs = "Select 3 or 4 vertices first",
     .when = IfCursor<CanMakeFaceHere>,
     .run = MakeFaceHere},
    {.id = ECommand::kMakeBridge,
     .name = "bridge",
     .text = "&Bridge",
     .status = "Puts faces between two selected edges, or between two selected faces\nBridge",
     .view_key = "Shift+E",
     .needs = "Select both ends of two edges first, or two faces",
     .when = IfCursor<CanBridge>,
     .run = BridgeHere},
    {.id = ECommand::kMakeTunnel,
     .name = "tunnel",
     .text = "&Tunnel",
     .status = "Takes two walls of selected faces away and joins their rims\nTunnel",
     .needs = "Select the faces of two walls first",
     .when = IfCursor<CanTunnel>,
     .run = TunnelHere},
    {.id = ECommand::kMakeVertices,
     .name = "makeVertices",
     .text = "&Vertices From a List...",
     .status = "Adds vertices that are typed or pasted, one a line\nAdd Vertices",
     .when = IfDocument<&CanEditModel>,
     .run = AskVertices},
    {.id = ECommand::kMakeExtrude,
     .name = "extrude",
     .text = "&Extrude...",
     .status = "Moves the selected faces out and closes the gap with sides\nExtrude",
     .view_key = "E",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = AskExtrude},
    {.id = ECommand::kMakeDetach,
     .name = "detach",
     .text = "&Detach",
     .status = "Gives the selected faces vertices of their own\nDetach",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&Detach>},
    {.id = ECommand::kMakeDuplicate,
     .name = "duplicate",
     .text = "D&uplicate",
     .status = "Copies the selected faces, and selects the copies\nDuplicate",
     .view_key = "Shift+D",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = DuplicateInPlace},
    {.id = ECommand::kMakeDuplicateX,
     .name = "duplicateX",
     .text = "Along &X",
     .status = "Copies the selected faces to the other side of the model, left and right\nDuplicate Mirrored X",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = DuplicateMirrored<EAxis::kX>},
    {.id = ECommand::kMakeDuplicateY,
     .name = "duplicateY",
     .text = "Along &Y",
     .status = "Copies the selected faces to the other side of the model, above and below\nDuplicate Mirrored Y",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = DuplicateMirrored<EAxis::kY>},
    {.id = ECommand::kMakeDuplicateZ,
     .name = "duplicateZ",
     .text = "Along &Z",
     .status = "Copies the selected faces to the other side of the model, front and back\nDuplicate Mirrored Z",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = DuplicateMirrored<EAxis::kZ>},
    {.id = ECommand::kMakeSplitEdge,
     .name = "splitEdge",
     .text = "&Split Edge",
     .status = "Puts a vertex in the middle of the edge behind the current vertex\nSplit Edge",
     .needs = "The current vertex is not one of the current face's",
     .when = IfCursor<CanSplitEdge>,
     .run = WithCursor<&SplitCurrentEdge>},
    {.id = ECommand::kMakeSplitQuads,
     .name = "splitQuads",
     .text = "Split &Quads",
     .status = "Cuts the selected quads into triangles\nSplit Quads",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&SplitFaces>},
    {.id = ECommand::kMakeJoin,
     .name = "joinTriangles",
     .text = "&Join Triangles",
     .status = "Makes flat quads of the selected triangles\nJoin Triangles",
     .needs = kNeedsSomeFace,
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&JoinFaces>},
    {.id = ECommand::kMakeFlatten,
     .name = "flatten",
     .text = "F&latten...",
     .status = "Moves the selected vertices, or those of the selected faces, into one plane\nFlatten",
     .view_key = "Shift+L",
     .needs = "Select vertices or faces first",
     .when = IfCursor<CanFlatten>,
     .run = AskPlane<kFlatten>},
    {.id = ECommand::kMakeSnap,
     .name = "snapToGrid",
     .text = "S&nap To Grid...",
     .status = "Moves the selected vertices to multiples of a number\nSnap To Grid",
     .needs = "Select vertices first",
     .when = IfCursor<CanEditSelectedVertices>,
     .run = AskSnap},
};

}  // namespace

std::span<const SCommandRow> MakeCommands() {
  return kMakeRows;
}

}  // namespace veldra

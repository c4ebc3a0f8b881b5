#include "view/editcommands.h"

#include <QApplication>
#include <QStatusTipEvent>
#include <cmath>

#include "editing/animationdlg.h"
#include "editing/binmapperdlg.h"
#include "editing/editfacedlg.h"
#include "editing/facingdlg.h"
#include "editing/groupdlg.h"
#include "editing/groupfacesdlg.h"
#include "editing/infodlg.h"
#include "editing/jumpdlg.h"
#include "editing/normalizedlg.h"
#include "editing/planedlg.h"
#include "editing/texturecommands.h"
#include "editing/vertexcoordinatesdlg.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

constexpr EGroupKind kFaces = EGroupKind::kFaces;
constexpr EGroupKind kVertices = EGroupKind::kVertices;

/// From the middle of what VIEW shows.
SUnitNormal ToViewer(const CTarnView& view) {
  const SBounds& bounds = view.Document().Model().Bounds();
  const auto middle = [](int32_t low, int32_t high) {
    return static_cast<int32_t>((int64_t{low} + int64_t{high}) / 2);
  };
  const auto [x, y, z] = view.Camera().TowardViewer(
      {middle(bounds.min.x, bounds.max.x), middle(bounds.min.y, bounds.max.y), middle(bounds.min.z, bounds.max.z)});
  const double length = std::sqrt(x * x + y * y + z * z);
  return length > 0.0 ? SUnitNormal{x / length, y / length, z / length} : SUnitNormal{0, 0, 1};
}

}  // namespace

CEditCursor& CEditCommands::Cursor() const {
  return view_.Cursor();
}

CBinModel& CEditCommands::Model() const {
  return view_.Document().Model();
}

/// In the status bar of the window that the view is in.
void CEditCommands::Say(const QString& text) const {
  QStatusTipEvent event(text);
  QApplication::sendEvent(&view_, &event);
}

// --- Faces ---------------------------------------------------------------------------------------------------------

void CEditCommands::SelectFace() {
  SelectCurrentFace(Cursor());
}

void CEditCommands::SelectAllFaces() {
  Model().SelectAll(kFaces, true);
}

void CEditCommands::DeselectAllFaces() {
  Model().SelectAll(kFaces, false);
}

void CEditCommands::InvertFaceSelection() {
  Model().InvertSelection(kFaces);
}

void CEditCommands::SelectByFacing() {
  const SUnitNormal to_viewer = ToViewer(view_);
  CFacingDialog dialog(Model(), facing_, to_viewer, &view_);
  if (dialog.exec() != QDialog::Accepted) return;
  facing_ = dialog.Input();
  const int32_t found = veldra::SelectByFacing(Cursor(), facing_, to_viewer);
  Say(QObject::tr("%L1 faces look that way").arg(found));
}

void CEditCommands::CycleFaces() {
  Cursor().CycleFaces(true);
}

void CEditCommands::ReverseCycleFaces() {
  Cursor().CycleFaces(false);
}

void CEditCommands::CycleSelectedFaces() {
  Cursor().CycleSelectedFaces(true);
}

void CEditCommands::ReverseCycleSelectedFaces() {
  Cursor().CycleSelectedFaces(false);
}

void CEditCommands::NoCurrentFace() {
  Cursor().SetFace(-1);
}

void CEditCommands::JumpTo() {
  CJumpDialog dialog(Cursor(), jump_, &view_);
  if (dialog.exec() != QDialog::Accepted) return;
  jump_ = dialog.Kind();
  if (jump_ == kFaces) {
    Cursor().SetFace(dialog.Index());
  } else {
    Cursor().SetVertex(dialog.Index());
  }
}

void CEditCommands::EditFace() {
  if (!CanEditFace(Cursor())) return;
  CEditFaceDialog dialog(*Cursor().FaceObject(), &view_);
  if (dialog.exec() == QDialog::Accepted) veldra::EditFace(Cursor(), dialog.Input());
}

void CEditCommands::FlipFaces() {
  veldra::FlipFaces(Cursor());
}

void CEditCommands::DeleteFace() {
  DeleteCurrentFace(Cursor());
}

void CEditCommands::DeleteSelectedFaces() {
  veldra::DeleteSelectedFaces(Cursor());
}

void CEditCommands::TagVertex() {
  if (!CanEditVertex(Cursor())) return;
  if (TagCurrentVertex(Cursor())) {
    SayOfTags();
  } else {
    Say(QObject::tr("Four vertices are tagged already"));
  }
}

void CEditCommands::SayOfTags() const {
  QStringList tagged;
  for (const int32_t vertex : Cursor().Tagged())
    tagged.append(QString::number(vertex));
  Say(tagged.isEmpty() ? QObject::tr("No vertex is tagged") : QObject::tr("Tagged: %1").arg(tagged.join(", ")));
}

void CEditCommands::ClearTags() {
  Cursor().ClearTags();
  SayOfTags();
}

void CEditCommands::MakeTaggedFace() {
  if (veldra::MakeTaggedFace(Cursor())) Say(QObject::tr("Made face %1").arg(Cursor().Face()));
}

void CEditCommands::GroupFaceType() {
  if (!CanGroupFaces(Cursor())) return;
  CGroupFacesDialog dialog(Cursor(), &view_);
  if (dialog.exec() == QDialog::Accepted) GroupFaces(Cursor(), dialog.Input());
}

void CEditCommands::FaceGroups() {
  ShowGroups(kFaces);
}

void CEditCommands::ShowGroups(EGroupKind kind) {
  CGroupDialog(view_.Document(), kind, &view_).exec();
}

// --- Vertices ------------------------------------------------------------------------------------------------------

void CEditCommands::SelectVertex() {
  SelectCurrentVertex(Cursor());
}

void CEditCommands::SelectAllVertices() {
  Model().SelectAll(kVertices, true);
}

void CEditCommands::DeselectAllVertices() {
  Model().SelectAll(kVertices, false);
}

void CEditCommands::InvertVertexSelection() {
  Model().InvertSelection(kVertices);
}

void CEditCommands::CycleVertices() {
  Cursor().CycleVertices(true);
}

void CEditCommands::ReverseCycleVertices() {
  Cursor().CycleVertices(false);
}

void CEditCommands::CycleSelectedVertices() {
  Cursor().CycleSelectedVertices(true);
}

void CEditCommands::ReverseCycleSelectedVertices() {
  Cursor().CycleSelectedVertices(false);
}

void CEditCommands::CycleFaceVertices() {
  Cursor().CycleCorners(true);
}

void CEditCommands::ReverseCycleFaceVertices() {
  Cursor().CycleCorners(false);
}

void CEditCommands::FirstFaceVertex() {
  Cursor().FirstCorner();
}

void CEditCommands::LastFaceVertex() {
  Cursor().LastCorner();
}

void CEditCommands::NoCurrentVertex() {
  Cursor().SetVertex(-1);
}

void CEditCommands::SetVertexCoordinates() {
  if (!CanEditVertex(Cursor())) return;
  CVertexCoordinatesDialog dialog(*Cursor().VertexObject(), &view_);
  if (dialog.exec() == QDialog::Accepted) veldra::SetVertexCoordinates(Cursor(), dialog.Position());
}

void CEditCommands::SetToPlane() {
  if (!CanEditSelectedVertices(Cursor())) return;
  CPlaneDialog dialog(Cursor(), plane_, &view_);
  if (dialog.exec() != QDialog::Accepted) return;
  plane_ = dialog.Input();
  veldra::SetToPlane(Cursor(), plane_);
}

void CEditCommands::DeleteVertex() {
  DeleteCurrentVertex(Cursor());
}

void CEditCommands::DeleteSelectedVertices() {
  veldra::DeleteSelectedVertices(Cursor());
}

void CEditCommands::VertexGroups() {
  ShowGroups(kVertices);
}

void CEditCommands::MoveVertexX() {
  MoveCurrentVertex(Cursor(), EAxis::kX, true);
}

void CEditCommands::MoveVertexY() {
  MoveCurrentVertex(Cursor(), EAxis::kY, true);
}

void CEditCommands::MoveVertexZ() {
  MoveCurrentVertex(Cursor(), EAxis::kZ, true);
}

void CEditCommands::ReverseMoveVertexX() {
  MoveCurrentVertex(Cursor(), EAxis::kX, false);
}

void CEditCommands::ReverseMoveVertexY() {
  MoveCurrentVertex(Cursor(), EAxis::kY, false);
}

void CEditCommands::ReverseMoveVertexZ() {
  MoveCurrentVertex(Cursor(), EAxis::kZ, false);
}

void CEditCommands::MoveSelectionX() {
  MoveSelectedVertices(Cursor(), EAxis::kX, true);
}

void CEditCommands::MoveSelectionY() {
  MoveSelectedVertices(Cursor(), EAxis::kY, true);
}

void CEditCommands::MoveSelectionZ() {
  MoveSelectedVertices(Cursor(), EAxis::kZ, true);
}

void CEditCommands::ReverseMoveSelectionX() {
  MoveSelectedVertices(Cursor(), EAxis::kX, false);
}

void CEditCommands::ReverseMoveSelectionY() {
  MoveSelectedVertices(Cursor(), EAxis::kY, false);
}

void CEditCommands::ReverseMoveSelectionZ() {
  MoveSelectedVertices(Cursor(), EAxis::kZ, false);
}

// --- Textures ------------------------------------------------------------------------------------------------------

void CEditCommands::OpenBinMapper() {
  if (CanMapTexture(Cursor())) CBinMapperDialog(Cursor(), &view_).exec();
}

void CEditCommands::NormalizeTexture() {
  if (!CanNormalizeTexture(Cursor())) return;
  CNormalizeDialog dialog(Cursor(), &view_);
  if (dialog.exec() == QDialog::Accepted) veldra::NormalizeTexture(Cursor(), Model().Texture(dialog.Texture()));
}

void CEditCommands::OffsetU() {
  OffsetCorner(Cursor(), ETextureAxis::kU, true);
}

void CEditCommands::OffsetV() {
  OffsetCorner(Cursor(), ETextureAxis::kV, true);
}

void CEditCommands::ReverseOffsetU() {
  OffsetCorner(Cursor(), ETextureAxis::kU, false);
}

void CEditCommands::ReverseOffsetV() {
  OffsetCorner(Cursor(), ETextureAxis::kV, false);
}

void CEditCommands::FlipTextureX() {
  FlipTexture(Cursor(), ETextureAxis::kU);
}

void CEditCommands::FlipTextureY() {
  FlipTexture(Cursor(), ETextureAxis::kV);
}

void CEditCommands::RotateTexture() {
  veldra::RotateTexture(Cursor());
}

void CEditCommands::LoadTexture() {
  LoadTextures(view_.Document());
}

void CEditCommands::DefineAnimation() {
  if (!CanDefineAnimation(Cursor())) return;
  const CBinFace* const face = Cursor().FaceObject();
  CAnimationDialog dialog(view_.Document(), face == nullptr ? nullptr : face->Texture(), &view_);
  if (dialog.exec() == QDialog::Accepted) veldra::DefineAnimation(view_.Document(), dialog.Input(), dialog.Edited());
}

// --- The model and the view ----------------------------------------------------------------------------------------

void CEditCommands::ShowInfo() {
  CInfoDialog(Cursor(), &view_).exec();
}

void CEditCommands::TurnUp() {
  view_.Turn({.screen_x = -view_.Document().Settings().rotate_step});
}

void CEditCommands::TurnDown() {
  view_.Turn({.screen_x = view_.Document().Settings().rotate_step});
}

void CEditCommands::TurnLeft() {
  view_.Turn({.model_y = -view_.Document().Settings().rotate_step});
}

void CEditCommands::TurnRight() {
  view_.Turn({.model_y = view_.Document().Settings().rotate_step});
}

void CEditCommands::TurnPageUp() {
  view_.Turn({.screen_z = view_.Document().Settings().rotate_step});
}

void CEditCommands::TurnPageDown() {
  view_.Turn({.screen_z = -view_.Document().Settings().rotate_step});
}

}  // namespace veldra

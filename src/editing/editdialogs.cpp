#include "editing/editdialogs.h"

#include "editing/addfacedlg.h"
#include "editing/addvertexdlg.h"
#include "editing/facingdlg.h"
#include "editing/jumpdlg.h"
#include "editing/mergedlg.h"
#include "editing/mirrordlg.h"
#include "editing/planedlg.h"
#include "editing/replacetexturedlg.h"
#include "editing/resizedlg.h"
#include "editing/rotatedlg.h"
#include "editing/translatedlg.h"

namespace veldra {

namespace {

/// What DIALOG was left with, kept in LAST.
template <typename Dialog, typename Input>
std::optional<Input> Run(Dialog&& dialog, Input& last) {
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  last = dialog.Input();
  return last;
}

}  // namespace

std::optional<SResizeInput> CEditDialogs::AskResize(const CBinModel& model, QWidget* parent, int32_t vertex) {
  return Run(CResizeDialog(model, vertex, resize_, parent), resize_);
}

std::optional<STranslateInput> CEditDialogs::AskTranslate(const CBinModel& model, QWidget* parent) {
  return Run(CTranslateDialog(model, translate_, parent), translate_);
}

std::optional<SRotateInput> CEditDialogs::AskRotate(const CBinModel& model, QWidget* parent, int32_t vertex) {
  return Run(CRotateDialog(model, vertex, rotate_, parent), rotate_);
}

std::optional<SMirrorInput> CEditDialogs::AskMirror(const CBinModel& model, QWidget* parent, int32_t vertex) {
  return Run(CMirrorDialog(model, vertex, mirror_, parent), mirror_);
}

std::optional<SAddFaceInput> CEditDialogs::AskAddFace(const CBinModel& model, QWidget* parent) {
  SAddFaceInput last = add_face_.value_or(SAddFaceInput{.type = static_cast<uint32_t>(settings_.def_face_type)});
  const auto input = Run(CAddFaceDialog(model, last, parent), last);
  if (input) add_face_ = input;
  return input;
}

std::optional<SAddVertexInput> CEditDialogs::AskAddVertex(QWidget* parent) {
  return Run(CAddVertexDialog(add_vertex_, parent), add_vertex_);
}

std::optional<SMergeInput> CEditDialogs::AskMerge(const CBinModel& model, QWidget* parent) {
  return Run(CMergeDialog(model, merge_, parent), merge_);
}

std::optional<SReplaceTextureInput> CEditDialogs::AskReplaceTexture(const CBinModel& model, QWidget* parent) {
  return Run(CReplaceTextureDialog(model, settings_, replace_texture_, parent), replace_texture_);
}

std::optional<SFacingInput> CEditDialogs::AskFacing(const CBinModel& model, const SUnitNormal& to_viewer,
                                                    QWidget* parent) {
  return Run(CFacingDialog(model, facing_, to_viewer, parent), facing_);
}

std::optional<SPlaneInput> CEditDialogs::AskPlane(const CEditCursor& cursor, const char* title, QWidget* parent) {
  return Run(CPlaneDialog(cursor, title, plane_, parent), plane_);
}

void CEditDialogs::JumpTo(CEditCursor& cursor, QWidget* parent) {
  CJumpDialog dialog(cursor, jump_, parent);
  if (dialog.exec() != QDialog::Accepted) return;
  jump_ = dialog.Kind();
  jump_ == EGroupKind::kFaces ? cursor.SetFace(dialog.Index()) : cursor.SetVertex(dialog.Index());
}

}  // namespace veldra

#include "editing/modeldialogs.h"

#include "editing/addfacedlg.h"
#include "editing/addvertexdlg.h"
#include "editing/mergedlg.h"
#include "editing/mirrordlg.h"
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

std::optional<SResizeInput> CModelDialogs::AskResize(const CBinModel& model, QWidget* parent) {
  return Run(CResizeDialog(model, resize_, parent), resize_);
}

std::optional<STranslateInput> CModelDialogs::AskTranslate(const CBinModel& model, QWidget* parent) {
  return Run(CTranslateDialog(model, translate_, parent), translate_);
}

std::optional<SRotateInput> CModelDialogs::AskRotate(const CBinModel& model, QWidget* parent) {
  return Run(CRotateDialog(model, rotate_, parent), rotate_);
}

std::optional<SMirrorInput> CModelDialogs::AskMirror(const CBinModel& model, QWidget* parent) {
  return Run(CMirrorDialog(model, mirror_, parent), mirror_);
}

std::optional<SAddFaceInput> CModelDialogs::AskAddFace(const CBinModel& model, QWidget* parent) {
  SAddFaceInput last = add_face_.value_or(SAddFaceInput{.type = static_cast<uint32_t>(settings_.def_face_type)});
  const auto input = Run(CAddFaceDialog(model, last, parent), last);
  if (input) add_face_ = input;
  return input;
}

std::optional<SAddVertexInput> CModelDialogs::AskAddVertex(QWidget* parent) {
  return Run(CAddVertexDialog(add_vertex_, parent), add_vertex_);
}

std::optional<SMergeInput> CModelDialogs::AskMerge(const CBinModel& model, QWidget* parent) {
  return Run(CMergeDialog(model, merge_, parent), merge_);
}

std::optional<SReplaceTextureInput> CModelDialogs::AskReplaceTexture(const CBinModel& model, QWidget* parent) {
  return Run(CReplaceTextureDialog(model, settings_, replace_texture_, parent), replace_texture_);
}

}  // namespace veldra

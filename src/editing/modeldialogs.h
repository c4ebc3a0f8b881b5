#pragma once

#include <QWidget>
#include <optional>

#include "document/commandinputs.h"
#include "settings/settings.h"

namespace veldra {

/// The dialogs of the commands on a whole model. Each comes back with what was entered last, as long as this lives;
/// nothing when the dialog was cancelled.
class CModelDialogs {
 public:
  explicit CModelDialogs(const CSettings& settings) : settings_(settings) {}

  std::optional<SResizeInput> AskResize(const CBinModel& model, QWidget* parent);
  std::optional<STranslateInput> AskTranslate(const CBinModel& model, QWidget* parent);
  std::optional<SRotateInput> AskRotate(const CBinModel& model, QWidget* parent);
  std::optional<SMirrorInput> AskMirror(const CBinModel& model, QWidget* parent);
  std::optional<SAddFaceInput> AskAddFace(const CBinModel& model, QWidget* parent);
  std::optional<SAddVertexInput> AskAddVertex(QWidget* parent);
  std::optional<SMergeInput> AskMerge(const CBinModel& model, QWidget* parent);
  std::optional<SReplaceTextureInput> AskReplaceTexture(const CBinModel& model, QWidget* parent);

 private:
  const CSettings& settings_;
  SResizeInput resize_;
  STranslateInput translate_;
  SRotateInput rotate_;
  SMirrorInput mirror_ = {.x = true};      ///< left becomes right: what is wanted most
  std::optional<SAddFaceInput> add_face_;  ///< the face type of the first one is a setting
  SAddVertexInput add_vertex_;
  SMergeInput merge_;
  SReplaceTextureInput replace_texture_;
};

}  // namespace veldra

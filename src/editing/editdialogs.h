#pragma once

#include <QWidget>
#include <optional>

#include "editing/commandinputs.h"
#include "editing/facecommands.h"
#include "editing/shapecommands.h"
#include "editing/vertexcommands.h"
#include "settings/settings.h"

namespace veldra {

/// The dialogs of commands that are asked for again and again. Each comes back with what was entered last, as long as
/// this lives; nothing when the dialog was cancelled.
class CEditDialogs {
 public:
  explicit CEditDialogs(const CSettings& settings) : settings_(settings) {}

  // VERTEX: the current one, -1 for none.
  std::optional<SResizeInput> AskResize(const CBinModel& model, QWidget* parent, int32_t vertex = -1);
  std::optional<STranslateInput> AskTranslate(const CBinModel& model, QWidget* parent);
  std::optional<SRotateInput> AskRotate(const CBinModel& model, QWidget* parent, int32_t vertex = -1);
  std::optional<SMirrorInput> AskMirror(const CBinModel& model, QWidget* parent, int32_t vertex = -1);
  std::optional<SAddFaceInput> AskAddFace(const CBinModel& model, QWidget* parent);
  std::optional<SAddVertexInput> AskAddVertex(QWidget* parent);
  std::optional<SMergeInput> AskMerge(const CBinModel& model, QWidget* parent);
  std::optional<SReplaceTextureInput> AskReplaceTexture(const CBinModel& model, QWidget* parent);
  /// TO_VIEWER: from the model's middle, of length 1.
  std::optional<SFacingInput> AskFacing(const CBinModel& model, const SUnitNormal& to_viewer, QWidget* parent);
  /// There are vertices to flatten.
  std::optional<SPlaneInput> AskPlane(const CEditCursor& cursor, const char* title, QWidget* parent);
  /// What was inserted last, for who asks for a shape.
  std::optional<SInsertShapeInput>& Shape() { return shape_; }
  int32_t& ExtrudeDistance() { return extrude_distance_; }
  int32_t& SnapSpacing() { return snap_spacing_; }
  /// The face or vertex that the user names becomes the current one.
  void JumpTo(CEditCursor& cursor, QWidget* parent);

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
  SFacingInput facing_;
  SPlaneInput plane_;
  std::optional<SInsertShapeInput> shape_;
  int32_t extrude_distance_ = 10;
  int32_t snap_spacing_ = 10;
  EGroupKind jump_ = EGroupKind::kFaces;
};

}  // namespace veldra

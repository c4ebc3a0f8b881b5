#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "render/displaylist.h"
#include "render/modelgeometry.h"
#include "render/viewcamera.h"

namespace veldra {

/// What a view makes stand out beside the model itself.
struct SMarks {
  bool selection = false;  ///< the model's selected faces and vertices
  int32_t face = -1;       ///< the current one, -1 for none; what lies outside the model is left out
  int32_t vertex = -1;
  std::vector<int32_t> tagged = {};  ///< vertices, in order
};

/// Draws marks over a model. Each differs from the others in shape, and has light and dark side by side, so that it
/// shows on any ground and to whoever does not see all colours: selected faces are hatched and outlined, selected
/// vertices rings; the current face has a broad dashed outline, thin where something hides it, the current vertex cross
/// hairs; tagged vertices have their number. The selection is handed to OpenGL once and again only when it changed.
class CHighlights {
 public:
  /// Into the coordinates of SPACE, which are loaded, after the model. STATE says how the model was drawn.
  void Draw(const CBinModel& model, const CModelSpace& space, const SViewState& state, const SMarks& marks,
            double pixel_ratio);
  /// On top of it all, in the window's own coordinates; changes the matrices.
  void DrawOverlay(const CBinModel& model, const CViewCamera& camera, const SMarks& marks, double pixel_ratio);

  int BuildCount() const { return build_count_; }
  /// What the last frame had OpenGL draw, in calls.
  int CallCount() const { return call_count_; }
  void Forget();

 private:
  void Follow(const CBinModel& model, const CModelSpace& space);
  void DrawSelectedFaces(const SViewState& state, float ratio);
  void DrawSelectedVertices(float ratio);
  void DrawCurrentFace(const CBinFace& face, const CModelSpace& space, float ratio);
  void Call(const CDisplayList& list);

  uint64_t model_ = 0;
  uint64_t revision_ = 0;
  uint64_t selection_revision_ = 0;
  CDisplayList fills_;
  CDisplayList outlines_;
  CDisplayList points_;
  int build_count_ = 0;
  int call_count_ = 0;
};

}  // namespace veldra

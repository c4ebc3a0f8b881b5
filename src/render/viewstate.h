#pragma once

#include <array>
#include <cstdint>

#include "model/binmodel.h"
#include "platform/vector3.h"
#include "settings/settings.h"

namespace veldra {

enum class ERenderMode : int32_t { kVertices = 0, kWireframe = 1, kSolid = 2, kTextured = 3 };

/// Turned about Z first, then Y, then X, in degrees: with Z 0 a model that stands upright stays so, seen from around it
/// (Y) and from above (X).
struct SRotation {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

/// How one view shows its model. Drawing depends on nothing else.
struct SViewState {
  static constexpr double kLargestZoom = 1000.0;

  ERenderMode mode = ERenderMode::kTextured;
  bool only_3d = false;  ///< the model alone: no grid, highlights or markers beside it
  bool axes = false;
  bool vertices = false;           ///< markers at the vertices; see ShowsMarkers
  bool vertex_numbers = false;     ///< the index of each vertex that can be seen, as far as there is room
  bool high_quality = true;        ///< textures filtered, else their nearest texel
  bool spherical_markers = false;  ///< vertex markers as spheres, else as points
  bool transparency = false;       ///< faces of the transparent types let near-black texels through
  bool follow_current_face = false;
  bool orthographic = false;  ///< without perspective
  bool grid = false;
  bool edges = false;           ///< drawn over filled faces
  bool select_through = false;  ///< what others hide from sight is picked, too
  bool gizmo = true;            ///< handles about what is selected
  SRotation rotation;
  double zoom = 1.0;         ///< 1 fits a ball of diameter `extent` about the centre into the smaller side
  double zoom_step = 0.125;  ///< what Zoom In and Zoom Out change; exact in binary, so that steps add up
  double extent = 1.0;       ///< model units
  double pan_x = 0.0;        ///< in parts of the smaller side of the window, to the right
  double pan_y = 0.0;        ///< up
  Vector3 center = {};       ///< the model point that the view turns about and, without pan, has in its middle
  SColor background;

  /// A new view's state. A render mode that does not exist becomes the textured one.
  static SViewState FromSettings(const CSettings& settings);

  /// Each vertex has a marker. A model without faces would not be seen otherwise.
  bool ShowsMarkers(const CBinModel& model) const;
  /// VERTEX of MODEL can be seen: by its marker or as a corner.
  bool Shows(const CBinModel& model, const CBinVertex& vertex) const;
  /// Faces are filled, and hide what is behind them.
  bool ShowsSurfaces() const { return mode == ERenderMode::kSolid || mode == ERenderMode::kTextured; }

  /// Sets the mode and nothing else, except that vertices only switches the vertex markers on.
  void ChooseMode(ERenderMode chosen);
  void ZoomIn() { zoom += zoom_step; }
  /// Never below one step.
  void ZoomOut();
  /// All within BOUNDS, whatever its rotation, at zoom 1, about their middle and without pan. The largest absolute
  /// value among the bounds as seen from there is not enough: the corners of a box lie farther out than its sides, so
  /// the extent is its diagonal.
  void ZoomToFit(const SBounds& bounds);
};

}  // namespace veldra

#pragma once

#include <cstdint>
#include <memory>

#include "model/binmodel.h"
#include "render/highlights.h"
#include "render/viewstate.h"

namespace veldra {

/// What a picture needs beside the view's state.
struct SFrame {
  int width = 0;  ///< pixels
  int height = 0;
  double seconds = 0.0;      ///< time of the animated textures, from 0
  double pixel_ratio = 1.0;  ///< lines and points are this many times as thick: 2 where pixels are half as large
  SMarks marks = {};
};

/// Draws a model into the current OpenGL context; knows neither windows nor Qt. The model's geometry and its textures
/// are handed to OpenGL once and again only when the model's revision says so, and where
/// vertices were moved only what is near them; a frame is then a few calls, whatever
/// the model's size. Screen, pictures of the command line and thumbnails are this one routine.
///
/// Positions are as in the model: x to the right, y up, z toward the viewer.
///
/// Faces are seen from both sides, the back darker. Textured: untextured faces in grey, shiny ones with a highlight,
/// transparent ones with holes when the state wants it. Spherical markers become points in models of more than
/// kMostSphericalMarkers vertices, which would cost too much.
class CModelRenderer {
 public:
  static constexpr int32_t kMostSphericalMarkers = 20000;

  CModelRenderer();
  /// The context that drew must be current, or ForgetContext called before.
  ~CModelRenderer();
  CModelRenderer(const CModelRenderer&) = delete;
  CModelRenderer& operator=(const CModelRenderer&) = delete;

  /// One frame, into what the context draws to; its alpha is 255 all over. OpenGL's state is left as it was found.
  void Draw(const CBinModel& model, const SViewState& state, const SFrame& frame);
  void Draw(const CBinModel& model, const SViewState& state, int width, int height, double seconds = 0.0) {
    Draw(model, state, {.width = width, .height = height, .seconds = seconds});
  }

  /// The OpenGL context is gone, with all that was built in it; the next Draw builds anew.
  void ForgetContext();

  /// How often geometry was handed over: once for each of faces, edges and markers that a revision is shown with.
  int BuildCount() const;
  /// How many faces were handed over so far to be filled. After a movement those near it.
  int64_t HandedFaces() const;
  /// How often a selection was handed over.
  int HighlightBuildCount() const;
  /// How many recorded or short arrays the last frame had OpenGL draw for the model and its highlights: one more for
  /// each thousand faces.
  int CallCount() const;

 private:
  struct SImpl;
  std::unique_ptr<SImpl> impl_;
};

}  // namespace veldra

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "render/viewcamera.h"

namespace veldra {

/// A face or a vertex that was picked.
struct SPick {
  EGroupKind kind = EGroupKind::kFaces;
  int32_t index = -1;
  bool operator==(const SPick&) const = default;
};

/// Pixels of a window, from its upper left corner; right and bottom lie outside.
struct SPixels {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
};

/// Finds what of a model shows at a place of a view, by drawing it there once more with numbers for colours. Only what
/// lies near the place is drawn; where everything lies in the window is kept as long as neither model nor camera
/// change.
///
/// The drawing goes to the lower left corner of what the current OpenGL context draws to, which must not be
/// multisampled: SidePixels(ratio) square for Pick, the rectangle for PickRectangle. OpenGL's state is left as it was
/// found, the pixels are not.
class CModelPicker {
 public:
  /// The side of what Pick looks at, in pixels.
  static int SidePixels(double pixel_ratio);

  /// What is nearest to the pixel X, Y. A vertex within a few pixels that can be seen comes before the face that is in
  /// front: one that has a marker, or is selected. Where faces are not filled, or the state selects through, they do
  /// not hide vertices.
  std::optional<SPick> Pick(const CBinModel& model, const SViewState& state, const CViewCamera& camera,
                            double pixel_ratio, int x, int y);
  /// All of KIND within RECTANGLE, ascending. Where faces are filled and not selected through: of faces that show
  /// there, and of vertices that no face hides; else all whose middle lies there.
  std::vector<int32_t> PickRectangle(const CBinModel& model, const SViewState& state, const CViewCamera& camera,
                                     EGroupKind kind, const SPixels& rectangle);

  /// What was done so far, to be compared by who cares for speed.
  struct SWork {
    int64_t placements = 0;  ///< models whose places in the window were found
    int64_t faces_drawn = 0;
    int64_t points_drawn = 0;
  };
  const SWork& Work() const { return work_; }

 private:
  /// Where a face reaches in the window.
  struct SReach {
    float left, top, right, bottom;
  };
  struct SPlace {
    float x, y, depth;
  };
  void Follow(const CBinModel& model, const CViewCamera& camera);
  static void StartDrawing(const CViewCamera& camera, const CModelSpace& space, const SPixels& region);
  void DrawFaces(const CBinModel& model, const SPixels& region);
  void DrawVertices(const CBinModel& model, const SPixels& region, bool selected_only);
  static std::vector<uint32_t> ReadNumbers(const SPixels& region);
  static std::vector<float> ReadDepths(const SPixels& region);
  std::vector<int32_t> FacesInside(const CBinModel& model, const SPixels& region, const std::vector<float>& depths,
                                   const std::vector<uint32_t>& numbers) const;
  std::vector<int32_t> VerticesInside(const CBinModel& model, const SPixels& region,
                                      const std::vector<float>& depths) const;
  SPlace MiddleOf(const CBinFace& face) const;

  uint64_t model_ = 0;
  uint64_t revision_ = 0;
  std::optional<CViewCamera> camera_;
  std::vector<SPlace> places_;   ///< of the vertices
  std::vector<SReach> reaches_;  ///< of the faces
  SWork work_;
};

}  // namespace veldra

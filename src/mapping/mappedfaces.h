#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "mapping/texel.h"
#include "model/binmodel.h"

namespace veldra {

/// What a click takes hold of.
enum class EMappingMode { kCorners, kFaces, kIslands };
/// What a click does with what was selected before.
enum class ESelect { kOnly, kAdd, kToggle };

/// Corners of neighbouring faces that move as one: those of one vertex of the model that lie on one texel, unless they
/// were taken apart.
struct SMappedPoint {
  STexel at;
  int32_t vertex = 0;  ///< of the model
  bool is_selected = false;
};

struct SMappedFace {
  int32_t index = 0;  ///< in the model
  int corners = 3;
  std::array<int32_t, 4> points = {};  ///< positions among the points
  int32_t island = 0;                  ///< faces that hang together by their points have the same
  bool is_selected = false;
};

/// The faces that are mapped together, on one texture, as points in texels. A copy: the model is read by Take and
/// written by Write.
class CMappedFaces {
 public:
  /// FACES of MODEL, ascending, all with a texture of WIDTH. What was selected before stays so where the corner is
  /// among them; when nothing is left of it, all is selected.
  void Take(const CBinModel& model, std::span<const int32_t> faces, int width);
  void Clear() { *this = {}; }

  bool Empty() const { return faces_.empty(); }
  int Width() const { return width_; }
  std::span<const SMappedFace> Faces() const { return faces_; }
  std::span<const SMappedPoint> Points() const { return points_; }
  int32_t IslandCount() const { return island_count_; }
  std::vector<int32_t> FaceIndices() const;
  /// The corners of FACE in order.
  std::vector<STexel> Outline(const SMappedFace& face) const;

  // --- Finding: positions among Points() or Faces() ---------------------------------------------------------------
  /// Within REACH texels of AT, the nearest first; of equal ones in order.
  std::vector<int32_t> PointsNear(const STexel& at, double reach) const;
  std::vector<int32_t> PointsIn(const STexelRect& area) const;
  /// Those that cover AT, the last drawn first.
  std::vector<int32_t> FacesAt(const STexel& at) const;
  /// Those of which something lies in AREA.
  std::vector<int32_t> FacesIn(const STexelRect& area) const;

  // --- Selection --------------------------------------------------------------------------------------------------
  void SelectPoints(std::span<const int32_t> points, ESelect how);
  /// Their points with them.
  void SelectFaces(std::span<const int32_t> faces, ESelect how);
  /// All faces of the islands that FACES belong to.
  void SelectIslands(std::span<const int32_t> faces, ESelect how);
  void SelectAll(bool is_selected);
  void InvertPoints();
  void InvertFaces();
  /// The points of exactly these vertices, or the faces with these indices in the model, ascending.
  void SelectVertices(std::span<const int32_t> vertices);
  void SelectModelFaces(std::span<const int32_t> faces);
  std::vector<int32_t> SelectedPoints() const;
  std::vector<int32_t> SelectedFaces() const;
  /// Of the model, ascending, each once.
  std::vector<int32_t> SelectedVertices() const;
  /// All points of the faces that have a selected one.
  std::vector<int32_t> PointsOfTouchedFaces() const;

  // --- Changing ---------------------------------------------------------------------------------------------------
  std::vector<STexel> PlacesOf(std::span<const int32_t> points) const;
  /// As many PLACES as POINTS.
  void Place(std::span<const int32_t> points, std::span<const STexel> places);
  /// Each corner of FACES (positions, ascending) comes to its own place: they no longer hang on the others.
  void PlaceCorners(std::span<const int32_t> faces, std::span<const std::array<STexel, 4>> places);
  /// The coordinates of the corners of POINTS, into the faces of MODEL, which is the one that was taken. The model has
  /// still to report it.
  void Write(CBinModel& model, std::span<const int32_t> points) const;
  /// What the model has at the corners of POINTS, to be given back to Restore.
  std::vector<STexCoord> Read(const CBinModel& model, std::span<const int32_t> points) const;
  void Restore(CBinModel& model, std::span<const int32_t> points, std::span<const STexCoord> coords) const;
  /// The selected faces no longer hang on the others; in the mode of corners each selected point becomes as many as it
  /// has corners. Until they are joined again or the model gets other faces.
  void TakeApart(EMappingMode mode);
  /// The corners of the selected points hang together again where they lie on one texel.
  void Join();
  /// Corners that have come to lie on one texel hang together.
  void Settle() { FindPoints(Placed()); }
  /// Nothing is taken apart any more.
  void ForgetCuts() { cuts_.clear(); }

 private:
  struct SCorner {
    int32_t face = 0;  ///< among faces_
    int corner = 0;
  };
  /// What the points are made of: a corner of a face.
  struct SPlaced {
    int32_t vertex = 0;
    STexel at;
    bool is_selected = false;
  };
  static int64_t Key(int32_t face, int corner) { return int64_t{face} * 4 + corner; }
  std::span<const SCorner> CornersOf(int32_t point) const;
  std::vector<SPlaced> Placed() const;
  void FindPoints(std::span<const SPlaced> placed);
  void ListCorners();
  void FindIslands();
  void SelectPointsOfFaces();
  void SelectFacesOfPoints();

  int width_ = 64;
  std::vector<SMappedFace> faces_;
  std::vector<SMappedPoint> points_;
  std::vector<SCorner> corners_;               ///< those of point 0, then those of point 1, and so on
  std::vector<size_t> first_;                  ///< of each point among corners_; one more at the end
  std::unordered_map<int64_t, int32_t> cuts_;  ///< by face and corner: those with different numbers stay apart
  int32_t last_cut_ = 0;
  int32_t island_count_ = 0;
};

}  // namespace veldra

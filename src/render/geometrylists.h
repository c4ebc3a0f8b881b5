#pragma once

#include <span>
#include <vector>

#include "render/displaylist.h"
#include "render/modelgeometry.h"

namespace veldra {

/// Faces that are drawn alike, recorded; all of them, or as many as one list takes.
struct SBatchList {
  const CBinTexture* texture = nullptr;
  EFaceLook look = EFaceLook::kUntextured;
  CDisplayList list;
};

/// A model's geometry as OpenGL keeps it, each part recorded when it is first asked for, in the coordinates of a
/// CModelSpace. It is cut into lists of no more than kPortion items, so that where vertices were moved only the lists
/// that they are in are recorded anew.
class CGeometryLists {
 public:
  static constexpr int32_t kPortion = 1024;

  /// Drops what was recorded of another model or revision; true when textures may have gone, too.
  bool Follow(const CBinModel& model);
  const CModelSpace& Space() const { return space_; }

  const std::vector<SBatchList>& Faces(const CBinModel& model);
  const std::vector<CDisplayList>& Edges(const CBinModel& model);   ///< lines
  const std::vector<CDisplayList>& Points(const CBinModel& model);  ///< points
  const CDisplayList& Balls(const CBinModel& model);                ///< with normals
  /// How often one of these was recorded as a whole.
  int BuildCount() const { return build_count_; }
  int64_t HandedFaces() const { return handed_faces_; }
  void Forget();

 private:
  void Release();
  bool IsSpaceUsable(const CBinModel& model) const;
  void FollowMoves(const CBinModel& model, std::span<const int32_t> vertices);
  void RecordFaces(const CBinModel& model, size_t list);
  void RecordEdges(const CBinModel& model, size_t list);
  void RecordPoints(const CBinModel& model, size_t list);

  uint64_t model_ = 0;  ///< its identity; 0 for none
  uint64_t revision_ = 0;
  CModelSpace space_;
  bool has_faces_ = false;
  std::vector<SBatchList> faces_;
  std::vector<int32_t> order_;         ///< the faces of all lists one after the other
  std::vector<size_t> begins_;         ///< of each list in order_, and the end
  std::vector<int32_t> list_of_face_;  ///< by face; -1 for hidden ones
  std::vector<CDisplayList> edges_;    ///< of kPortion faces each
  std::vector<CDisplayList> points_;   ///< of kPortion vertices each
  CDisplayList ball_;
  CDisplayList balls_;
  int build_count_ = 0;
  int64_t handed_faces_ = 0;
};

}  // namespace veldra

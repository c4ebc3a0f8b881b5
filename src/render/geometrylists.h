#pragma once

#include <vector>

#include "render/displaylist.h"
#include "render/modelgeometry.h"

namespace veldra {

/// One batch of faces, recorded.
struct SBatchList {
  const CBinTexture* texture = nullptr;
  EFaceLook look = EFaceLook::kUntextured;
  CDisplayList list;
};

/// A model's geometry as OpenGL keeps it, each part recorded when it is first asked for, in the coordinates of a
/// CModelSpace.
class CGeometryLists {
 public:
  /// Drops what was recorded of another model or revision; true when MODEL is new in that sense.
  bool Follow(const CBinModel& model);
  const CModelSpace& Space() const { return space_; }

  const std::vector<SBatchList>& Faces(const CBinModel& model);
  const CDisplayList& Edges(const CBinModel& model);   ///< lines
  const CDisplayList& Points(const CBinModel& model);  ///< points
  const CDisplayList& Balls(const CBinModel& model);   ///< with normals
  int BuildCount() const { return build_count_; }
  void Forget();

 private:
  void Release();

  uint64_t model_ = 0;  ///< its identity; 0 for none
  uint64_t revision_ = 0;
  CModelSpace space_;
  bool has_faces_ = false;
  std::vector<SBatchList> faces_;
  CDisplayList edges_;
  CDisplayList points_;
  CDisplayList ball_;
  CDisplayList balls_;
  int build_count_ = 0;
};

}  // namespace veldra

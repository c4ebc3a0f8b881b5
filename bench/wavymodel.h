#pragma once

#include <memory>
#include <vector>

#include "model/binmodel.h"

namespace veldra::bench {

/// A square cloth of SIDE × SIDE quads that goes up and down in waves, with several textures in strips.
class CWavyModel {
 public:
  /// SPACING: model units between vertices. With SEPARATE quads each has four vertices of its own, which lie on those
  /// of its neighbours.
  CWavyModel(int side, int spacing, bool separate);

  CBinModel model;

 private:
  SPoint PointAt(int row, int column) const;
  void AddQuad(const std::vector<CBinVertex*>& corners, int row, int column);

  int spacing_;
  std::vector<std::unique_ptr<STextureImage>> images_;
};

}  // namespace veldra::bench

#pragma once

#include <cstdint>
#include <vector>

#include "interchange/wavemesh.h"

namespace veldra {

/// Adds vertices to a mesh, those that lie in one place once: formats that list each corner by itself share none.
class CVertexWelder {
 public:
  explicit CVertexWelder(SWaveMesh& mesh) : mesh_(mesh) {}
  /// The position of POINT, which is finite, in the mesh's vertices.
  int32_t Add(const SWavePoint& point);
  /// What is added from now on shares no vertex with what was.
  void Forget();

 private:
  size_t SlotOf(const SWavePoint& point) const;
  void Grow();

  SWaveMesh& mesh_;
  std::vector<int32_t> slots_;  ///< an open table of positions, a power of two long; -1 where none is
  size_t used_ = 0;
};

}  // namespace veldra

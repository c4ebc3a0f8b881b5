#pragma once

#include <vector>

#include "platform/glcontext.h"

namespace veldra {

/// Hands vertices to OpenGL in portions that stay in the processor's cache, so that a large model needs no second copy
/// of itself in memory.
template <typename TVertex>
class CVertexStream {
 public:
  /// KIND: GL_TRIANGLES and its like; FORMAT: that of glInterleavedArrays for TVertex.
  CVertexStream(GLenum kind, GLenum format) : kind_(kind) {
    vertices_.reserve(kPortion + kMostAtOnce);
    glInterleavedArrays(format, 0, vertices_.data());
  }
  ~CVertexStream() { Flush(); }
  CVertexStream(const CVertexStream&) = delete;
  CVertexStream& operator=(const CVertexStream&) = delete;

  /// Where the next item's vertices go, at most kMostAtOnce.
  std::vector<TVertex>& Next() {
    if (vertices_.size() >= kPortion) Flush();
    return vertices_;
  }

 private:
  static constexpr size_t kPortion = 16384;
  static constexpr size_t kMostAtOnce = 8;

  void Flush() {
    if (!vertices_.empty()) glDrawArrays(kind_, 0, static_cast<GLsizei>(vertices_.size()));
    vertices_.clear();
  }

  GLenum kind_;
  std::vector<TVertex> vertices_;  ///< never moves: OpenGL knows its address
};

}  // namespace veldra

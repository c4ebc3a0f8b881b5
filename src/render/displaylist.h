#pragma once

#include <utility>

#include "platform/glcontext.h"

namespace veldra {

/// Drawing calls kept by OpenGL. The context that recorded must be current when the object goes, or Forget called.
class CDisplayList {
 public:
  CDisplayList() = default;
  CDisplayList(CDisplayList&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
  CDisplayList& operator=(CDisplayList&& other) noexcept {
    std::swap(id_, other.id_);
    return *this;
  }
  ~CDisplayList() { Release(); }

  bool IsRecorded() const { return id_ != 0; }
  /// Keeps what DRAW calls.
  template <typename TDraw>
  void Record(TDraw&& draw) {
    if (id_ == 0) id_ = glGenLists(1);
    glNewList(id_, GL_COMPILE);
    draw();
    glEndList();
  }
  void Call() const { glCallList(id_); }
  void Release() {
    if (id_ != 0) glDeleteLists(id_, 1);
    id_ = 0;
  }
  /// The context is gone, and the list with it.
  void Forget() { id_ = 0; }

 private:
  GLuint id_ = 0;
};

}  // namespace veldra

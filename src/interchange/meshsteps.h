#pragma once

#include <cstdint>

#include "platform/questions.h"

namespace veldra {

/// Tells a progress, where there is one, how far the reading of a mesh is, every few thousand of its parts.
class CMeshSteps {
 public:
  explicit CMeshSteps(CProgress* progress) : progress_(progress) {}
  /// Part NUMBER is next. False when the user wants it stopped.
  bool Step(uint64_t number, uint64_t total) { return Step(number, number, total); }
  bool Step(uint64_t number, uint64_t done, uint64_t total) {
    return number % kStride != 0 || progress_ == nullptr || progress_->Step(done, total);
  }

 private:
  static constexpr uint64_t kStride = 16384;
  CProgress* progress_;
};

}  // namespace veldra

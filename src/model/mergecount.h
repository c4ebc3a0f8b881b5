#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "model/binmodel.h"

namespace veldra {

struct SMergeGeometry;

/// What a merge takes away.
struct SMergeCount {
  int32_t vertices = 0;
  int32_t faces = 0;
  bool operator==(const SMergeCount&) const = default;
};

/// Tells what MergeVertices would do, on a copy of the model's geometry. Counting may run in a thread of its own.
class CMergeCounter {
 public:
  explicit CMergeCounter(const CBinModel& model);
  ~CMergeCounter();
  /// Nothing when PROGRESS (may be null) was stopped.
  std::optional<SMergeCount> Count(int32_t threshold, CProgress* progress = nullptr) const;

 private:
  std::unique_ptr<const SMergeGeometry> geometry_;
};

}  // namespace veldra

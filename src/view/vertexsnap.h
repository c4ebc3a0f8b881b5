#pragma once

#include <QPointF>
#include <optional>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

class CTarnView;

/// The vertices of a view onto which a drag can bring what it holds: those that could be seen when this was made, and
/// do not move.
class CVertexSnap {
 public:
  /// MOVING: ascending. The model must keep its vertices while this lives.
  CVertexSnap(CTarnView& view, const std::vector<int32_t>& moving);
  /// The one next to AT, in the widget; nothing where none is near.
  std::optional<int32_t> VertexAt(const QPointF& at) const;

 private:
  const CTarnView& view_;
  std::vector<int32_t> vertices_;
};

}  // namespace veldra

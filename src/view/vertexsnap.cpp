#include "view/vertexsnap.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "view/tarn2view.h"

namespace veldra {

CVertexSnap::CVertexSnap(CTarnView& view, const std::vector<int32_t>& moving) : view_(view) {
  std::ranges::set_difference(view.PickIn(QRectF(view.rect()), EGroupKind::kVertices), moving,
                              std::back_inserter(vertices_));
}

std::optional<int32_t> CVertexSnap::VertexAt(const QPointF& at) const {
  constexpr double kReach = 12.0;
  const CViewCamera camera = view_.Camera();
  const double ratio = view_.devicePixelRatioF();
  std::optional<int32_t> found;
  double best = kReach * ratio;
  for (const int32_t vertex : vertices_) {
    const SScreenPoint place = camera.Project(view_.Document().Model().Vertex(vertex).Position());
    const double distance = std::hypot(place.x - at.x() * ratio, place.y - at.y() * ratio);
    if (distance > best) continue;
    best = distance;
    found = vertex;
  }
  return found;
}

}  // namespace veldra

#include "editing/commandinputs.h"

#include <algorithm>

#include "model/texturenames.h"
#include "platform/assert.h"
#include "platform/files.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {

namespace {

void Widen(std::optional<SBounds>& bounds, const SPoint& p) {
  if (!bounds) bounds = SBounds{p, p};
  bounds->min = {std::min(bounds->min.x, p.x), std::min(bounds->min.y, p.y), std::min(bounds->min.z, p.z)};
  bounds->max = {std::max(bounds->max.x, p.x), std::max(bounds->max.y, p.y), std::max(bounds->max.z, p.z)};
}

/// The bounds of MODEL with VERTICES at POSITIONS.
std::optional<SBounds> BoundsWith(const CBinModel& model, std::span<const int32_t> vertices,
                                  std::span<const SPoint> positions) {
  std::optional<SBounds> bounds;
  std::vector<bool> is_moved(static_cast<size_t>(model.VertexCount()));
  for (size_t i = 0; i < vertices.size(); ++i) {
    is_moved[static_cast<size_t>(vertices[i])] = true;
    Widen(bounds, positions[i]);
  }
  for (int32_t i = 0; i < model.VertexCount(); ++i) {
    if (!is_moved[static_cast<size_t>(i)]) Widen(bounds, model.Vertex(i).Position());
  }
  return bounds;
}

std::string CornersFault(const CBinModel& model, const std::array<int32_t, 4>& corners) {
  const size_t count = corners[3] < 0 ? 3 : 4;
  for (size_t k = 0; k < count; ++k) {
    if (corners[k] < 0 || corners[k] >= model.VertexCount()) {
      return Format("There is no vertex %d: the model has %d of them, counted from 0.", corners[k],
                    model.VertexCount());
    }
    if (std::find(corners.begin(), corners.begin() + static_cast<ptrdiff_t>(k), corners[k]) !=
        corners.begin() + static_cast<ptrdiff_t>(k)) {
      return Format("Vertex %d is named twice. The corners must be different vertices.", corners[k]);
    }
  }
  return "";
}

std::string TextureFault(const CBinModel& model, int32_t texture) {
  if (texture >= 0 && texture < model.TextureCount()) return "";
  return Format("There is no texture %d: the model has %d of them, counted from 0.", texture, model.TextureCount());
}

}  // namespace

SScope::EKind ScopeOfRotateTarget(int target) {
  VELDRA_ASSERT(target >= 0 && target < 3);
  if (target == 1) return SScope::EKind::kSelectedVertices;
  return target == 2 ? SScope::EKind::kSelectedFaces : SScope::EKind::kAll;
}

std::vector<int32_t> SelectionOf(const CBinModel& model, SScope::EKind kind) {
  if (kind == SScope::EKind::kAll) return {};
  return model.Selected(kind == SScope::EKind::kSelectedFaces ? EGroupKind::kFaces : EGroupKind::kVertices);
}

Vector3 PivotPoint(const CBinModel& model, std::span<const int32_t> vertices, const SPivotInput& input) {
  using EKind = SPivotInput::EKind;
  if (input.kind == EKind::kPoint) return input.point;
  if (input.kind == EKind::kVertex) return ToVector(model.Vertex(input.vertex).Position());
  const auto bounds = model.BoundsOfVertices(vertices);
  if (input.kind == EKind::kOrigin || !bounds) return {};
  return 0.5 * (ToVector(bounds->min) + ToVector(bounds->max));
}

std::string PivotFault(const CBinModel& model, const SPivotInput& input) {
  if (input.kind != SPivotInput::EKind::kVertex) return "";
  return input.vertex >= 0 && input.vertex < model.VertexCount() ? "" : "There is no current vertex.";
}

std::string ScopeFault(const CBinModel& model, SScope::EKind kind) {
  if (kind == SScope::EKind::kSelectedFaces && model.SelectedCount(EGroupKind::kFaces) == 0) {
    return "No face is selected.";
  }
  if (kind == SScope::EKind::kSelectedVertices && model.SelectedCount(EGroupKind::kVertices) == 0) {
    return "No vertex is selected.";
  }
  return "";
}

std::string InputFault(const CBinModel& model, const SAddFaceInput& input) {
  std::string fault = CornersFault(model, input.corners);
  if (!fault.empty()) return fault;
  if (!IsFaceTag(input.type)) return Format("0x%02X is no face type.", input.type);
  if (input.texture == -1) {
    return input.type == kFaceUntextured ? "" : Format("A face of type 0x%02X needs a texture.", input.type);
  }
  return TextureFault(model, input.texture);
}

std::string InputFault(const CBinModel&, const SMergeInput& input) {
  return input.threshold < 0 ? "The distance must not be negative." : "";
}

std::string InputFault(const CBinModel& model, const SReplaceTextureInput& input) {
  std::string fault = TextureFault(model, input.texture);
  if (!fault.empty()) return fault;
  if (input.path.empty()) return "No texture file is chosen.";
  if (std::string name_fault = TextureNameFault(TextureNameOf(input.path)); !name_fault.empty()) return name_fault;
  return IsFile(input.path) ? "" : Format("There is no file \"%s\".", input.path.c_str());
}

std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SResizeInput& input) {
  const std::vector<int32_t> vertices = VerticesInScope(model, {input.scope, selection});
  std::vector<SPoint> positions;
  const Vector3 pivot = PivotPoint(model, vertices, input.pivot);
  if (!ResizedPositions(model, vertices, input.x, input.y, input.z, positions, pivot).empty()) return std::nullopt;
  return BoundsWith(model, vertices, positions);
}

std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const STranslateInput& input) {
  const std::vector<int32_t> vertices = VerticesInScope(model, {input.scope, selection});
  std::vector<SPoint> positions;
  positions.reserve(vertices.size());
  for (const int32_t index : vertices) {
    const SPoint& from = model.Vertex(index).Position();
    positions.push_back({WrapAdd(from.x, input.x), WrapAdd(from.y, input.y), WrapAdd(from.z, input.z)});
  }
  return BoundsWith(model, vertices, positions);
}

std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SRotateInput& input) {
  const std::vector<int32_t> vertices = VerticesInScope(model, {input.scope, selection});
  std::vector<SPoint> positions;
  const Vector3 pivot = PivotPoint(model, vertices, input.pivot);
  if (!RotatedPositions(model, vertices, input.axis, input.angle, input.radians, positions, pivot).empty()) {
    return std::nullopt;
  }
  return BoundsWith(model, vertices, positions);
}

}  // namespace veldra

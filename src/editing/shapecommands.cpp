#include "editing/shapecommands.h"

#include <numeric>

#include "document/statebefore.h"
#include "editing/modelcommands.h"
#include "platform/text.h"

namespace veldra {

namespace {

void SelectOnly(CBinModel& model, EGroupKind kind, int32_t first, int32_t end) {
  std::vector<int32_t> items(static_cast<size_t>(end - first));
  std::iota(items.begin(), items.end(), first);
  model.SelectAll(kind, false);
  model.Select(kind, items, true);
}

int32_t Middle(int32_t low, int32_t high) {
  return static_cast<int32_t>((int64_t{low} + high) / 2);
}

}  // namespace

bool InsertShape(CTarnDoc& document, const SInsertShapeInput& input) {
  if (!CanEditModel(document)) return false;
  CBinModel& model = document.Model();
  SShapeMesh mesh;
  if (const std::string fault = MakeShape(input.shape, mesh); !fault.empty()) return document.ShowError(fault);
  const SShapeKind& kind = KindOf(input.shape.kind);
  const CStep step(document, "Insert " + std::string(kind.title));
  const CStateBefore before(document, "Insert Shape");
  const int32_t first_vertex = model.VertexCount();
  const int32_t first_face = model.FaceCount();
  CBinTexture* const texture = input.texture < 0 ? nullptr : &model.Texture(input.texture);
  AddShape(model, mesh, texture == nullptr ? uint32_t{kFaceUntextured} : input.type, texture, kind.name);
  SelectOnly(model, EGroupKind::kFaces, first_face, model.FaceCount());
  SelectOnly(model, EGroupKind::kVertices, first_vertex, model.VertexCount());
  document.Say("Inserted " + Counted(model.VertexCount() - first_vertex, "vertex", "vertices") + " and " +
               Counted(model.FaceCount() - first_face, "face", "faces"));
  return true;
}

SPoint PlaceForShape(const CBinModel& model, const SPoint& middle_of_view) {
  auto bounds = model.BoundsOfFaces(model.Selected(EGroupKind::kFaces));
  if (!bounds) bounds = model.BoundsOfVertices(model.Selected(EGroupKind::kVertices));
  if (!bounds) return middle_of_view;
  return {Middle(bounds->min.x, bounds->max.x), Middle(bounds->min.y, bounds->max.y),
          Middle(bounds->min.z, bounds->max.z)};
}

}  // namespace veldra

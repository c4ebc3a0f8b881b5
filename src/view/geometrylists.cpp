#include "view/geometrylists.h"

#include "view/viewmarkers.h"

namespace veldra {

namespace {

/// Vertices handed over at a time. The arrays stay in the processor's cache, and a large model needs no second copy of
/// itself in memory.
constexpr size_t kChunk = 16384;
/// The most that one face appends.
constexpr size_t kMostPerFace = 8;

void Hand(GLenum kind, std::vector<SFaceVertex>& vertices) {
  glDrawArrays(kind, 0, static_cast<GLsizei>(vertices.size()));
  vertices.clear();
}

void Hand(GLenum kind, std::vector<FloatPoint>& vertices) {
  glDrawArrays(kind, 0, static_cast<GLsizei>(vertices.size()));
  vertices.clear();
}

/// COUNT times APPEND(index, vertices), drawn as KIND in chunks from a vertex array of FORMAT that never moves.
template <typename TVertex, typename TAppend>
void Stream(GLenum kind, GLenum format, size_t count, TAppend&& append) {
  std::vector<TVertex> vertices;
  vertices.reserve(kChunk + kMostPerFace);
  glInterleavedArrays(format, 0, vertices.data());
  for (size_t k = 0; k < count; ++k) {
    append(static_cast<int32_t>(k), vertices);
    if (vertices.size() >= kChunk) Hand(kind, vertices);
  }
  if (!vertices.empty()) Hand(kind, vertices);
}

}  // namespace

bool CGeometryLists::Follow(const CBinModel& model) {
  if (model_ == &model && revision_ == model.Revision()) return false;
  Release();
  model_ = &model;
  revision_ = model.Revision();
  space_ = CModelSpace(model.Bounds());
  return true;
}

const std::vector<SBatchList>& CGeometryLists::Faces(const CBinModel& model) {
  if (has_faces_) return faces_;
  const SFaceBatches batches = BatchFaces(model);
  for (const SFaceBatch& batch : batches.batches) {
    SBatchList& recorded = faces_.emplace_back(SBatchList{.texture = batch.texture, .look = batch.look, .list = {}});
    recorded.list.Record([&] {
      Stream<SFaceVertex>(GL_TRIANGLES, GL_T2F_N3F_V3F, batch.faces.size(), [&](int32_t k, auto& out) {
        AppendFace(model.Face(batch.faces[static_cast<size_t>(k)]), space_, out);
      });
    });
  }
  has_faces_ = true;
  ++build_count_;
  return faces_;
}

const CDisplayList& CGeometryLists::Edges(const CBinModel& model) {
  if (edges_.IsRecorded()) return edges_;
  edges_.Record([&] {
    Stream<FloatPoint>(GL_LINES, GL_V3F, static_cast<size_t>(model.FaceCount()),
                       [&](int32_t k, auto& out) { AppendEdges(model.Face(k), space_, out); });
  });
  ++build_count_;
  return edges_;
}

const CDisplayList& CGeometryLists::Points(const CBinModel& model) {
  if (points_.IsRecorded()) return points_;
  points_.Record([&] {
    Stream<FloatPoint>(GL_POINTS, GL_V3F, static_cast<size_t>(model.VertexCount()),
                       [&](int32_t k, auto& out) { out.push_back(space_.Place(model.Vertex(k).Position())); });
  });
  ++build_count_;
  return points_;
}

const CDisplayList& CGeometryLists::Balls(const CBinModel& model) {
  if (balls_.IsRecorded()) return balls_;
  ball_.Record([&] { DrawBall(BallRadius(model.VertexCount())); });
  balls_.Record([&] {
    for (int32_t k = 0; k < model.VertexCount(); ++k) {
      const FloatPoint place = space_.Place(model.Vertex(k).Position());
      glPushMatrix();
      glTranslatef(place[0], place[1], place[2]);
      ball_.Call();
      glPopMatrix();
    }
  });
  ++build_count_;
  return balls_;
}

void CGeometryLists::Release() {
  has_faces_ = false;
  faces_.clear();
  for (CDisplayList* list : {&edges_, &points_, &ball_, &balls_})
    list->Release();
}

void CGeometryLists::Forget() {
  for (SBatchList& batch : faces_)
    batch.list.Forget();
  for (CDisplayList* list : {&edges_, &points_, &ball_, &balls_})
    list->Forget();
  Release();
  model_ = nullptr;
}

}  // namespace veldra

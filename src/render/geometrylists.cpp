#include "render/geometrylists.h"

#include "render/vertexstream.h"
#include "render/viewmarkers.h"

namespace veldra {

bool CGeometryLists::Follow(const CBinModel& model) {
  if (model_ == model.Identity() && revision_ == model.Revision()) return false;
  Release();
  model_ = model.Identity();
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
      CVertexStream<SFaceVertex> stream(GL_TRIANGLES, GL_T2F_N3F_V3F);
      for (const int32_t face : batch.faces)
        AppendFace(model.Face(face), space_, stream.Next());
    });
  }
  has_faces_ = true;
  ++build_count_;
  return faces_;
}

const CDisplayList& CGeometryLists::Edges(const CBinModel& model) {
  if (edges_.IsRecorded()) return edges_;
  edges_.Record([&] {
    CVertexStream<FloatPoint> stream(GL_LINES, GL_V3F);
    for (int32_t k = 0; k < model.FaceCount(); ++k)
      AppendEdges(model.Face(k), space_, stream.Next());
  });
  ++build_count_;
  return edges_;
}

const CDisplayList& CGeometryLists::Points(const CBinModel& model) {
  if (points_.IsRecorded()) return points_;
  points_.Record([&] {
    CVertexStream<FloatPoint> stream(GL_POINTS, GL_V3F);
    for (int32_t k = 0; k < model.VertexCount(); ++k)
      stream.Next().push_back(space_.Place(model.Vertex(k).Position()));
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
  model_ = 0;
}

}  // namespace veldra

#include "render/geometrylists.h"

#include <algorithm>

#include "render/vertexstream.h"
#include "render/viewmarkers.h"

namespace veldra {

namespace {

constexpr auto kPortionSize = static_cast<size_t>(CGeometryLists::kPortion);

size_t PortionOf(int32_t item) {
  return static_cast<size_t>(item / CGeometryLists::kPortion);
}

/// Enough for COUNT items.
std::vector<CDisplayList> Lists(int32_t count) {
  return std::vector<CDisplayList>((static_cast<size_t>(count) + kPortionSize - 1) / kPortionSize);
}

int32_t End(size_t portion, int32_t count) {
  return std::min(count, static_cast<int32_t>(portion + 1) * CGeometryLists::kPortion);
}

/// Which of COUNT lists are to be recorded anew.
class CDirtyLists {
 public:
  explicit CDirtyLists(size_t count) : marks_(count) {}
  void Add(size_t list) {
    if (list < marks_.size()) marks_[list] = true;
  }
  template <typename Record>
  void ForEach(const Record& record) const {
    for (size_t i = 0; i < marks_.size(); ++i)
      if (marks_[i]) record(i);
  }

 private:
  std::vector<bool> marks_;
};

}  // namespace

bool CGeometryLists::Follow(const CBinModel& model) {
  if (model_ == model.Identity() && revision_ == model.Revision()) return false;
  const auto moved = model_ == model.Identity() ? model.MovedSince(revision_) : std::nullopt;
  revision_ = model.Revision();
  if (moved && IsSpaceUsable(model)) {
    FollowMoves(model, *moved);
    return false;
  }
  Release();
  model_ = model.Identity();
  space_ = CModelSpace(model.Bounds());
  return true;
}

/// Floats still hold the model to the unit in the coordinates in which it is recorded.
bool CGeometryLists::IsSpaceUsable(const CBinModel& model) const {
  const CModelSpace now(model.Bounds());
  const double grown = now.Radius() / space_.Radius();
  return grown > 0.5 && grown < 2.0 && Length(now.Center() - space_.Center()) < space_.Radius();
}

void CGeometryLists::FollowMoves(const CBinModel& model, std::span<const int32_t> vertices) {
  CDirtyLists faces(faces_.size());
  CDirtyLists edges(edges_.size());
  CDirtyLists points(points_.size());
  for (const int32_t index : vertices) {
    points.Add(PortionOf(index));
    for (const CBinFace* face : model.Vertex(index).Faces()) {
      if (has_faces_) faces.Add(static_cast<size_t>(list_of_face_[static_cast<size_t>(face->Index())]));
      edges.Add(PortionOf(face->Index()));
    }
  }
  faces.ForEach([&](size_t list) { RecordFaces(model, list); });
  edges.ForEach([&](size_t list) { RecordEdges(model, list); });
  points.ForEach([&](size_t list) { RecordPoints(model, list); });
  balls_.Release();
}

const std::vector<SBatchList>& CGeometryLists::Faces(const CBinModel& model) {
  if (has_faces_) return faces_;
  SFaceBatches batches = BatchFaces(model);
  list_of_face_.assign(static_cast<size_t>(model.FaceCount()), -1);
  begins_ = {0};
  for (const SFaceBatch& batch : batches.batches) {
    for (size_t first = 0; first < batch.faces.size(); first += kPortionSize) {
      const auto faces = batch.faces.subspan(first, std::min(kPortionSize, batch.faces.size() - first));
      for (const int32_t face : faces)
        list_of_face_[static_cast<size_t>(face)] = static_cast<int32_t>(faces_.size());
      faces_.push_back(SBatchList{.texture = batch.texture, .look = batch.look, .list = {}});
      begins_.push_back(begins_.back() + faces.size());
    }
  }
  order_ = std::move(batches.order);
  for (size_t list = 0; list < faces_.size(); ++list)
    RecordFaces(model, list);
  has_faces_ = true;
  ++build_count_;
  return faces_;
}

void CGeometryLists::RecordFaces(const CBinModel& model, size_t list) {
  faces_[list].list.Record([&] {
    CVertexStream<SFaceVertex> stream(GL_TRIANGLES, GL_T2F_N3F_V3F);
    for (size_t i = begins_[list]; i < begins_[list + 1]; ++i)
      AppendFace(model.Face(order_[i]), space_, stream.Next());
  });
  handed_faces_ += static_cast<int64_t>(begins_[list + 1] - begins_[list]);
}

const std::vector<CDisplayList>& CGeometryLists::Edges(const CBinModel& model) {
  if (!edges_.empty() || model.FaceCount() == 0) return edges_;
  edges_ = Lists(model.FaceCount());
  for (size_t list = 0; list < edges_.size(); ++list)
    RecordEdges(model, list);
  ++build_count_;
  return edges_;
}

void CGeometryLists::RecordEdges(const CBinModel& model, size_t list) {
  edges_[list].Record([&] {
    CVertexStream<FloatPoint> stream(GL_LINES, GL_V3F);
    for (auto k = static_cast<int32_t>(list) * kPortion; k < End(list, model.FaceCount()); ++k)
      AppendEdges(model.Face(k), space_, stream.Next());
  });
}

const std::vector<CDisplayList>& CGeometryLists::Points(const CBinModel& model) {
  if (!points_.empty() || model.VertexCount() == 0) return points_;
  points_ = Lists(model.VertexCount());
  for (size_t list = 0; list < points_.size(); ++list)
    RecordPoints(model, list);
  ++build_count_;
  return points_;
}

void CGeometryLists::RecordPoints(const CBinModel& model, size_t list) {
  points_[list].Record([&] {
    CVertexStream<FloatPoint> stream(GL_POINTS, GL_V3F);
    for (auto k = static_cast<int32_t>(list) * kPortion; k < End(list, model.VertexCount()); ++k)
      if (!model.Vertex(k).IsHidden()) stream.Next().push_back(space_.Place(model.Vertex(k).Position()));
  });
}

const CDisplayList& CGeometryLists::Balls(const CBinModel& model) {
  if (balls_.IsRecorded()) return balls_;
  ball_.Record([&] { DrawBall(BallRadius(model.VertexCount())); });
  balls_.Record([&] {
    for (int32_t k = 0; k < model.VertexCount(); ++k) {
      if (model.Vertex(k).IsHidden()) continue;
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
  edges_.clear();
  points_.clear();
  ball_.Release();
  balls_.Release();
}

void CGeometryLists::Forget() {
  for (SBatchList& batch : faces_)
    batch.list.Forget();
  for (std::vector<CDisplayList>* lists : {&edges_, &points_})
    for (CDisplayList& list : *lists)
      list.Forget();
  ball_.Forget();
  balls_.Forget();
  Release();
  model_ = 0;
}

}  // namespace veldra

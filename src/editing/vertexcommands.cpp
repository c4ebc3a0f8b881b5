#include "editing/vertexcommands.h"

#include "editing/texturelock.h"
#include "model/flatten.h"
#include "platform/text.h"

namespace veldra {

namespace {

std::string Vertices(size_t count) {
  return Counted(static_cast<int64_t>(count), "vertex", "vertices");
}

bool Delete(CEditCursor& cursor, const std::vector<int32_t>& vertices, const char* command) {
  CTarnDoc& document = cursor.Document();
  if (document.Model().AreUnused(vertices)) document.KeepState(command);
  if (!document.Model().DeleteVertices(vertices, document.Services().questions)) return false;
  document.Say("Deleted " + Vertices(vertices.size()));
  return true;
}

/// JOIN: what a run of keys has in common that becomes one step.
void Move(CEditCursor& cursor, const std::vector<int32_t>& vertices, EAxis axis, bool forward,
          const std::string& join) {
  const CStep one_step(cursor.Document(), "Move Vertices");
  cursor.Document().Steps().Join(join);
  std::optional<CTextureLock> lock;
  if (cursor.Document().Settings().texture_lock != 0) lock.emplace(cursor.Document().Model(), vertices);
  SPoint step;
  Coordinate(step, axis) = cursor.Document().Settings().move_step;
  TranslateVertices(cursor.Document().Model(), vertices, step.x, step.y, step.z, forward);
  if (lock) lock->Follow();
  cursor.Document().Say("Moved " + Vertices(vertices.size()));
}

void SayTags(const CEditCursor& cursor) {
  std::string tagged;
  for (const int32_t vertex : cursor.Tagged())
    tagged += (tagged.empty() ? "Tagged: " : ", ") + std::to_string(vertex);
  cursor.Document().Say(tagged.empty() ? "No vertex is tagged" : tagged);
}

}  // namespace

bool HasVertices(const CEditCursor& cursor) {
  return cursor.Model().VertexCount() > 0;
}

bool HasCurrentVertex(const CEditCursor& cursor) {
  return cursor.Vertex() >= 0;
}

bool HasSelectedVertices(const CEditCursor& cursor) {
  return cursor.SelectedCount(EGroupKind::kVertices) > 0;
}

bool CanEditVertex(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && HasCurrentVertex(cursor);
}

bool CanEditSelectedVertices(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && HasSelectedVertices(cursor);
}

void SelectCurrentVertex(CEditCursor& cursor) {
  if (!HasCurrentVertex(cursor)) return;
  const int32_t vertex = cursor.Vertex();
  cursor.Document().Model().Select(EGroupKind::kVertices, {&vertex, 1}, true);
}

bool TagCurrentVertex(CEditCursor& cursor) {
  if (!CanEditVertex(cursor)) return false;
  const bool done = cursor.ToggleTag(cursor.Vertex());
  done ? SayTags(cursor) : cursor.Document().Say("Four vertices are tagged already");
  return done;
}

void ClearTags(CEditCursor& cursor) {
  cursor.ClearTags();
  SayTags(cursor);
}

bool DeleteCurrentVertex(CEditCursor& cursor) {
  return CanEditVertex(cursor) && Delete(cursor, {cursor.Vertex()}, "Delete Current Vertex");
}

bool DeleteSelectedVertices(CEditCursor& cursor) {
  return CanEditSelectedVertices(cursor) &&
         Delete(cursor, cursor.Model().Selected(EGroupKind::kVertices), "Delete Selected Vertices");
}

void SetVertexCoordinates(CEditCursor& cursor, const SPoint& position) {
  if (!CanEditVertex(cursor) || position == cursor.VertexObject()->Position()) return;
  cursor.Document().KeepState("Set Vertex Coordinates");
  cursor.Document().Model().SetVertexPosition(cursor.Vertex(), position);
  cursor.Document().Say(Format("Moved vertex %d", cursor.Vertex()));
}

std::vector<int32_t> VerticesToFlatten(const CEditCursor& cursor) {
  const CBinModel& model = cursor.Model();
  if (HasSelectedVertices(cursor)) return model.Selected(EGroupKind::kVertices);
  return VerticesInScope(model, SScope::OfFaces(model.Selected(EGroupKind::kFaces)));
}

bool CanFlatten(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() &&
         (HasSelectedVertices(cursor) || cursor.SelectedCount(EGroupKind::kFaces) > 0);
}

int32_t PlaneCoordinate(const CEditCursor& cursor, const SPlaneInput& input) {
  const auto coordinate = [&](int32_t vertex) {
    return Coordinate(cursor.Model().Vertex(vertex).Position(), input.axis);
  };
  if (input.plane == SPlaneInput::EPlane::kValue) return input.value;
  if (input.plane == SPlaneInput::EPlane::kCurrent) return coordinate(cursor.Vertex());
  const std::vector<int32_t> vertices = VerticesToFlatten(cursor);
  int64_t sum = 0;
  for (const int32_t vertex : vertices)
    sum += coordinate(vertex);
  return static_cast<int32_t>(sum / static_cast<int64_t>(vertices.size()));
}

GeometryFault FlatPositions(const CEditCursor& cursor, const SPlaneInput& input, std::vector<SPoint>& positions) {
  using EPlane = SPlaneInput::EPlane;
  const std::vector<int32_t> vertices = VerticesToFlatten(cursor);
  const CBinModel& model = cursor.Model();
  positions.clear();
  if (input.plane == EPlane::kFitting)
    return PositionsInPlane(model, vertices, FittingPlane(model, vertices), positions);
  if (input.plane == EPlane::kFace) {
    const CBinFace* face = cursor.FaceObject();
    const std::optional<SPlane> plane = face == nullptr ? std::nullopt : PlaneOf(*face);
    return plane ? PositionsInPlane(model, vertices, *plane, positions) : "The current face has no plane.";
  }
  if (input.plane == EPlane::kCurrent && !HasCurrentVertex(cursor)) return "There is no current vertex.";
  const int32_t coordinate = PlaneCoordinate(cursor, input);
  for (const int32_t vertex : vertices) {
    positions.push_back(model.Vertex(vertex).Position());
    Coordinate(positions.back(), input.axis) = coordinate;
  }
  return "";
}

bool SetToPlane(CEditCursor& cursor, const SPlaneInput& input) {
  if (!CanFlatten(cursor)) return false;
  CTarnDoc& document = cursor.Document();
  CBinModel& model = document.Model();
  const std::vector<int32_t> vertices = VerticesToFlatten(cursor);
  std::vector<SPoint> positions;
  if (const std::string fault = FlatPositions(cursor, input, positions); !fault.empty())
    return document.ShowError(fault);
  size_t moved = 0;
  for (size_t k = 0; k < vertices.size(); ++k)
    moved += positions[k] != model.Vertex(vertices[k]).Position() ? 1 : 0;
  if (moved > 0) document.KeepState("Set to Plane");
  if (moved > 0) model.SetVertexPositions(vertices, positions);
  document.Say(moved > 0 ? "Moved " + Vertices(moved) : "The vertices lie in that plane already");
  return true;
}

void MoveCurrentVertex(CEditCursor& cursor, EAxis axis, bool forward) {
  if (CanEditVertex(cursor)) Move(cursor, {cursor.Vertex()}, axis, forward, Format("move vertex %d", cursor.Vertex()));
}

void MoveSelectedVertices(CEditCursor& cursor, EAxis axis, bool forward) {
  if (!CanEditSelectedVertices(cursor)) return;
  const CBinModel& model = cursor.Model();
  const auto selection = static_cast<unsigned long long>(model.SelectionRevision());
  Move(cursor, model.Selected(EGroupKind::kVertices), axis, forward, Format("move selection %llu", selection));
}

}  // namespace veldra

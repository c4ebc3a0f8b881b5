#include "editing/makecommands.h"

#include <algorithm>
#include <numeric>
#include <sstream>

#include "editing/facecommands.h"
#include "editing/modelcommands.h"
#include "editing/vertexcommands.h"
#include "model/meshedit.h"
#include "platform/text.h"

namespace veldra {

namespace {

void SayOf(const CEditCursor& cursor, const char* what, int64_t count, const char* one, const char* more) {
  cursor.Document().Say(std::string(what) + " " + Counted(count, one, more));
}

/// KIND's last COUNT, and nothing else.
void SelectLast(CBinModel& model, EGroupKind kind, int32_t count) {
  const int32_t all = kind == EGroupKind::kFaces ? model.FaceCount() : model.VertexCount();
  std::vector<int32_t> last(static_cast<size_t>(count));
  std::iota(last.begin(), last.end(), all - count);
  model.SelectAll(EGroupKind::kFaces, false);
  model.SelectAll(EGroupKind::kVertices, false);
  model.Select(kind, last, true);
}

/// The last COUNT faces have been made.
void GoOnWith(CEditCursor& cursor, const char* what, int32_t count) {
  CBinModel& model = cursor.Document().Model();
  SelectLast(model, EGroupKind::kFaces, count);
  cursor.SetFace(model.FaceCount() - 1);
  SayOf(cursor, what, count, "face", "faces");
}

}  // namespace

bool CanSplitEdge(const CEditCursor& cursor) {
  return CanEditFace(cursor) && cursor.Corner() >= 0;
}

bool CanMakeFaceHere(const CEditCursor& cursor) {
  const int32_t count = cursor.SelectedCount(EGroupKind::kVertices);
  return !cursor.Document().IsReadOnly() && (count == 3 || count == 4);
}

bool CanBridge(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() &&
         (cursor.SelectedCount(EGroupKind::kVertices) >= 4 || cursor.SelectedCount(EGroupKind::kFaces) == 2);
}

bool CanTunnel(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly() && cursor.SelectedCount(EGroupKind::kFaces) >= 2;
}

bool Extrude(CEditCursor& cursor, int32_t distance) {
  if (!CanEditFaces(cursor) || distance == 0) return false;
  CTarnDoc& document = cursor.Document();
  const std::vector<int32_t> faces = FacesToEdit(cursor);
  document.KeepState("Extrude");
  if (const std::string fault = ExtrudeFaces(document.Model(), faces, distance); !fault.empty())
    return document.ShowError(fault);
  document.Model().Select(EGroupKind::kFaces, faces, true);
  SayOf(cursor, "Extruded", static_cast<int64_t>(faces.size()), "face", "faces");
  return true;
}

void Detach(CEditCursor& cursor) {
  if (!CanEditFaces(cursor)) return;
  const std::vector<int32_t> faces = FacesToEdit(cursor);
  cursor.Document().KeepState("Detach");
  const int32_t count = DetachFaces(cursor.Document().Model(), faces);
  cursor.Document().Model().Select(EGroupKind::kFaces, faces, true);
  cursor.Document().Say(count == 0 ? "The faces share no vertex with others"
                                   : "Detached " + Counted(static_cast<int64_t>(faces.size()), "face", "faces"));
}

void Duplicate(CEditCursor& cursor, std::optional<EAxis> mirror) {
  if (!CanEditFaces(cursor)) return;
  const std::vector<int32_t> faces = FacesToEdit(cursor);
  cursor.Document().KeepState("Duplicate");
  DuplicateFaces(cursor.Document().Model(), faces, mirror);
  SelectLast(cursor.Document().Model(), EGroupKind::kFaces, static_cast<int32_t>(faces.size()));
  SayOf(cursor, "Duplicated", static_cast<int64_t>(faces.size()), "face", "faces");
}

void SplitCurrentEdge(CEditCursor& cursor) {
  if (!CanSplitEdge(cursor)) return;
  cursor.Document().KeepState("Split Edge");
  const int32_t vertex = SplitEdge(cursor.Document().Model(), cursor.Face(), cursor.Corner());
  if (vertex >= 0) cursor.SetVertex(vertex);
  cursor.Document().Say(vertex < 0 ? "The edge is too short to be split" : Format("Added vertex %d", vertex));
}

void SplitFaces(CEditCursor& cursor) {
  if (!CanEditFaces(cursor)) return;
  cursor.Document().KeepState("Split Quads");
  SayOf(cursor, "Split", SplitQuads(cursor.Document().Model(), FacesToEdit(cursor)), "quad", "quads");
}

void JoinFaces(CEditCursor& cursor) {
  if (!CanEditFaces(cursor)) return;
  cursor.Document().KeepState("Join Triangles");
  SayOf(cursor, "Made", JoinTriangles(cursor.Document().Model(), FacesToEdit(cursor)), "quad", "quads");
}

bool MakeFaceOfSelected(CEditCursor& cursor, const SUnitNormal& to_viewer) {
  if (!CanMakeFaceHere(cursor)) return false;
  CTarnDoc& document = cursor.Document();
  CBinModel& model = document.Model();
  const std::vector<int32_t> picked = model.PickedVertices();
  std::vector<int32_t> corners;
  if (!picked.empty()) corners = TurnedToward(model, picked, to_viewer);
  // One that was clicked crosswise, and a rubber band, go by how the vertices lie.
  if (corners.empty()) corners = OrderedToward(model, model.Selected(EGroupKind::kVertices), to_viewer);
  if (corners.empty()) {
    return document.ShowError(
        "As seen from here, these vertices make no face that bulges at every corner. Turn the view, or select others.");
  }
  SAddFaceInput input;
  input.corners = {-1, -1, -1, -1};
  std::copy(corners.begin(), corners.end(), input.corners.begin());
  const CBinFace* like = cursor.FaceObject();
  input.texture = like == nullptr ? std::min(0, model.TextureCount() - 1) : model.TextureIndex(like->Texture());
  input.type = like != nullptr ? like->Type() : static_cast<uint32_t>(document.Settings().def_face_type);
  if (input.texture < 0) input.type = kFaceUntextured;
  if (!AddFace(document, input)) return false;
  cursor.SetFace(model.FaceCount() - 1);
  return true;
}

bool Bridge(CEditCursor& cursor, const SUnitNormal& to_viewer) {
  if (!CanBridge(cursor)) return false;
  CTarnDoc& document = cursor.Document();
  CBinModel& model = document.Model();
  const int32_t before = model.FaceCount();
  const std::vector<int32_t> vertices = model.Selected(EGroupKind::kVertices);
  const std::vector<int32_t> faces = model.Selected(EGroupKind::kFaces);
  const std::string fault = vertices.size() >= 4 ? BridgeVertices(model, vertices, to_viewer)
                                                 : BridgeFaces(model, faces[0], faces[1], to_viewer);
  if (!fault.empty()) return document.ShowError(fault);
  GoOnWith(cursor, "Bridged with", model.FaceCount() - before);
  return true;
}

bool Tunnel(CEditCursor& cursor, const SUnitNormal& to_viewer) {
  if (!CanTunnel(cursor)) return false;
  CTarnDoc& document = cursor.Document();
  CBinModel& model = document.Model();
  const std::vector<int32_t> faces = model.Selected(EGroupKind::kFaces);
  const auto left = model.FaceCount() - static_cast<int32_t>(faces.size());
  document.KeepState("Tunnel");
  if (const std::string fault = TunnelFaces(model, faces, to_viewer); !fault.empty()) return document.ShowError(fault);
  GoOnWith(cursor, "Made a tunnel of", model.FaceCount() - left);
  return true;
}

void SnapSelected(CEditCursor& cursor, int32_t spacing) {
  if (!CanEditSelectedVertices(cursor) || spacing < 1) return;
  cursor.Document().KeepState("Snap To Grid");
  CBinModel& model = cursor.Document().Model();
  SayOf(cursor, "Moved", SnapToGrid(model, model.Selected(EGroupKind::kVertices), spacing), "vertex", "vertices");
}

std::string ParseVertices(const std::string& text, std::vector<SPoint>& points) {
  points.clear();
  std::istringstream lines(text);
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    std::ranges::replace_if(
        line, [](char c) { return c == ',' || c == ';'; }, ' ');
    std::istringstream words(line);
    std::vector<std::optional<int32_t>> coordinates;
    for (std::string word; words >> word;)
      coordinates.push_back(ParseInteger(word));
    if (coordinates.empty()) continue;
    const bool is_good = coordinates.size() == 3 && coordinates[0] && coordinates[1] && coordinates[2];
    if (!is_good) return Format("Line %d is not three whole numbers.", number);
    points.push_back({*coordinates[0], *coordinates[1], *coordinates[2]});
  }
  return points.empty() ? "Type a vertex a line: x, y and z." : "";
}

void AddVertices(CEditCursor& cursor, const std::vector<SPoint>& points) {
  if (!CanEditModel(cursor.Document()) || points.empty()) return;
  CBinModel& model = cursor.Document().Model();
  {
    const CBinModel::CBusy one_change(model);
    for (const SPoint& point : points)
      model.AddVertex(point);
  }
  SelectLast(model, EGroupKind::kVertices, static_cast<int32_t>(points.size()));
  SayOf(cursor, "Added", static_cast<int64_t>(points.size()), "vertex", "vertices");
}

}  // namespace veldra

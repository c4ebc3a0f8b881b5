#include "editing/selectcommands.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "editing/facecommands.h"
#include "editing/vertexcommands.h"
#include "model/normals.h"
#include "platform/text.h"

namespace veldra {

namespace {

using Marks = std::vector<bool>;

Marks Marked(const std::vector<int32_t>& items, int32_t count) {
  Marks marks(static_cast<size_t>(count));
  for (const int32_t item : items)
    marks[static_cast<size_t>(item)] = true;
  return marks;
}

std::vector<int32_t> Listed(const Marks& marks) {
  std::vector<int32_t> items;
  for (size_t i = 0; i < marks.size(); ++i)
    if (marks[i]) items.push_back(static_cast<int32_t>(i));
  return items;
}

/// True the first time.
bool Mark(Marks& marks, int32_t item) {
  const auto place = static_cast<size_t>(item);
  const bool is_new = !marks[place];
  marks[place] = true;
  return is_new;
}

void SayCounts(CEditCursor& cursor) {
  const CBinModel& model = cursor.Model();
  cursor.Document().Say("Selected " + Counted(model.SelectedCount(EGroupKind::kFaces), "face", "faces") + ", " +
                        Counted(model.SelectedCount(EGroupKind::kVertices), "vertex", "vertices"));
}

void SelectThese(CEditCursor& cursor, EGroupKind kind, const std::vector<int32_t>& items) {
  cursor.Document().Model().Select(kind, items, true);
}

/// Calls VISIT with both ends of each edge of each face.
template <typename Visit>
void ForEachEdge(const CBinModel& model, const Visit& visit) {
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    const auto corners = model.Face(i).Corners();
    for (size_t k = 0; k < corners.size(); ++k)
      visit(corners[k]->Index(), corners[(k + 1) % corners.size()]->Index());
  }
}

/// The vertices that hang together with those of STARTS, which are among them.
Marks LinkedVertices(const CBinModel& model, const std::vector<int32_t>& starts) {
  Marks reached = Marked(starts, model.VertexCount());
  std::vector<int32_t> waiting = starts;
  Marks walked(static_cast<size_t>(model.FaceCount()));
  while (!waiting.empty()) {
    const int32_t vertex = waiting.back();
    waiting.pop_back();
    for (const CBinFace* face : model.Vertex(vertex).Faces()) {
      if (!Mark(walked, face->Index())) continue;
      for (const CBinVertex* corner : face->Corners())
        if (Mark(reached, corner->Index())) waiting.push_back(corner->Index());
    }
  }
  return reached;
}

std::vector<int32_t> CornersOfFaces(const CBinModel& model, const std::vector<int32_t>& faces) {
  Marks corners(static_cast<size_t>(model.VertexCount()));
  for (const int32_t face : faces)
    for (const CBinVertex* corner : model.Face(face).Corners())
      Mark(corners, corner->Index());
  return Listed(corners);
}

/// All faces for which HAS says yes.
template <typename Has>
std::vector<int32_t> FacesWith(const CBinModel& model, const Has& has) {
  std::vector<int32_t> faces;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    if (has(model.Face(i))) faces.push_back(i);
  return faces;
}

double FaceArea(const CBinFace& face) {
  const auto corner = [&](int k) { return ToVector(face.Corner(k)->Position()); };
  Vector3 area = Cross(corner(1) - corner(0), corner(2) - corner(0));
  if (face.CornerCount() == 4) area = area + Cross(corner(2) - corner(0), corner(3) - corner(0));
  return Length(area) / 2;
}

std::vector<int32_t> FacesOfSameGroups(const CBinModel& model, const std::vector<int32_t>& starts) {
  const Marks is_start = Marked(starts, model.FaceCount());
  Marks found = is_start;
  for (const CBinGroup& group : model.FaceGroups()) {
    const auto& members = group.Members();
    const auto begins_here = [&](int32_t member) { return is_start[static_cast<size_t>(member)]; };
    if (!std::ranges::any_of(members, begins_here)) continue;
    for (const int32_t member : members)
      Mark(found, member);
  }
  return Listed(found);
}

std::vector<int32_t> FacesLike(const CBinModel& model, const CBinFace& one, ESame same) {
  if (same == ESame::kFacing) {
    CalcFaceNormal(one);
    return FacesFacing(model, one.UnitNormal(), kSameFacingDegrees);
  }
  const double area = FaceArea(one);
  return FacesWith(model, [&](const CBinFace& face) {
    const double other = FaceArea(face);
    return std::abs(area - other) <= kSimilarSize * std::max(area, other);
  });
}

std::vector<int32_t> SameFaces(const CEditCursor& cursor, ESame same) {
  const CBinModel& model = cursor.Model();
  const std::vector<int32_t> starts = FacesToEdit(cursor);
  std::set<const CBinTexture*> textures;
  std::set<uint32_t> types;
  for (const int32_t start : starts) {
    textures.insert(model.Face(start).Texture());
    types.insert(model.Face(start).Type());
  }
  switch (same) {
    case ESame::kTexture:
      return FacesWith(model, [&](const CBinFace& face) { return textures.contains(face.Texture()); });
    case ESame::kType:
      return FacesWith(model, [&](const CBinFace& face) { return types.contains(face.Type()); });
    case ESame::kGroup:
      return FacesOfSameGroups(model, starts);
    case ESame::kFacing:
    case ESame::kSize:
      break;
  }
  const CBinFace* const current = cursor.FaceObject();
  return FacesLike(model, current != nullptr ? *current : model.Face(starts.front()), same);
}

/// Those of KIND that touch none that is not selected.
std::vector<int32_t> Rim(const CBinModel& model, EGroupKind kind) {
  Marks rim(static_cast<size_t>(kind == EGroupKind::kFaces ? model.FaceCount() : model.VertexCount()));
  if (kind == EGroupKind::kVertices) {
    ForEachEdge(model, [&](int32_t a, int32_t b) {
      if (model.Vertex(a).IsSelected() == model.Vertex(b).IsSelected()) return;
      Mark(rim, model.Vertex(a).IsSelected() ? a : b);
    });
    return Listed(rim);
  }
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    if (model.Face(i).IsSelected()) continue;
    for (const CBinVertex* corner : model.Face(i).Corners())
      for (const CBinFace* face : corner->Faces())
        if (face->IsSelected()) Mark(rim, face->Index());
  }
  return Listed(rim);
}

/// Over the edge from corner K of FACE to the next: the other quad there, and which of its corners the edge opposite
/// begins with; null where it does not go on, or not in one way only.
const CBinFace* QuadBeyond(const CBinFace& face, int& k) {
  const CBinVertex* const from = face.Corner(k);
  const CBinVertex* const to = face.Corner((k + 1) % 4);
  const CBinFace* beyond = nullptr;
  for (const CBinFace* other : from->Faces()) {
    if (other == &face || !other->HasCorner(to)) continue;
    if (beyond != nullptr || other->CornerCount() != 4) return nullptr;
    beyond = other;
  }
  if (beyond == nullptr) return nullptr;
  int at_from = 0;
  while (beyond->Corner(at_from) != from)
    ++at_from;
  const bool runs_back = beyond->Corner((at_from + 3) % 4) == to;
  if (!runs_back && beyond->Corner((at_from + 1) % 4) != to) return nullptr;  // corner to corner
  const int shared = runs_back ? (at_from + 3) % 4 : at_from;
  k = (shared + 2) % 4;
  return beyond;
}

}  // namespace

bool CanSelectFrom(const CEditCursor& cursor) {
  return HasCurrentFace(cursor) || HasSelectedFaces(cursor);
}

bool CanSelectAround(const CEditCursor& cursor) {
  return CanSelectFrom(cursor) || HasSelectedVertices(cursor);
}

bool CanShrinkSelection(const CEditCursor& cursor) {
  return HasSelectedFaces(cursor) || HasSelectedVertices(cursor);
}

bool CanSelectLoop(const CEditCursor& cursor) {
  const CBinFace* const face = cursor.FaceObject();
  return face != nullptr && face->CornerCount() == 4;
}

void SelectLinked(CEditCursor& cursor) {
  const CBinModel& model = cursor.Model();
  const std::vector<int32_t> vertices = model.Selected(EGroupKind::kVertices);
  if (CanSelectFrom(cursor)) {
    const Marks reached = LinkedVertices(model, CornersOfFaces(model, FacesToEdit(cursor)));
    SelectThese(cursor, EGroupKind::kFaces, FacesWith(model, [&](const CBinFace& face) {
                  return reached[static_cast<size_t>(face.Corner(0)->Index())];
                }));
  }
  if (!vertices.empty()) SelectThese(cursor, EGroupKind::kVertices, Listed(LinkedVertices(model, vertices)));
  SayCounts(cursor);
}

void GrowSelection(CEditCursor& cursor) {
  const CBinModel& model = cursor.Model();
  if (CanSelectFrom(cursor)) {
    Marks grown(static_cast<size_t>(model.FaceCount()));
    for (const int32_t corner : CornersOfFaces(model, FacesToEdit(cursor)))
      for (const CBinFace* face : model.Vertex(corner).Faces())
        Mark(grown, face->Index());
    SelectThese(cursor, EGroupKind::kFaces, Listed(grown));
  }
  Marks touched(static_cast<size_t>(model.VertexCount()));
  ForEachEdge(model, [&](int32_t a, int32_t b) {
    if (model.Vertex(a).IsSelected()) Mark(touched, b);
    if (model.Vertex(b).IsSelected()) Mark(touched, a);
  });
  SelectThese(cursor, EGroupKind::kVertices, Listed(touched));
  SayCounts(cursor);
}

void ShrinkSelection(CEditCursor& cursor) {
  for (const EGroupKind kind : {EGroupKind::kFaces, EGroupKind::kVertices})
    cursor.Document().Model().Select(kind, Rim(cursor.Model(), kind), false);
  SayCounts(cursor);
}

void SelectSame(CEditCursor& cursor, ESame same) {
  if (!CanSelectFrom(cursor)) return;
  SelectThese(cursor, EGroupKind::kFaces, SameFaces(cursor, same));
  SayCounts(cursor);
}

std::vector<int32_t> QuadLoop(const CBinModel& model, int32_t face, int corner) {
  std::vector<int32_t> loop = {face};
  std::set<const CBinFace*> seen = {&model.Face(face)};
  for (const int first : {corner, (corner + 2) % 4}) {
    int k = first;
    const CBinFace* at = QuadBeyond(model.Face(face), k);
    for (; at != nullptr && seen.insert(at).second; at = QuadBeyond(*at, k))
      loop.push_back(at->Index());
  }
  return loop;
}

void SelectQuadLoop(CEditCursor& cursor, bool across) {
  if (!CanSelectLoop(cursor)) return;
  const int corner = (std::max(cursor.Corner(), 0) + (across ? 1 : 0)) % 4;
  SelectThese(cursor, EGroupKind::kFaces, QuadLoop(cursor.Model(), cursor.Face(), corner));
  SayCounts(cursor);
}

// --- Hiding ----------------------------------------------------------------------------------------------------------

namespace {

void HideFaces(CEditCursor& cursor, const std::vector<int32_t>& faces) {
  CBinModel& model = cursor.Document().Model();
  model.Hide(faces);
  if (cursor.Face() >= 0 && cursor.FaceObject()->IsHidden()) cursor.SetFace(-1);
  if (cursor.Vertex() >= 0 && cursor.VertexObject()->IsHidden()) cursor.SetVertex(-1);
  cursor.Document().Say("Hidden: " + Counted(model.HiddenCount(), "face", "faces"));
}

}  // namespace

bool HasHidden(const CEditCursor& cursor) {
  return cursor.HiddenCount() > 0;
}

void HideSelected(CEditCursor& cursor) {
  HideFaces(cursor, FacesToEdit(cursor));
}

void HideOthers(CEditCursor& cursor) {
  const std::vector<int32_t> kept = FacesToEdit(cursor);
  std::vector<int32_t> others;
  for (int32_t i = 0; i < cursor.Model().FaceCount(); ++i)
    if (!std::ranges::binary_search(kept, i)) others.push_back(i);
  HideFaces(cursor, others);
}

void ShowHidden(CEditCursor& cursor) {
  const int32_t count = cursor.HiddenCount();
  cursor.Document().Model().ShowAll();
  cursor.Document().Say("Shown again: " + Counted(count, "face", "faces"));
}

}  // namespace veldra

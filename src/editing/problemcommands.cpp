#include "editing/problemcommands.h"

#include <algorithm>

#include "document/statebefore.h"
#include "model/modelchecker.h"
#include "model/modelmends.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Of faces or of vertices; the others are counted.
constexpr size_t kMostNamed = 6;

constexpr SProblemKind kProblemKinds[kFindingCount] = {
    {"Texture not found",
     "Put the file into the texture folder or beside the model and open the model again, or give the faces another "
     "texture.",
     "Replace Texture...", "", "replaceTexture"},
    {"Texture size", "The game takes textures of 64 and 256 texels a side. The texture can be given another size.",
     "Size and Colours...", "", "changeTexture"},
    {"Texture name too long",
     "A model file keeps 12 characters of a name, and the texture is then not found. Give its file a shorter name, and "
     "replace the texture by it.",
     "Replace Texture...", "", "replaceTexture"},
    {"Face without area",
     "Its corners lie on one line, so nobody sees it. Mending deletes it, and vertices that only it used.",
     "Delete Face", "Delete Faces Without Area"},
    {"Bent quad",
     "Its four corners do not lie in one plane, so it can look different in the game. Mending splits it into two "
     "triangles.",
     "Split Quad", "Split Bent Quads"},
    {"Face twice", "Two faces with the same corners in the same order. Mending deletes the later one.", "Delete Copy",
     "Delete Copies"},
    {"Corner named twice", "Opening the model has taken the corner out. Save the model."},
    {"Vertices in one place",
     "Mending makes one vertex of them. Leave them where faces are meant to move apart, or are drawn with an edge "
     "between them.",
     "Merge Vertices", "Merge Vertices in One Place"},
    {"Unused vertex", "No face has it as a corner. Mending deletes it.", "Delete Vertex", "Delete Unused Vertices"},
    {"Off the texture", "The game cannot repeat textures. Mending brings the corner back to the edge of the texture.",
     "Bring Back", "Bring Back Onto the Texture"},
    {"Model too large", "Farther apart than this, distances wrap in the game. Make the model smaller.", "Resize...", "",
     "resize"},
};

/// "faces 3, 7 and 12 more"
std::string NumbersText(const char* one, const char* many, const std::vector<int32_t>& numbers) {
  if (numbers.empty()) return "";
  std::string text = numbers.size() == 1 ? one : many;
  const size_t named = std::min(numbers.size(), kMostNamed);
  for (size_t i = 0; i < named; ++i)
    text += (i == 0 ? " " : ", ") + std::to_string(numbers[i]);
  return text + (named < numbers.size() ? Format(" and %zu more", numbers.size() - named) : "");
}

std::vector<SFinding> AllOf(const CBinModel& model, EFinding kind) {
  CModelChecker checker(CheckedOf(model));
  checker.Go(SIZE_MAX);
  std::vector<SFinding> findings = checker.TakeFindings();
  std::erase_if(findings, [&](const SFinding& finding) { return finding.kind != kind; });
  return findings;
}

/// Of FINDINGS, which can all be mended.
const char* StepName(std::span<const SFinding> findings) {
  const auto is_other = [&](const SFinding& other) { return other.kind != findings.front().kind; };
  if (std::ranges::any_of(findings, is_other)) return "Mend Problems";
  const SProblemKind& kind = KindOfProblem(findings.front().kind);
  return findings.size() == 1 ? kind.mend : kind.mend_all;
}

}  // namespace

const SProblemKind& KindOfProblem(EFinding kind) {
  return kProblemKinds[static_cast<size_t>(kind)];
}

std::string PlaceText(const SFinding& finding) {
  std::string faces = NumbersText("Face", "Faces", finding.faces);
  if (finding.vertices.empty()) return faces;
  return faces.empty() ? NumbersText("Vertex", "Vertices", finding.vertices)
                       : faces + ", " + NumbersText("vertex", "vertices", finding.vertices);
}

bool SelectProblem(CEditCursor& cursor, const SFinding& finding) {
  CBinModel& model = cursor.Document().Model();
  const auto is_beyond = [](int32_t count) { return [count](int32_t index) { return index >= count; }; };
  if (std::ranges::any_of(finding.faces, is_beyond(model.FaceCount())) ||
      std::ranges::any_of(finding.vertices, is_beyond(model.VertexCount()))) {
    cursor.Document().Say("The model that is open has no longer what this is about.");
    return false;
  }
  const auto is_hidden = [&](int32_t face) { return model.Face(face).IsHidden(); };
  const auto is_vertex_hidden = [&](int32_t vertex) { return model.Vertex(vertex).IsHidden(); };
  if (std::ranges::all_of(finding.faces, is_hidden) && std::ranges::all_of(finding.vertices, is_vertex_hidden) &&
      !(finding.faces.empty() && finding.vertices.empty())) {
    cursor.Document().Say("What this is about is hidden. Select > Show All shows it again.");
    return false;
  }
  model.SelectAll(EGroupKind::kFaces, false);
  model.SelectAll(EGroupKind::kVertices, false);
  model.Select(EGroupKind::kFaces, finding.faces, true);
  model.Select(EGroupKind::kVertices, finding.vertices, true);
  if (!finding.faces.empty()) cursor.SetFace(*std::ranges::find_if_not(finding.faces, is_hidden));
  if (!finding.vertices.empty()) cursor.SetVertex(*std::ranges::find_if_not(finding.vertices, is_vertex_hidden));
  return true;
}

size_t MendProblems(CTarnDoc& document, std::span<const SFinding> findings) {
  std::vector<SFinding> mended;
  std::ranges::copy_if(findings, std::back_inserter(mended), CanMend, &SFinding::kind);
  if (mended.empty() || document.IsReadOnly()) return 0;
  const char* const name = StepName(mended);
  const CStep one_step(document, name);
  const CStateBefore state(document, name);
  MendModel(document.Model(), mended);
  document.Say(
      Format("%s: %s mended", name, Counted(static_cast<int64_t>(mended.size()), "problem", "problems").c_str()));
  return mended.size();
}

size_t MendAllProblems(CTarnDoc& document, EFinding kind) {
  return MendProblems(document, AllOf(document.Model(), kind));
}

}  // namespace veldra

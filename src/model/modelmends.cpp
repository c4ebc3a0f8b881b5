#include "model/modelmends.h"

#include <algorithm>
#include <array>
#include <vector>

#include "model/meshedit.h"
#include "model/modeltools.h"

namespace veldra {

namespace {

using Numbers = std::vector<int32_t>;

void SortOnce(Numbers& numbers) {
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// What is to be done, by what it is done to: ascending, each once.
struct SWork {
  explicit SWork(std::span<const SFinding> findings) {
    for (const SFinding& finding : findings)
      Add(finding);
    for (Numbers* numbers : {&quads, &copies, &empty, &off, &unused})
      SortOnce(*numbers);
    // Half of a copy that was split would stay.
    std::erase_if(quads, [this](int32_t face) { return std::ranges::binary_search(copies, face); });
  }

  void Add(const SFinding& finding) {
    if (finding.kind == EFinding::kBentQuad) quads.push_back(finding.faces.front());
    if (finding.kind == EFinding::kDoubleFace) copies.push_back(finding.faces.back());
    if (finding.kind == EFinding::kNoArea) empty.push_back(finding.faces.front());
    if (finding.kind == EFinding::kOffTexture) off.push_back(finding.faces.front());
    if (finding.kind == EFinding::kUnusedVertex) unused.push_back(finding.vertices.front());
    if (finding.kind == EFinding::kSamePlace) places.push_back(finding.vertices);
  }

  Numbers quads;
  Numbers copies;
  Numbers empty;
  Numbers off;
  Numbers unused;
  std::vector<Numbers> places;
};

void BringOntoTexture(CBinModel& model, const Numbers& faces) {
  std::vector<std::array<STexCoord, 4>> coords;
  for (const int32_t index : faces) {
    coords.emplace_back();
    for (int k = 0; k < model.Face(index).CornerCount(); ++k) {
      const STexCoord& coord = model.Face(index).TexCoord(k);
      coords.back()[static_cast<size_t>(k)] = {std::clamp(coord.u, 0.0, 1.0), std::clamp(coord.v, 0.0, 1.0)};
    }
  }
  if (!faces.empty()) model.SetTexCoords(faces, coords);
}

/// COPIES go, and EMPTY with the vertices that only they use, which come to UNUSED.
void RemoveFaces(CBinModel& model, Numbers copies, const Numbers& empty, Numbers& unused) {
  for (const int32_t index : empty)
    for (const CBinVertex* corner : model.Face(index).Corners())
      unused.push_back(corner->Index());
  copies.insert(copies.end(), empty.begin(), empty.end());
  SortOnce(copies);
  if (!copies.empty()) model.RemoveFaces(copies);
  std::erase_if(unused, [&](int32_t vertex) { return !model.Vertex(vertex).Faces().Empty(); });
  SortOnce(unused);
}

/// UNUSED are about to go: what PLACES name will have lower numbers.
void Renumber(std::vector<Numbers>& places, const Numbers& unused) {
  for (Numbers& vertices : places) {
    std::erase_if(vertices, [&](int32_t vertex) { return std::ranges::binary_search(unused, vertex); });
    for (int32_t& vertex : vertices)
      vertex -= static_cast<int32_t>(std::ranges::lower_bound(unused, vertex) - unused.begin());
  }
}

}  // namespace

bool CanMend(EFinding kind) {
  switch (kind) {
    case EFinding::kNoArea:
    case EFinding::kBentQuad:
    case EFinding::kDoubleFace:
    case EFinding::kSamePlace:
    case EFinding::kUnusedVertex:
    case EFinding::kOffTexture:
      return true;
    case EFinding::kMissingTexture:
    case EFinding::kTextureSize:
    case EFinding::kLongName:
    case EFinding::kRepeatedCorner:
    case EFinding::kTooLarge:
      break;
  }
  return false;
}

/// First what leaves all numbers as they are, then what changes those of faces, then those of vertices.
void MendModel(CBinModel& model, std::span<const SFinding> findings) {
  SWork work(findings);
  BringOntoTexture(model, work.off);
  if (!work.quads.empty()) SplitQuads(model, work.quads);
  RemoveFaces(model, std::move(work.copies), work.empty, work.unused);
  Renumber(work.places, work.unused);
  if (!work.unused.empty()) model.TakeVertices(work.unused);
  if (!work.places.empty()) MergeClusters(model, work.places);
}

}  // namespace veldra

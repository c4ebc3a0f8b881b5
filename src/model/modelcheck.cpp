#include "model/modelcheck.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "model/binformat.h"
#include "model/exactgeometry.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr uint32_t kTextureEnd = 0x00FFFFFF;

class CModelCheck {
 public:
  CModelCheck(const SModelRecords& model, const FindTextureWidth& texture_width)
      : model_(model), texture_width_(texture_width) {}

  std::vector<SFinding> Run() {
    for (size_t i = 0; i < model_.textures.size(); ++i)
      CheckTexture(static_cast<int32_t>(i));
    for (size_t i = 0; i < model_.faces.size(); ++i)
      CheckFace(static_cast<int32_t>(i));
    CheckDoubles();
    CheckPlaces();
    CheckUse();
    CheckExtent();
    std::ranges::stable_sort(findings_, {}, &SFinding::kind);
    return std::move(findings_);
  }

 private:
  using SFace = SModelRecords::SFace;

  void Add(EFinding kind, std::string text, std::vector<int32_t> faces, std::vector<int32_t> vertices = {},
           std::string texture = {}) {
    findings_.push_back({kind, std::move(text), std::move(faces), std::move(vertices), std::move(texture)});
  }

  // --- Textures --------------------------------------------------------------------------------------------------

  std::vector<int32_t> FacesWith(int32_t texture) const {
    std::vector<int32_t> faces;
    for (size_t i = 0; i < model_.faces.size(); ++i)
      if (std::ranges::find(model_.faces[i].textures, texture) != model_.faces[i].textures.end())
        faces.push_back(static_cast<int32_t>(i));
    return faces;
  }

  void CheckTexture(int32_t index) {
    const SModelRecords::STexture& texture = model_.textures[static_cast<size_t>(index)];
    const std::string name = ToUtf8(texture.name);
    const std::vector<int32_t> faces = FacesWith(index);
    if (texture.name.size() > kTextureNameLength)
      Add(EFinding::kLongName,
          Format("the texture name %s has %zu characters, %zu fit", name.c_str(), texture.name.size(),
                 kTextureNameLength),
          faces, {}, name);
    const auto width = texture_width_(texture.file_name);
    if (!width)
      Add(EFinding::kMissingTexture, Format("the texture %s is not found", name.c_str()), faces, {}, name);
    else if (*width == 0)
      Add(EFinding::kTextureSize, Format("the file of the texture %s is not a texture", name.c_str()), faces, {}, name);
    else if (!IsGameTextureSize(*width))
      Add(EFinding::kTextureSize,
          Format("the texture %s is %d texels wide, the game takes 64 and 256", name.c_str(), *width), faces, {}, name);
  }

  // --- Faces -----------------------------------------------------------------------------------------------------

  std::vector<SPoint> PointsOf(const SFace& face) const {
    std::vector<SPoint> points;
    points.reserve(face.corners.size());
    for (const SModelRecords::SCorner& corner : face.corners)
      points.push_back(model_.vertices[corner.vertex]);
    return points;
  }

  void CheckFace(int32_t index) {
    const SFace& face = model_.faces[static_cast<size_t>(index)];
    const std::vector<SPoint> points = PointsOf(face);
    const bool has_area = points.size() >= 3 && ExactArea(points) != ExactVector{};
    if (!has_area) Add(EFinding::kNoArea, Format("face %d has no area", index), {index});
    if (points.size() == 4) {
      const double bend = Bend(points);
      if (bend > kLargestBend)
        Add(EFinding::kBentQuad, Format("face %d, a quad, is bent by %.1f units", index, bend), {index});
    }
    CheckCorners(index, face);
    CheckCoords(index, face);
  }

  static double Bend(const std::vector<SPoint>& p) {
    const auto volume = static_cast<double>(ExactVolume(p[0], p[1], p[2], p[3]));
    double largest = 0;
    for (size_t k = 0; k < 4; ++k) {
      const std::array<SPoint, 3> three = {p[k], p[(k + 1) % 4], p[(k + 2) % 4]};
      largest = std::max(largest, Length(ToVector(ExactArea(three))));
    }
    return largest > 0 ? std::abs(volume) / largest : 0;
  }

  void CheckCorners(int32_t index, const SFace& face) {
    std::vector<int32_t> repeated;
    for (size_t k = 0; k < face.corners.size(); ++k) {
      const auto vertex = static_cast<int32_t>(face.corners[k].vertex);
      const auto is_same = [&](const SModelRecords::SCorner& other) { return other.vertex == face.corners[k].vertex; };
      const auto before = face.corners.begin() + static_cast<std::ptrdiff_t>(k);
      if (std::any_of(face.corners.begin(), before, is_same) && std::ranges::find(repeated, vertex) == repeated.end())
        repeated.push_back(vertex);
    }
    if (!repeated.empty())
      Add(EFinding::kRepeatedCorner, Format("face %d names vertex %d more than once", index, repeated.front()), {index},
          repeated);
  }

  void CheckCoords(int32_t index, const SFace& face) {
    std::vector<int32_t> off;
    for (const SModelRecords::SCorner& corner : face.corners)
      if (corner.u > kTextureEnd || corner.v > kTextureEnd) off.push_back(static_cast<int32_t>(corner.vertex));
    if (!off.empty())
      Add(EFinding::kOffTexture, Format("face %d has a corner off its texture, at vertex %d", index, off.front()),
          {index}, off);
  }

  /// The corners from the lowest one on: the same for two that are one polygon.
  static std::vector<uint32_t> PolygonOf(const SFace& face) {
    std::vector<uint32_t> corners;
    corners.reserve(face.corners.size());
    for (const SModelRecords::SCorner& corner : face.corners)
      corners.push_back(corner.vertex);
    // Of all turns the smallest: a corner that comes twice leaves more than one beginning.
    std::vector<uint32_t> smallest = corners;
    for (size_t k = 1; k < corners.size(); ++k) {
      std::rotate(corners.begin(), corners.begin() + 1, corners.end());
      smallest = std::min(smallest, corners);
    }
    return smallest;
  }

  void CheckDoubles() {
    std::map<std::vector<uint32_t>, int32_t> first;
    for (size_t i = 0; i < model_.faces.size(); ++i) {
      if (model_.faces[i].corners.size() < 3) continue;
      const auto index = static_cast<int32_t>(i);
      const auto [row, is_new] = first.try_emplace(PolygonOf(model_.faces[i]), index);
      if (!is_new)
        Add(EFinding::kDoubleFace, Format("face %d has the corners of face %d", index, row->second),
            {row->second, index});
    }
  }

  // --- Vertices --------------------------------------------------------------------------------------------------

  void CheckPlaces() {
    std::map<std::tuple<int32_t, int32_t, int32_t>, std::vector<int32_t>> places;
    for (size_t i = 0; i < model_.vertices.size(); ++i) {
      const SPoint& p = model_.vertices[i];
      places[{p.x, p.y, p.z}].push_back(static_cast<int32_t>(i));
    }
    std::vector<std::vector<int32_t>> shared;
    for (auto& [place, vertices] : places)
      if (vertices.size() > 1) shared.push_back(std::move(vertices));
    std::ranges::sort(shared);
    for (std::vector<int32_t>& vertices : shared) {
      const SPoint& p = model_.vertices[static_cast<size_t>(vertices.front())];
      std::string text = Format("%zu vertices lie at (%d, %d, %d)", vertices.size(), p.x, p.y, p.z);
      Add(EFinding::kSamePlace, std::move(text), {}, std::move(vertices));
    }
  }

  void CheckUse() {
    std::vector<bool> is_used(model_.vertices.size());
    for (const SFace& face : model_.faces)
      for (const SModelRecords::SCorner& corner : face.corners)
        is_used[corner.vertex] = true;
    for (size_t i = 0; i < is_used.size(); ++i)
      if (!is_used[i])
        Add(EFinding::kUnusedVertex, Format("no face uses vertex %zu", i), {}, {static_cast<int32_t>(i)});
  }

  void CheckExtent() {
    const std::pair<char, int32_t SPoint::*> axes[] = {{'x', &SPoint::x}, {'y', &SPoint::y}, {'z', &SPoint::z}};
    if (model_.vertices.empty()) return;
    for (const auto& [name, axis] : axes) {
      const auto [low, high] = std::ranges::minmax(model_.vertices, {}, axis);
      const int64_t extent = int64_t{high.*axis} - low.*axis;
      if (extent <= kLargestExtent) continue;
      Add(EFinding::kTooLarge,
          Format("the model is %lld units long in %c, distances wrap above %lld", static_cast<long long>(extent), name,
                 static_cast<long long>(kLargestExtent)),
          {});
      return;
    }
  }

  const SModelRecords& model_;
  const FindTextureWidth& texture_width_;
  std::vector<SFinding> findings_;
};

}  // namespace

const char* FindingName(EFinding kind) {
  constexpr const char* kNames[] = {"missing-texture", "texture-size", "long-name",       "no-area",
                                    "bent-quad",       "double-face",  "repeated-corner", "same-place",
                                    "unused-vertex",   "off-texture",  "too-large"};
  return kNames[static_cast<size_t>(kind)];
}

std::vector<SFinding> CheckModel(const SModelRecords& model, const FindTextureWidth& texture_width) {
  return CModelCheck(model, texture_width).Run();
}

}  // namespace veldra

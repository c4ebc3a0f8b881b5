#include "model/modelchecker.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <utility>

#include "model/binformat.h"
#include "model/exactgeometry.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr uint32_t kNoCorner = UINT32_MAX;

/// A model that is open, seen as the file that it would become.
class CCheckedBinModel : public CCheckedModel {
 public:
  explicit CCheckedBinModel(const CBinModel& model) : model_(model) {
    for (int32_t i = 0; i < model.TextureCount(); ++i)
      if (const CBinTexture& entry = model.Texture(i); entry.UseCount() > 0) AddEntry(entry);
  }

  size_t VertexCount() const override { return static_cast<size_t>(model_.VertexCount()); }
  SPoint Vertex(size_t index) const override { return model_.Vertex(static_cast<int32_t>(index)).Position(); }
  size_t FaceCount() const override { return static_cast<size_t>(model_.FaceCount()); }

  SCheckedFace Face(size_t index) const override {
    const CBinFace& from = model_.Face(static_cast<int32_t>(index));
    SCheckedFace face = {.count = static_cast<size_t>(from.CornerCount())};
    const bool has_coords = from.Type() != kFaceUntextured;
    const auto is_off = [](double part) { return part < 0.0 || part > 1.0; };
    for (size_t k = 0; k < face.count; ++k) {
      const STexCoord& coord = from.TexCoord(static_cast<int>(k));
      face.vertices[k] = static_cast<uint32_t>(from.Corner(static_cast<int>(k))->Index());
      face.is_off[k] = has_coords && (is_off(coord.u) || is_off(coord.v));
    }
    const auto entry = has_coords ? positions_.find(from.Texture()) : positions_.end();
    if (entry != positions_.end()) face.textures = entry->second;
    return face;
  }

  std::vector<SCheckedTexture> Textures() const override { return textures_; }

 private:
  void AddEntry(const CBinTexture& entry) {
    std::vector<int32_t>& positions = positions_[&entry];
    for (const CBinTexture::SFrame& frame : entry.Frames()) {
      const auto known = std::ranges::find(textures_, frame.name, &SCheckedTexture::name);
      positions.push_back(static_cast<int32_t>(known - textures_.begin()));
      if (known != textures_.end()) continue;
      const bool is_there = !frame.image->is_stand_in && FoldName(frame.image->name) == FoldName(frame.name);
      textures_.push_back({frame.name, is_there ? std::optional<int>(frame.image->size) : std::nullopt});
    }
  }

  const CBinModel& model_;
  std::vector<SCheckedTexture> textures_;
  std::map<const CBinTexture*, std::vector<int32_t>> positions_;
};

uint64_t HashOf(std::initializer_list<uint32_t> words) {
  uint64_t hash = 0;
  for (const uint32_t word : words) {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32;
  }
  return hash;
}

double Bend(std::span<const SPoint> p) {
  const auto volume = static_cast<double>(ExactVolume(p[0], p[1], p[2], p[3]));
  double largest = 0;
  for (size_t k = 0; k < 4; ++k) {
    const std::array<SPoint, 3> three = {p[k], p[(k + 1) % 4], p[(k + 2) % 4]};
    largest = std::max(largest, Length(ToVector(ExactArea(three))));
  }
  return largest > 0 ? std::abs(volume) / largest : 0;
}

}  // namespace

std::unique_ptr<CCheckedModel> CheckedOf(const CBinModel& model) {
  return std::make_unique<CCheckedBinModel>(model);
}

CIndexTable::CIndexTable(size_t most) : slots_(std::bit_ceil(2 * most + 1), -1) {}

CModelChecker::CModelChecker(std::unique_ptr<CCheckedModel> model, size_t most)
    : model_(std::move(model)),
      most_(most),
      count_(model_->FaceCount()),
      polygons_(model_->FaceCount()),
      places_(model_->VertexCount()),
      next_(model_->VertexCount(), -1),
      is_follower_(model_->VertexCount()),
      is_used_(model_->VertexCount()) {
  const std::vector<SCheckedTexture> textures = model_->Textures();
  of_texture_.resize(textures.size());
  for (size_t i = 0; i < textures.size(); ++i)
    CheckTexture(i, textures[i]);
}

template <typename Make>
void CModelChecker::Add(EFinding kind, const Make& make) {
  const auto row = static_cast<size_t>(kind);
  if (counts_[row]++ >= most_) return;
  found_[row].push_back(make());
  found_[row].back().kind = kind;
}

bool CModelChecker::Go(size_t items) {
  while (phase_ != EPhase::kDone) {
    if (at_ == count_) {
      phase_ == EPhase::kFaces    ? Next(EPhase::kPlaces, model_->VertexCount())
      : phase_ == EPhase::kPlaces ? Next(EPhase::kVertices, model_->VertexCount())
                                  : Next(EPhase::kDone, 0);
      continue;
    }
    if (items-- == 0) return false;
    Step();
  }
  return true;
}

void CModelChecker::Next(EPhase phase, size_t count) {
  if (phase == EPhase::kDone) CheckExtent();
  phase_ = phase;
  at_ = 0;
  count_ = count;
}

void CModelChecker::Step() {
  const size_t index = at_++;
  if (phase_ == EPhase::kFaces) return CheckFace(index);
  if (phase_ == EPhase::kVertices) return CheckVertex(index);
  // From behind, so that the lowest one of a place is the one that leads to the others.
  NotePlace(count_ - 1 - index);
}

std::vector<SFinding> CModelChecker::TakeFindings() {
  std::vector<SFinding> all;
  for (std::vector<SFinding>& findings : found_)
    std::ranges::move(findings, std::back_inserter(all));
  return all;
}

// --- Textures --------------------------------------------------------------------------------------------------------

void CModelChecker::CheckTexture(size_t index, const SCheckedTexture& texture) {
  const std::string name = ToUtf8(texture.name);
  const auto add = [&](EFinding kind, std::string text) {
    Add(kind, [&] { return SFinding{.text = std::move(text), .texture = name}; });
    const size_t kept = found_[static_cast<size_t>(kind)].size();
    if (kept == counts_[static_cast<size_t>(kind)]) of_texture_[index].emplace_back(kind, kept - 1);
  };
  if (texture.name.size() > kTextureNameLength)
    add(EFinding::kLongName, Format("the texture name %s has %zu characters, %zu fit", name.c_str(),
                                    texture.name.size(), kTextureNameLength));
  if (!texture.width)
    add(EFinding::kMissingTexture, Format("the texture %s is not found", name.c_str()));
  else if (*texture.width == 0)
    add(EFinding::kTextureSize, Format("the file of the texture %s is not a texture", name.c_str()));
  else if (!IsGameTextureSize(*texture.width))
    add(EFinding::kTextureSize,
        Format("the texture %s is %d texels wide, the game takes 64 and 256", name.c_str(), *texture.width));
}

// --- Faces -----------------------------------------------------------------------------------------------------------

void CModelChecker::CheckFace(size_t position) {
  const SCheckedFace face = model_->Face(position);
  const auto index = static_cast<int32_t>(position);
  for (const int32_t texture : face.textures) {
    for (const auto& [kind, row] : of_texture_[static_cast<size_t>(texture)]) {
      std::vector<int32_t>& faces = found_[static_cast<size_t>(kind)][row].faces;
      if (faces.empty() || faces.back() != index) faces.push_back(index);
    }
  }
  std::array<SPoint, 4> points;
  for (size_t k = 0; k < face.count; ++k) {
    points[k] = model_->Vertex(face.vertices[k]);
    is_used_[face.vertices[k]] = true;
  }
  const bool has_area = face.count >= 3 && ExactArea({points.data(), face.count}) != ExactVector{};
  if (!has_area)
    Add(EFinding::kNoArea, [&] { return SFinding{.text = Format("face %d has no area", index), .faces = {index}}; });
  const double bend = face.count == 4 ? Bend(points) : 0;
  if (bend > kLargestBend)
    Add(EFinding::kBentQuad, [&] {
      return SFinding{.text = Format("face %d, a quad, is bent by %.1f units", index, bend), .faces = {index}};
    });
  CheckCorners(index, face);
  if (face.count >= 3) CheckDouble(index, face);
}

void CModelChecker::CheckCorners(int32_t index, const SCheckedFace& face) {
  std::vector<int32_t> repeated;
  std::vector<int32_t> off;
  for (size_t k = 0; k < face.count; ++k) {
    const auto before = face.vertices.begin() + static_cast<std::ptrdiff_t>(k);
    const auto vertex = static_cast<int32_t>(face.vertices[k]);
    if (face.is_off[k]) off.push_back(vertex);
    if (std::find(face.vertices.begin(), before, face.vertices[k]) != before &&
        std::ranges::find(repeated, vertex) == repeated.end())
      repeated.push_back(vertex);
  }
  if (!repeated.empty())
    Add(EFinding::kRepeatedCorner, [&] {
      return SFinding{.text = Format("face %d names vertex %d more than once", index, repeated.front()),
                      .faces = {index},
                      .vertices = repeated};
    });
  if (!off.empty())
    Add(EFinding::kOffTexture, [&] {
      return SFinding{.text = Format("face %d has a corner off its texture, at vertex %d", index, off.front()),
                      .faces = {index},
                      .vertices = off};
    });
}

CModelChecker::Polygon CModelChecker::PolygonOf(const SCheckedFace& face) {
  Polygon corners = {kNoCorner, kNoCorner, kNoCorner, kNoCorner};
  const auto end = corners.begin() + static_cast<std::ptrdiff_t>(face.count);
  std::copy_n(face.vertices.begin(), face.count, corners.begin());
  // Of all turns the smallest: a corner that comes twice leaves more than one beginning.
  Polygon smallest = corners;
  for (size_t k = 1; k < face.count; ++k) {
    std::rotate(corners.begin(), corners.begin() + 1, end);
    smallest = std::min(smallest, corners);
  }
  return smallest;
}

void CModelChecker::CheckDouble(int32_t index, const SCheckedFace& face) {
  const Polygon polygon = PolygonOf(face);
  const auto is_same = [&](int32_t other) { return PolygonOf(model_->Face(static_cast<size_t>(other))) == polygon; };
  int32_t& first = polygons_.Find(HashOf({polygon[0], polygon[1], polygon[2], polygon[3]}), is_same);
  if (first < 0)
    first = index;
  else
    Add(EFinding::kDoubleFace, [&] {
      return SFinding{.text = Format("face %d has the corners of face %d", index, first), .faces = {first, index}};
    });
}

// --- Vertices --------------------------------------------------------------------------------------------------------

void CModelChecker::NotePlace(size_t position) {
  const SPoint p = model_->Vertex(position);
  const auto hash = HashOf({static_cast<uint32_t>(p.x), static_cast<uint32_t>(p.y), static_cast<uint32_t>(p.z)});
  int32_t& lowest = places_.Find(hash, [&](int32_t other) { return model_->Vertex(static_cast<size_t>(other)) == p; });
  if (lowest >= 0) is_follower_[static_cast<size_t>(lowest)] = true;
  next_[position] = std::exchange(lowest, static_cast<int32_t>(position));
  if (at_ == 1) bounds_ = {p, p};
  bounds_ = {{std::min(bounds_.min.x, p.x), std::min(bounds_.min.y, p.y), std::min(bounds_.min.z, p.z)},
             {std::max(bounds_.max.x, p.x), std::max(bounds_.max.y, p.y), std::max(bounds_.max.z, p.z)}};
}

void CModelChecker::CheckVertex(size_t position) {
  const auto index = static_cast<int32_t>(position);
  if (!is_used_[position])
    Add(EFinding::kUnusedVertex,
        [&] { return SFinding{.text = Format("no face uses vertex %d", index), .vertices = {index}}; });
  if (is_follower_[position] || next_[position] < 0) return;
  Add(EFinding::kSamePlace, [&] {
    std::vector<int32_t> vertices;
    for (int32_t each = index; each >= 0; each = next_[static_cast<size_t>(each)])
      vertices.push_back(each);
    const SPoint p = model_->Vertex(position);
    std::string text = Format("%zu vertices lie at (%d, %d, %d)", vertices.size(), p.x, p.y, p.z);
    return SFinding{.text = std::move(text), .vertices = std::move(vertices)};
  });
}

void CModelChecker::CheckExtent() {
  const std::pair<char, int32_t SPoint::*> axes[] = {{'x', &SPoint::x}, {'y', &SPoint::y}, {'z', &SPoint::z}};
  for (const auto& [name, axis] : axes) {
    const int64_t extent = int64_t{bounds_.max.*axis} - bounds_.min.*axis;
    if (extent <= kLargestExtent) continue;
    Add(EFinding::kTooLarge, [&, letter = name] {
      return SFinding{.text = Format("the model is %lld units long in %c, distances wrap above %lld",
                                     static_cast<long long>(extent), letter, static_cast<long long>(kLargestExtent))};
    });
    return;
  }
}

}  // namespace veldra

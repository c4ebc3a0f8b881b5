#include "model/helperclasses.h"

#include <algorithm>

#include "platform/assert.h"

namespace veldra {

namespace {

struct SFaceTypeRow {
  uint32_t type;
  const char* label;
};

constexpr std::array<SFaceTypeRow, kFaceTypes.size()> kFaceTypeRows = {{
    {kFaceHellbender, "0x0E Hellbender Face Type"},
    {kFaceTransparentMtm, "0x11 Transparent Color #0 (MTM)"},
    {kFaceTextured, "0x18 Normal Texture (MTM)"},
    {kFaceUntextured, "0x19 Ignore Texture Coordinates (MTM)"},
    {kFaceShiny, "0x29 Shiny Texture (MTM2)"},
    {kFaceTransparentMtm2, "0x33 Transparent Color #0 (MTM2)"},
}};

}  // namespace

bool IsFaceTag(uint32_t tag) {
  return tag == kFaceUntyped || std::find(kFaceTypes.begin(), kFaceTypes.end(), tag) != kFaceTypes.end();
}

const char* FaceTypeLabel(uint32_t type) {
  for (const SFaceTypeRow& row : kFaceTypeRows) {
    if (row.type == type) return row.label;
  }
  return "0x?? Unknown Face Type";
}

CFaceSet::~CFaceSet() {
  Clear();
}

bool CFaceSet::Contains(const CBinFace* face) const {
  return std::find(begin(), end(), face) != end();
}

void CFaceSet::Insert(CBinFace* face) {
  if (size_ == capacity_) Grow();
  MutableData()[size_++] = face;
}

void CFaceSet::Grow() {
  const uint32_t capacity = capacity_ * 2;
  auto block = std::make_unique<CBinFace*[]>(capacity);
  std::copy(begin(), end(), block.get());
  const uint32_t size = size_;
  Clear();
  heap_ = block.release();
  capacity_ = capacity;
  size_ = size;
}

void CFaceSet::Erase(CBinFace* face) {
  CBinFace** const data = MutableData();
  CBinFace** const found = std::find(data, data + size_, face);
  VELDRA_ASSERT(found != data + size_);
  if (found != data + size_) *found = data[--size_];
}

void CFaceSet::EraseRemoved() {
  CBinFace** const data = MutableData();
  const auto kept = std::remove_if(data, data + size_, [](const CBinFace* face) { return face->Index() < 0; });
  size_ = static_cast<uint32_t>(kept - data);
}

void CFaceSet::Clear() {
  if (capacity_ != kInline) std::unique_ptr<CBinFace*[]>(heap_).reset();
  capacity_ = kInline;
  size_ = 0;
}

CBinTexture::CBinTexture(CBinModel& owner, std::string name, const STextureImage* image)
    : owner_(&owner), kind_(ETextureKind::kPlain), name_(std::move(name)), frames_({{name_, image}}) {
  VELDRA_ASSERT(image != nullptr);
}

CBinTexture::CBinTexture(CBinModel& owner, std::string name, std::vector<SFrame> frames, double rate)
    : owner_(&owner), kind_(ETextureKind::kAnimated), name_(std::move(name)), frames_(std::move(frames)), rate_(rate) {
  VELDRA_ASSERT(!frames_.empty());
}

bool CBinFace::HasCorner(const CBinVertex* vertex) const {
  const auto corners = Corners();
  return std::find(corners.begin(), corners.end(), vertex) != corners.end();
}

void CBinFace::SetCorners(std::span<CBinVertex* const> corners) {
  VELDRA_ASSERT(index_ < 0);
  VELDRA_ASSERT(corners.size() == 3 || corners.size() == 4);
  for (size_t k = 0; k < corners.size(); ++k) {
    VELDRA_ASSERT(corners[k] != nullptr && &corners[k]->Owner() == owner_);
    VELDRA_ASSERT(std::find(corners.begin(), corners.begin() + static_cast<std::ptrdiff_t>(k), corners[k]) ==
                  corners.begin() + static_cast<std::ptrdiff_t>(k));
  }
  corners_ = {};
  std::copy(corners.begin(), corners.end(), corners_.begin());
}

void CBinFace::SetTexture(CBinTexture* texture) {
  VELDRA_ASSERT(index_ < 0);
  VELDRA_ASSERT(texture == nullptr || &texture->Owner() == owner_);
  texture_ = texture;
}

bool CBinVertex::IsHidden() const {
  return !faces_.Empty() && std::ranges::all_of(faces_, [](const CBinFace* face) { return face->IsHidden(); });
}

void CBinFace::SetStored(const SPoint& normal, int32_t magic) {
  if (index_ >= 0) NoteChange();
  stored_normal_ = normal;
  stored_magic_ = magic;
}

bool IsSamePolygon(const CBinFace& a, const CBinFace& b) {
  const int count = a.CornerCount();
  if (b.CornerCount() != count) return false;
  for (int k = 0; k < count; ++k) {
    if (b.Corner(k) != a.Corner(0)) continue;
    int same = 1;
    while (same < count && a.Corner(same) == b.Corner((k + same) % count))
      ++same;
    return same == count;
  }
  return false;
}

}  // namespace veldra

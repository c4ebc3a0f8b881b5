#include "model/binloader.h"

#include "platform/paths.h"

namespace veldra {

namespace {

constexpr const char* kAnimationControlText =
    "This is an animation control BIN that\ndoes not contain any BIN model data.";
constexpr const char* kUnknownTypeText =
    "Unknown BIN type 0x%x.\nVeldra may crashwhen you attempt to load it.\nContinue loading?";
constexpr const char* kTextureSizeText =
    "This model uses a texture size not supported by MTM2.\nWould you like to continue loading anyway?";
/// Vertices or records between two reports of how far it is.
constexpr size_t kItemsAStep = 4096;
constexpr const char* kUnnamedAnimation = "ANIMTEXTURE%d";

/// The same for two animations only when their names, rates and frames are.
std::string ContentOf(const std::string& name, const std::vector<CBinTexture::SFrame>& frames, double rate) {
  std::string content = name + Format("\n%a", rate);
  for (const CBinTexture::SFrame& frame : frames)
    content += '\0' + frame.name;
  return content;
}

}  // namespace

bool CBinLoader::Fail(ESeverity severity, size_t offset, std::string what) {
  is_corrupt_ = severity == ESeverity::kCorrupt;
  diagnosis_ = {offset, std::move(what)};
  return false;
}

/// False when the user wants the load stopped. ITEMS: read so far.
bool CBinLoader::MayGoOn(size_t items) {
  if (items % kItemsAStep != 0 || context_.progress == nullptr) return true;
  if (context_.progress->Step(reader_.Position(), reader_.Size())) return true;
  return Fail(ESeverity::kStopped, reader_.Position(), "stopped by the user");
}

bool CBinLoader::FailPastEnd(const std::string& record) {
  return Fail(ESeverity::kCorrupt, reader_.Position(),
              Format("%s: the file of %zu bytes ends within it", record.c_str(), reader_.Size()));
}

// --- Header and vertices ---------------------------------------------------------------------------------------------

bool CBinLoader::ReadHeader() {
  const uint32_t type = reader_.ReadU32();
  if (reader_.Failed()) return FailPastEnd("header");
  if (!CheckType(type)) return false;
  model_.SetScaleWord(reader_.ReadI32());
  return true;
}

bool CBinLoader::CheckType(uint32_t type) {
  if (type == kModelType) return true;
  if (type == kAnimationControlType) {
    context_.questions.Message({.text = kAnimationControlText});
    return Fail(ESeverity::kStopped, 0, "header: type 0x20, an animation control file");
  }
  const SMessage question = {.text = Format(kUnknownTypeText, type), .icon = EIcon::kWarning, .usual = EAnswer::kNo};
  if (context_.questions.AskYesNo(question) == EAnswer::kYes) return true;
  return Fail(ESeverity::kStopped, 0, Format("header: unknown type 0x%x", type));
}

bool CBinLoader::ReadVertices() {
  if (reader_.Size() < kHeaderSize) return FailPastEnd("header");
  reader_.Seek(kVertexCountOffset);
  const uint32_t count = reader_.ReadU32();
  if (!reader_.Holds(count, kVertexSize)) {
    return Fail(ESeverity::kCorrupt, kVertexCountOffset,
                Format("header: %u vertices, the file has room for %zu", count, reader_.Remaining() / kVertexSize));
  }
  const size_t faces_at_most = (reader_.Remaining() - count * kVertexSize) / kSmallestFaceSize;
  model_.Reserve(count, faces_at_most);
  for (uint32_t i = 0; i < count; ++i) {
    if (!MayGoOn(i)) return false;
    const int32_t x = reader_.ReadI32();
    const int32_t y = reader_.ReadI32();
    const int32_t z = reader_.ReadI32();
    model_.AddVertex({x, y, z});
  }
  return true;
}

// --- Records ---------------------------------------------------------------------------------------------------------

bool CBinLoader::ReadRecords() {
  for (size_t record = 0; reader_.Remaining() >= kWordSize; ++record) {
    if (!MayGoOn(record)) return false;
    const uint32_t tag = reader_.ReadU32();
    // The last word of a file closes it, whatever it is.
    if (reader_.AtEnd()) return true;
    if (!ReadRecord(tag)) return false;
  }
  return true;
}

bool CBinLoader::ReadRecord(uint32_t tag) {
  switch (tag) {
    case kTagVertexNormals:
      return SkipVertexNormals();
    case kTagUntextured:
      return SkipWords("untextured marker", 1);
    case kTagTexture:
      return ReadTextureSelection();
    case kTagIgnoredPair:
      return SkipWords("ignored pair", 2);
    case kTagAnimation:
      return ReadAnimatedTexture();
    default:
      return IsFaceTag(tag) ? ReadFace(tag, tag) : ReadUnknown(tag);
  }
}

bool CBinLoader::SkipVertexNormals() {
  reader_.Skip(kWordSize);
  const size_t offset = reader_.Position();
  const uint32_t count = reader_.ReadU32();
  if (reader_.Failed()) return FailPastEnd("vertex normals");
  if (!reader_.Holds(count, kVertexSize)) {
    return Fail(
        ESeverity::kCorrupt, offset,
        Format("vertex normals: %u of them, the file has room for %zu", count, reader_.Remaining() / kVertexSize));
  }
  reader_.Skip(count * kVertexSize);
  return true;
}

bool CBinLoader::SkipWords(const char* record, size_t count) {
  reader_.Skip(count * kWordSize);
  return !reader_.Failed() || FailPastEnd(record);
}

bool CBinLoader::ReadTextureSelection() {
  const size_t offset = reader_.Position();
  reader_.Skip(kWordSize);
  const std::string field = reader_.ReadFixedText(kTextureNameLength);
  reader_.Skip(kTextureFieldSize - kTextureNameLength);
  if (reader_.Failed()) return FailPastEnd(SelectionName());
  const std::string name = UpperCase(ChangeExtension(field, "RAW"));
  CBinTexture* const entry = PlainTexture(name);
  if (entry == nullptr) {
    return Fail(ESeverity::kStopped, offset,
                Format("%s: no texture was chosen for %s", SelectionName().c_str(), DisplayName(name).c_str()));
  }
  Select(*entry);
  if (!IsTextureSizeTaken()) {
    return Fail(ESeverity::kStopped, offset,
                Format("%s: %s is %d texels wide", SelectionName().c_str(), DisplayName(name).c_str(), entry->Width()));
  }
  ++selection_number_;
  return true;
}

CBinTexture* CBinLoader::PlainTexture(const std::string& name) {
  const auto found = plain_by_name_.find(name);
  if (found != plain_by_name_.end()) return found->second;
  const STextureImage* const image = context_.textures.Find(name);
  if (image == nullptr) return nullptr;
  CBinTexture& entry = model_.AddTexture(std::make_unique<CBinTexture>(model_, name, image));
  plain_by_name_.emplace(name, &entry);
  return &entry;
}

void CBinLoader::Select(CBinTexture& entry) {
  texture_ = &entry;
  size_factor_ = static_cast<double>(entry.Width() - 1);
}

bool CBinLoader::IsTextureSizeTaken() {
  const bool is_supported = size_factor_ == 63.0 || size_factor_ == 255.0;
  if (is_supported || !may_ask_size_ || !context_.ask_texture_size) return true;
  may_ask_size_ = false;
  return context_.questions.AskYesNo({.text = kTextureSizeText, .icon = EIcon::kQuestion}) == EAnswer::kYes;
}

bool CBinLoader::ReadAnimatedTexture() {
  reader_.Skip(kWordSize);
  const size_t offset = reader_.Position();
  const uint32_t count = reader_.ReadU32();
  reader_.Skip(kWordSize);
  const uint32_t period = reader_.ReadU32();
  reader_.Skip(2 * kWordSize);
  if (reader_.Failed()) return FailPastEnd(AnimationName());
  if (count == 0) {
    return Fail(ESeverity::kCorrupt, offset,
                Format("%s: an animation needs at least one frame", AnimationName().c_str()));
  }
  if (!reader_.Holds(count, kFrameFieldSize)) {
    return Fail(ESeverity::kCorrupt, offset,
                Format("%s: %u frames, the file has room for %zu", AnimationName().c_str(), count,
                       reader_.Remaining() / kFrameFieldSize));
  }
  std::vector<CBinTexture::SFrame> frames;
  if (!ReadFrames(count, frames)) return false;
  Select(AnimatedTexture(std::move(frames), kPeriodOfOneSecond / static_cast<double>(period)));
  ++animation_number_;
  return true;
}

bool CBinLoader::ReadFrames(uint32_t count, std::vector<CBinTexture::SFrame>& frames) {
  for (uint32_t i = 0; i < count; ++i) {
    const size_t offset = reader_.Position();
    std::string name = reader_.ReadFixedText(kFrameFieldSize);
    const STextureImage* const image = context_.textures.Find(name);
    if (image == nullptr) {
      return Fail(
          ESeverity::kStopped, offset,
          Format("%s: no texture was chosen for frame %u, %s", AnimationName().c_str(), i, DisplayName(name).c_str()));
    }
    frames.push_back({std::move(name), image});
  }
  return true;
}

/// A name from the sidecar that stood at an earlier record with the same frames means the same animation, selected
/// again.
CBinTexture& CBinLoader::AnimatedTexture(std::vector<CBinTexture::SFrame> frames, double rate) {
  const auto position = static_cast<size_t>(animation_number_);
  const bool is_named = position < animation_names_.size() && !animation_names_[position].empty();
  std::string name = is_named ? animation_names_[position] : Format(kUnnamedAnimation, animation_number_ + 1);
  if (!is_named) return AddAnimation(std::move(name), std::move(frames), rate);
  CBinTexture*& known = animated_by_content_[ContentOf(name, frames, rate)];
  if (known == nullptr) known = &AddAnimation(std::move(name), std::move(frames), rate);
  return *known;
}

CBinTexture& CBinLoader::AddAnimation(std::string name, std::vector<CBinTexture::SFrame> frames, double rate) {
  return model_.AddTexture(std::make_unique<CBinTexture>(model_, std::move(name), std::move(frames), rate));
}

// --- Faces -----------------------------------------------------------------------------------------------------------

/// TAG is the record's own type, TYPE the face's: the user may have given a face of unknown type another one, and the
/// record is then laid out as one of that type.
bool CBinLoader::ReadFace(uint32_t tag, uint32_t type) {
  if (texture_ == nullptr && type != kFaceUntextured) {
    return Fail(ESeverity::kStopped, reader_.Position() - kWordSize,
                Format("%s: no texture is selected before it", FaceName(tag).c_str()));
  }
  const size_t offset = reader_.Position();
  const int32_t count = reader_.ReadI32();
  if (!reader_.Failed() && (count < 0 || count > kMostCorners)) {
    return FailCornerCount(tag, count, offset);
  }
  const int32_t x = reader_.ReadI32();
  const int32_t y = reader_.ReadI32();
  const int32_t z = reader_.ReadI32();
  const int32_t magic = reader_.ReadI32();
  if (reader_.Failed()) return FailPastEnd(FaceName(tag));
  auto face = std::make_unique<CBinFace>(model_);
  face->SetType(type);
  face->SetTexture(texture_);
  face->SetStored({x, y, z}, magic);
  SCorners corners;
  if (!ReadCorners(tag, count, *face, corners)) return false;
  ++face_number_;
  if (corners.count < 3) return true;
  face->SetCorners({corners.vertices.data(), corners.count});
  model_.AddFace(std::move(face));
  return true;
}

/// A corner that comes again is dropped with its texture coordinates, so that the quads with a repeated corner that
/// some tools write become triangles.
bool CBinLoader::ReadCorners(uint32_t tag, int32_t count, CBinFace& face, SCorners& corners) {
  const bool has_coords = face.Type() != kFaceUntextured;
  for (int32_t i = 0; i < count; ++i) {
    const size_t offset = reader_.Position();
    const uint32_t index = reader_.ReadU32();
    const uint32_t u = has_coords ? reader_.ReadU32() : 0;
    const uint32_t v = has_coords ? reader_.ReadU32() : 0;
    if (reader_.Failed()) return FailPastEnd(FaceName(tag));
    if (!IsVertex(index)) return FailVertex(tag, i, index, offset);
    CBinVertex* const vertex = &model_.Vertex(static_cast<int32_t>(index));
    if (corners.Has(vertex)) continue;
    if (has_coords) face.SetTexCoord(static_cast<int>(corners.count), {Snap(u), Snap(v)});
    corners.vertices[corners.count++] = vertex;
  }
  return true;
}

/// A raw coordinate as a fraction of the texture that lies on its grid of texels.
double CBinLoader::Snap(uint32_t raw) const {
  // Not negative, so that truncation is the floor; at most 0xFFFFFFFF * 511 / 0xFFFFFF, which fits.
  const auto texel = static_cast<int32_t>(static_cast<double>(raw) * size_factor_ / kTexCoordOne);
  return std::clamp(static_cast<double>(texel) / size_factor_, 0.0, 1.0);
}

bool CBinLoader::FailVertex(uint32_t tag, int32_t corner, uint32_t index, size_t offset) {
  return Fail(ESeverity::kCorrupt, offset,
              Format("%s: corner %d names vertex %u, the model has %d", FaceName(tag).c_str(), corner, index,
                     model_.VertexCount()));
}

// --- Faces of unknown type -------------------------------------------------------------------------------------------

bool CBinLoader::ReadUnknown(uint32_t tag) {
  using EChoice = SUnknownFaceAnswer::EChoice;
  const auto [row, is_new] = decisions_.try_emplace(tag);
  SUnknownFaceAnswer& answer = row->second;
  if (is_new) answer = context_.questions.AskUnknownFace(tag);
  const size_t position = reader_.Position();
  if (answer.choice == EChoice::kAbort) {
    return Fail(ESeverity::kStopped, position - kWordSize, Format("%s: an unknown type", FaceName(tag).c_str()));
  }
  if (!CheckUnknown(tag)) return false;
  if (answer.choice == EChoice::kIgnore) {
    ++face_number_;
    return true;
  }
  reader_.Seek(position);
  return ReadFace(tag, answer.type);
}

/// Whether what follows can be a face at all; leaves the reader behind it.
bool CBinLoader::CheckUnknown(uint32_t tag) {
  const size_t position = reader_.Position();
  const size_t left = reader_.Remaining();
  const int32_t count = reader_.ReadI32();
  if (reader_.Failed()) return FailPastEnd(FaceName(tag));
  if (count < 0 || count > kMostCorners) return FailCornerCount(tag, count, position);
  const size_t size = kFaceSize + kCornerSize * static_cast<size_t>(count);
  if (left < size) {
    return Fail(ESeverity::kCorrupt, position,
                Format("%s: %zu bytes are left, %zu needed", FaceName(tag).c_str(), left, size));
  }
  reader_.Skip(kFaceSize - kWordSize);
  for (int32_t i = 0; i < count; ++i) {
    const size_t offset = reader_.Position();
    const uint32_t index = reader_.ReadU32();
    if (!IsVertex(index)) return FailVertex(tag, i, index, offset);
    reader_.Skip(kCornerSize - kWordSize);
  }
  return true;
}

bool CBinLoader::FailCornerCount(uint32_t tag, int32_t count, size_t offset) {
  return Fail(ESeverity::kCorrupt, offset,
              Format("%s: %d corners, 0 to %d are possible", FaceName(tag).c_str(), count, kMostCorners));
}

}  // namespace veldra

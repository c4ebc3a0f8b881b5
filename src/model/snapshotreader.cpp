#include <algorithm>
#include <new>
#include <unordered_set>

#include "model/snapshot.h"
#include "model/snapshotformat.h"
#include "platform/compress.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace snapshot {

namespace {

constexpr uint64_t kMostOfAKind = 0x7FFFFFFF;
// The fewest bytes that one of them takes in its section.
constexpr size_t kLeastVertex = 3;
constexpr size_t kLeastCorners = 3;
constexpr size_t kLeastCoords = 6;
constexpr size_t kLeastNormal = 4;
constexpr size_t kLeastTexture = 3;

class CReader {
 public:
  CReader(CBinModel& model, std::span<const uint8_t> file, CTextureFinder& textures)
      : model_(model), file_(file), finder_(textures) {}

  bool Read() {
    return ReadHeader() && ReadCounts() && ReadTextures() && ReadVertices() && ReadFaces() &&
           ReadGroups(EGroupKind::kFaces) && ReadGroups(EGroupKind::kVertices) && CheckAllRead();
  }
  const SDiagnosis& Diagnosis() const { return diagnosis_; }

 private:
  struct SSection {
    size_t begin = 0;  ///< in the file
    CByteReader reader{{}};
  };

  bool Fail(size_t offset, std::string what);
  bool Fail(ESection section, std::string what);
  bool ReadHeader();
  bool ReadCounts();
  bool CheckCounts();
  bool ReadText(ESection section, std::string& text);
  bool ReadTextures();
  bool ReadTexture();
  bool ReadAnimation(std::string name);
  const STextureImage* FindImage(const std::string& name);
  bool ReadVertices();
  bool ReadFaces();
  bool ReadFace(int32_t index);
  bool ReadFaceHead(uint8_t flags, CBinFace& face);
  bool ReadCorners(int count, CBinFace& face);
  void ReadCoords(int count, CBinFace& face);
  void ReadNormal(CBinFace& face);
  bool ReadGroups(EGroupKind kind);
  bool ReadGroup(EGroupKind kind, std::unordered_set<std::string>& names);
  bool CheckAllRead();

  CBinModel& model_;
  std::span<const uint8_t> file_;
  CTextureFinder& finder_;
  SDiagnosis diagnosis_;
  std::array<SSection, kSectionCount> sections_;
  uint64_t vertex_count_ = 0;
  uint64_t face_count_ = 0;
  uint64_t texture_count_ = 0;
  std::vector<uint32_t> widths_;  ///< of the textures, as they were when the snapshot was made

  // The face before.
  uint32_t type_ = 0;
  CBinTexture* texture_ = nullptr;
  uint32_t width_ = kUsualWidth;
  int32_t corner_ = 0;
  SPoint normal_;
  int32_t magic_ = 0;
};

bool CReader::Fail(size_t offset, std::string what) {
  diagnosis_ = {offset, std::move(what)};
  return false;
}

bool CReader::Fail(ESection section, std::string what) {
  const SSection& place = sections_[section];
  return Fail(place.begin + place.reader.Position(), std::move(what));
}

bool CReader::ReadHeader() {
  CByteReader reader(file_);
  const auto magic = reader.ReadBytes(kMagic.size());
  if (!std::equal(magic.begin(), magic.end(), kMagic.begin(), kMagic.end())) return Fail(0, "is no snapshot");
  const uint32_t version = reader.ReadU32();
  const uint64_t low = reader.ReadU32();
  const uint64_t length = low | uint64_t{reader.ReadU32()} << 32;
  const uint32_t checksum = reader.ReadU32();
  if (reader.Failed()) return Fail(reader.Position(), "ends within its header");
  if (version != kVersion) return Fail(kMagic.size(), Format("version %u of the format is not known", version));
  if (length != reader.Remaining()) {
    return Fail(kMagic.size() + 4, Format("%zu bytes follow the header, which says %llu", reader.Remaining(),
                                          static_cast<unsigned long long>(length)));
  }
  if (checksum != Checksum(file_.subspan(kHeaderSize))) return Fail(kHeaderSize - 4, "the checksum is wrong");
  return true;
}

bool CReader::ReadCounts() {
  CByteReader reader(file_);
  reader.Seek(kHeaderSize);
  model_.SetScaleWord(reader.ReadI32());
  vertex_count_ = ReadNumber(reader);
  face_count_ = ReadNumber(reader);
  texture_count_ = ReadNumber(reader);
  std::array<uint64_t, kSectionCount> lengths;
  for (uint64_t& length : lengths)
    length = ReadNumber(reader);
  if (reader.Failed()) return Fail(reader.Position(), "ends within its counts");
  for (size_t i = 0; i < kSectionCount; ++i) {
    if (lengths[i] > reader.Remaining()) return Fail(reader.Position(), Format("section %zu runs over the end", i));
    sections_[i].begin = reader.Position();
    sections_[i].reader = CByteReader(reader.ReadBytes(static_cast<size_t>(lengths[i])));
  }
  if (!reader.AtEnd()) return Fail(reader.Position(), "bytes follow the last section");
  return CheckCounts();
}

/// That the sections can hold what is counted, before memory is taken for it.
bool CReader::CheckCounts() {
  if (vertex_count_ > kMostOfAKind || face_count_ > kMostOfAKind || texture_count_ > kMostOfAKind)
    return Fail(kHeaderSize, "a count is too large");
  const auto vertices = static_cast<size_t>(vertex_count_);
  const auto faces = static_cast<size_t>(face_count_);
  if (!sections_[kTextures].reader.Holds(static_cast<size_t>(texture_count_), kLeastTexture))
    return Fail(kTextures, "holds fewer textures than counted");
  if (!sections_[kVertices].reader.Holds(vertices, kLeastVertex))
    return Fail(kVertices, "holds fewer vertices than counted");
  if (!sections_[kFaces].reader.Holds(faces, 1) || !sections_[kCorners].reader.Holds(faces, kLeastCorners) ||
      !sections_[kCoords].reader.Holds(faces, kLeastCoords) || !sections_[kNormals].reader.Holds(faces, kLeastNormal))
    return Fail(kFaces, "holds fewer faces than counted");
  return true;
}

bool CReader::ReadText(ESection section, std::string& text) {
  CByteReader& reader = sections_[section].reader;
  const uint64_t length = ReadNumber(reader);
  if (reader.Failed() || length > reader.Remaining()) return Fail(section, "a text runs over the end");
  const auto bytes = reader.ReadBytes(static_cast<size_t>(length));
  text.assign(bytes.begin(), bytes.end());
  return true;
}

bool CReader::ReadTextures() {
  widths_.reserve(static_cast<size_t>(texture_count_));
  for (uint64_t i = 0; i < texture_count_; ++i) {
    if (!ReadTexture()) return false;
  }
  return true;
}

bool CReader::ReadTexture() {
  CByteReader& reader = sections_[kTextures].reader;
  const uint8_t kind = reader.ReadU8();
  std::string name;
  if (!ReadText(kTextures, name)) return false;
  const uint64_t width = ReadNumber(reader);
  if (width < 2 || width > kLargestWidth) return Fail(kTextures, "a texture has an impossible width");
  widths_.push_back(static_cast<uint32_t>(width));
  if (kind == static_cast<uint8_t>(ETextureKind::kAnimated)) return ReadAnimation(std::move(name));
  if (kind != static_cast<uint8_t>(ETextureKind::kPlain)) return Fail(kTextures, "a texture is of no known kind");
  const STextureImage* const image = FindImage(name);
  if (image == nullptr) return false;
  model_.AddTexture(std::make_unique<CBinTexture>(model_, std::move(name), image));
  return true;
}

bool CReader::ReadAnimation(std::string name) {
  CByteReader& reader = sections_[kTextures].reader;
  const double rate = ReadDouble(reader);
  const uint64_t count = ReadNumber(reader);
  if (reader.Failed() || count == 0 || count > reader.Remaining())
    return Fail(kTextures, Format("%s: the number of frames is wrong", name.c_str()));
  std::vector<CBinTexture::SFrame> frames;
  for (uint64_t i = 0; i < count; ++i) {
    std::string frame;
    if (!ReadText(kTextures, frame)) return false;
    const STextureImage* const image = FindImage(frame);
    if (image == nullptr) return false;
    frames.push_back({std::move(frame), image});
  }
  model_.AddTexture(std::make_unique<CBinTexture>(model_, std::move(name), std::move(frames), rate));
  return true;
}

const STextureImage* CReader::FindImage(const std::string& name) {
  const STextureImage* const image = finder_.Find(name);
  if (image == nullptr) Fail(kTextures, Format("no texture was chosen for %s", name.c_str()));
  return image;
}

bool CReader::ReadVertices() {
  model_.Reserve(static_cast<size_t>(vertex_count_), static_cast<size_t>(face_count_));
  CByteReader& reader = sections_[kVertices].reader;
  SPoint last;
  for (uint64_t i = 0; i < vertex_count_; ++i) {
    ReadStep(reader, last.x);
    ReadStep(reader, last.y);
    ReadStep(reader, last.z);
    if (reader.Failed()) return Fail(kVertices, "holds fewer vertices than counted");
    model_.AddVertex(last);
  }
  return true;
}

bool CReader::ReadFaces() {
  for (uint64_t i = 0; i < face_count_; ++i) {
    if (!ReadFace(static_cast<int32_t>(i))) return false;
  }
  return true;
}

bool CReader::ReadFace(int32_t index) {
  const uint8_t flags = sections_[kFaces].reader.ReadU8();
  if ((flags & ~kAllFaceFlags) != 0) return Fail(kFaces, Format("face %d is of an unknown make", index));
  auto face = std::make_unique<CBinFace>(model_);
  if (!ReadFaceHead(flags, *face) || !ReadCorners((flags & kIsQuad) != 0 ? 4 : 3, *face)) return false;
  ReadCoords((flags & kHasFourCoords) != 0 ? 4 : 3, *face);
  ReadNormal(*face);
  for (const ESection section : {kFaces, kCorners, kCoords, kNormals}) {
    if (sections_[section].reader.Failed()) return Fail(section, Format("ends within face %d", index));
  }
  model_.AddFace(std::move(face));
  return true;
}

bool CReader::ReadFaceHead(uint8_t flags, CBinFace& face) {
  CByteReader& reader = sections_[kFaces].reader;
  if ((flags & kHasNewType) != 0) type_ = static_cast<uint32_t>(ReadNumber(reader));
  if ((flags & kHasNewTexture) != 0) {
    const uint64_t number = ReadNumber(reader);
    if (number > texture_count_) return Fail(kFaces, "a face has a texture that the model has not");
    texture_ = number == 0 ? nullptr : &model_.Texture(static_cast<int32_t>(number - 1));
    width_ = number == 0 ? kUsualWidth : widths_[static_cast<size_t>(number - 1)];
  }
  face.SetType(type_);
  face.SetTexture(texture_);
  return true;
}

bool CReader::ReadCorners(int count, CBinFace& face) {
  std::array<CBinVertex*, 4> corners = {};
  for (int k = 0; k < count; ++k) {
    const int32_t index = ReadStep(sections_[kCorners].reader, corner_);
    if (index < 0 || index >= model_.VertexCount()) return Fail(kCorners, "a corner is no vertex of the model");
    CBinVertex* const vertex = &model_.Vertex(index);
    if (std::find(corners.begin(), corners.begin() + k, vertex) != corners.begin() + k)
      return Fail(kCorners, "two corners of a face are one");
    corners[static_cast<size_t>(k)] = vertex;
  }
  face.SetCorners({corners.data(), static_cast<size_t>(count)});
  return true;
}

void CReader::ReadCoords(int count, CBinFace& face) {
  for (int k = 0; k < count; ++k) {
    const double u = ReadCoord(sections_[kCoords].reader, width_);
    face.SetTexCoord(k, {u, ReadCoord(sections_[kCoords].reader, width_)});
  }
}

void CReader::ReadNormal(CBinFace& face) {
  CByteReader& reader = sections_[kNormals].reader;
  ReadStep(reader, normal_.x);
  ReadStep(reader, normal_.y);
  ReadStep(reader, normal_.z);
  face.SetStored(normal_, ReadStep(reader, magic_));
}

bool CReader::ReadGroups(EGroupKind kind) {
  CByteReader& reader = sections_[kGroups].reader;
  const uint64_t count = ReadNumber(reader);
  if (reader.Failed()) return Fail(kGroups, "ends before its groups");
  std::unordered_set<std::string> names;
  for (uint64_t i = 0; i < count; ++i) {
    if (!ReadGroup(kind, names)) return false;
  }
  return true;
}

bool CReader::ReadGroup(EGroupKind kind, std::unordered_set<std::string>& names) {
  CByteReader& reader = sections_[kGroups].reader;
  std::string name;
  if (!ReadText(kGroups, name)) return false;
  if (name.empty() || !names.insert(name).second) return Fail(kGroups, "a group has no name of its own");
  const uint64_t count = ReadNumber(reader);
  if (reader.Failed() || count > reader.Remaining()) return Fail(kGroups, "a group runs over the end");
  const int32_t limit = kind == EGroupKind::kFaces ? model_.FaceCount() : model_.VertexCount();
  std::vector<int32_t> members(static_cast<size_t>(count));
  int32_t last = -1;
  for (int32_t& member : members) {
    member = ReadStep(reader, last);
    if (reader.Failed()) return Fail(kGroups, "a group runs over the end");
    if (member < 0 || member >= limit) return Fail(kGroups, "a group has a member that the model has not");
  }
  model_.AddGroup(kind, name, members);
  return true;
}

bool CReader::CheckAllRead() {
  for (int section = 0; section < kSectionCount; ++section) {
    if (!sections_[static_cast<size_t>(section)].reader.AtEnd())
      return Fail(static_cast<ESection>(section), "more follows than was counted");
  }
  return true;
}

bool ReadAll(CBinModel& model, std::span<const uint8_t> file, CTextureFinder& textures, SDiagnosis& fault) try {
  CReader reader(model, file, textures);
  const bool is_read = reader.Read();
  fault = reader.Diagnosis();
  return is_read;
} catch (const std::bad_alloc&) {
  fault = {0, kNotEnoughMemory};
  return false;
}

}  // namespace

}  // namespace snapshot

bool ReadSnapshot(CBinModel& model, std::span<const uint8_t> snapshot, CTextureFinder& textures,
                  SDiagnosis* diagnosis) {
  CBinModel::CBusy busy(model);
  SDiagnosis fault;
  if (snapshot::ReadAll(model, snapshot, textures, fault)) return true;
  model.Clear();
  Trace(">> ReadSnapshot(): %s\n", fault.Text().c_str());
  if (diagnosis != nullptr) *diagnosis = fault;
  return false;
}

}  // namespace veldra

#include <unordered_map>

#include "model/snapshot.h"
#include "model/snapshotformat.h"
#include "platform/compress.h"

namespace veldra {

namespace snapshot {

namespace {

void WriteText(CByteWriter& out, std::string_view text) {
  WriteNumber(out, text.size());
  out.WriteText(text);
}

class CWriter {
 public:
  explicit CWriter(const CBinModel& model) : model_(model) {}

  void WriteBody(CByteWriter& out) {
    WriteTextures();
    WriteVertices();
    for (int32_t i = 0; i < model_.FaceCount(); ++i)
      WriteFace(model_.Face(i));
    WriteGroups(EGroupKind::kFaces);
    WriteGroups(EGroupKind::kVertices);

    out.WriteI32(model_.ScaleWord());
    for (const int32_t count : {model_.VertexCount(), model_.FaceCount(), model_.TextureCount()})
      WriteNumber(out, static_cast<uint64_t>(count));
    for (const CByteWriter& section : sections_)
      WriteNumber(out, section.Size());
    for (const CByteWriter& section : sections_)
      out.WriteBytes(section.Bytes());
  }

 private:
  void WriteTextures();
  void WriteVertices();
  void WriteFace(const CBinFace& face);
  void WriteCoords(const CBinFace& face, int count);
  void WriteGroups(EGroupKind kind);

  const CBinModel& model_;
  std::array<CByteWriter, kSectionCount> sections_;
  std::unordered_map<const CBinTexture*, uint64_t> texture_numbers_;  ///< 1 + the entry's position

  // The face before.
  uint32_t type_ = 0;
  const CBinTexture* texture_ = nullptr;
  int32_t corner_ = 0;
  SPoint normal_;
  int32_t magic_ = 0;
};

uint32_t GridWidth(const CBinTexture* texture) {
  // What no store would have made keeps the usual grid: exact all the same, only longer.
  const bool is_usable = texture != nullptr && texture->Width() > 1 && texture->Width() <= int32_t{kLargestWidth};
  return is_usable ? static_cast<uint32_t>(texture->Width()) : kUsualWidth;
}

void CWriter::WriteTextures() {
  CByteWriter& out = sections_[kTextures];
  for (int32_t i = 0; i < model_.TextureCount(); ++i) {
    const CBinTexture& texture = model_.Texture(i);
    texture_numbers_[&texture] = static_cast<uint64_t>(i) + 1;
    out.WriteU8(static_cast<uint8_t>(texture.Kind()));
    WriteText(out, texture.Name());
    WriteNumber(out, GridWidth(&texture));
    if (texture.Kind() == ETextureKind::kPlain) continue;
    WriteDouble(out, texture.Rate());
    WriteNumber(out, texture.Frames().size());
    for (const CBinTexture::SFrame& frame : texture.Frames())
      WriteText(out, frame.name);
  }
}

void CWriter::WriteVertices() {
  CByteWriter& out = sections_[kVertices];
  SPoint last;
  for (int32_t i = 0; i < model_.VertexCount(); ++i) {
    const SPoint& position = model_.Vertex(i).Position();
    WriteStep(out, position.x, last.x);
    WriteStep(out, position.y, last.y);
    WriteStep(out, position.z, last.z);
  }
}

void CWriter::WriteFace(const CBinFace& face) {
  const bool is_quad = face.CornerCount() == 4;
  const bool has_four_coords =
      is_quad || std::bit_cast<uint64_t>(face.TexCoord(3).u) != 0 || std::bit_cast<uint64_t>(face.TexCoord(3).v) != 0;
  const bool has_new_type = face.Type() != type_;
  const bool has_new_texture = face.Texture() != texture_;
  type_ = face.Type();
  texture_ = face.Texture();

  CByteWriter& out = sections_[kFaces];
  out.WriteU8(static_cast<uint8_t>((is_quad ? kIsQuad : 0) | (has_new_type ? kHasNewType : 0) |
                                   (has_new_texture ? kHasNewTexture : 0) | (has_four_coords ? kHasFourCoords : 0)));
  if (has_new_type) WriteNumber(out, type_);
  if (has_new_texture) WriteNumber(out, texture_ == nullptr ? 0 : texture_numbers_.at(texture_));
  for (const CBinVertex* corner : face.Corners())
    WriteStep(sections_[kCorners], corner->Index(), corner_);
  WriteCoords(face, has_four_coords ? 4 : 3);

  CByteWriter& normals = sections_[kNormals];
  WriteStep(normals, face.StoredNormal().x, normal_.x);
  WriteStep(normals, face.StoredNormal().y, normal_.y);
  WriteStep(normals, face.StoredNormal().z, normal_.z);
  WriteStep(normals, face.StoredMagic(), magic_);
}

void CWriter::WriteCoords(const CBinFace& face, int count) {
  const uint32_t width = GridWidth(face.Texture());
  for (int k = 0; k < count; ++k) {
    WriteCoord(sections_[kCoords], face.TexCoord(k).u, width);
    WriteCoord(sections_[kCoords], face.TexCoord(k).v, width);
  }
}

void CWriter::WriteGroups(EGroupKind kind) {
  CByteWriter& out = sections_[kGroups];
  WriteNumber(out, model_.GroupsOf(kind).size());
  for (const CBinGroup& group : model_.GroupsOf(kind)) {
    WriteText(out, group.Name());
    WriteNumber(out, group.Members().size());
    int32_t last = -1;
    for (const int32_t member : group.Members())
      WriteStep(out, member, last);
  }
}

}  // namespace

}  // namespace snapshot

void WriteSnapshot(const CBinModel& model, CByteWriter& out) {
  const CBinModel::CBusy busy(model);
  CByteWriter body;
  snapshot::CWriter(model).WriteBody(body);
  out.Reserve(out.Size() + snapshot::kHeaderSize + body.Size());
  out.WriteText(snapshot::kMagic);
  out.WriteU32(snapshot::kVersion);
  const uint64_t length = body.Size();
  out.WriteU32(static_cast<uint32_t>(length));
  out.WriteU32(static_cast<uint32_t>(length >> 32));
  out.WriteU32(Checksum(body.Bytes()));
  out.WriteBytes(body.Bytes());
}

}  // namespace veldra

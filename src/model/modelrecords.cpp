#include "model/modelrecords.h"

#include <algorithm>
#include <utility>

#include "model/binformat.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Walks the records as the loader does.
class CRecordReader {
 public:
  CRecordReader(std::span<const uint8_t> file, SModelRecords& records) : reader_(file), records_(records) {}

  SDiagnosis Read() {
    if (!ReadVertices()) return fault_;
    while (reader_.Remaining() >= kWordSize) {
      const uint32_t tag = reader_.ReadU32();
      // The last word of a file closes it, whatever it is.
      if (reader_.AtEnd()) break;
      if (!ReadRecord(tag)) return fault_;
    }
    return {};
  }

 private:
  bool Fail(std::string what) {
    fault_ = {reader_.Position(), std::move(what)};
    return false;
  }
  bool FailPastEnd(const char* record) { return Fail(std::string(record) + ": the file ends within it"); }
  bool Skip(size_t count, size_t width, const char* record) {
    if (!reader_.Holds(count, width)) return FailPastEnd(record);
    reader_.Skip(count * width);
    return true;
  }

  bool ReadVertices() {
    if (reader_.Size() < kHeaderSize) return FailPastEnd("header");
    if (reader_.ReadU32() == kAnimationControlType) return Fail("an animation control file, which holds no model");
    reader_.Seek(kVertexCountOffset);
    const uint32_t count = reader_.ReadU32();
    if (!reader_.Holds(count, kVertexSize)) return FailPastEnd("vertices");
    records_.vertices.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
      const int32_t x = reader_.ReadI32();
      const int32_t y = reader_.ReadI32();
      records_.vertices.push_back({x, y, reader_.ReadI32()});
    }
    return true;
  }

  bool ReadRecord(uint32_t tag) {
    switch (tag) {
      case kTagVertexNormals:
        return SkipVertexNormals();
      case kTagUntextured:
        return Skip(1, kWordSize, "untextured marker");
      case kTagTexture:
        return ReadSelection();
      case kTagIgnoredPair:
        return Skip(2, kWordSize, "ignored pair");
      case kTagAnimation:
        return ReadAnimation();
      default:
        return ReadFace(tag);
    }
  }

  bool SkipVertexNormals() {
    reader_.Skip(kWordSize);
    const uint32_t count = reader_.ReadU32();
    return !reader_.Failed() ? Skip(count, kVertexSize, "vertex normals") : FailPastEnd("vertex normals");
  }

  int32_t TexturePosition(SModelRecords::STexture texture) {
    auto& all = records_.textures;
    const auto found = std::ranges::find(all, texture);
    const auto position = static_cast<int32_t>(found - all.begin());
    if (found == all.end()) all.push_back(std::move(texture));
    return position;
  }

  bool ReadSelection() {
    reader_.Skip(kWordSize);
    std::string name = reader_.ReadFixedText(kTextureFieldSize);
    if (reader_.Failed()) return FailPastEnd("texture selection");
    std::string file_name = UpperCase(ChangeExtension(name.substr(0, kTextureNameLength), "RAW"));
    selected_ = {TexturePosition({std::move(name), std::move(file_name)})};
    return true;
  }

  bool ReadAnimation() {
    reader_.Skip(kWordSize);
    const uint32_t count = reader_.ReadU32();
    reader_.Skip(4 * kWordSize);
    if (reader_.Failed() || !reader_.Holds(count, kFrameFieldSize)) return FailPastEnd("animated texture");
    selected_.clear();
    for (uint32_t i = 0; i < count; ++i) {
      const std::string name = reader_.ReadFixedText(kFrameFieldSize);
      selected_.push_back(TexturePosition({name, UpperCase(name)}));
    }
    return true;
  }

  bool ReadFace(uint32_t tag) {
    const int32_t count = reader_.ReadI32();
    reader_.Skip(kFaceSize - kWordSize);
    if (reader_.Failed()) return FailPastEnd("face");
    if (count < 0 || count > kMostCorners) return Fail(Format("a face of %d corners", count));
    SModelRecords::SFace face;
    face.type = tag;
    face.has_coords = tag != kFaceUntextured;
    if (face.has_coords) face.textures = selected_;
    for (int32_t i = 0; i < count; ++i) {
      SModelRecords::SCorner corner;
      corner.vertex = reader_.ReadU32();
      if (face.has_coords) {
        corner.u = reader_.ReadU32();
        corner.v = reader_.ReadU32();
      }
      if (reader_.Failed()) return FailPastEnd("face");
      if (corner.vertex >= records_.vertices.size())
        return Fail(Format("face %zu names vertex %u, the model has %zu", records_.faces.size(), corner.vertex,
                           records_.vertices.size()));
      face.corners.push_back(corner);
    }
    records_.faces.push_back(std::move(face));
    return true;
  }

  CByteReader reader_;
  SModelRecords& records_;
  std::vector<int32_t> selected_;
  SDiagnosis fault_;
};

}  // namespace

SDiagnosis ReadModelRecords(std::span<const uint8_t> file, SModelRecords& records) {
  records = {};
  return CRecordReader(file, records).Read();
}

}  // namespace veldra

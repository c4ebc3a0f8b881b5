#include "model/texturenames.h"

#include "model/binformat.h"
#include "model/helperclasses.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Walks the records as the loader does, stopping only at the names.
class CTextureNameReader {
 public:
  CTextureNameReader(std::span<const uint8_t> file, std::vector<std::string>& names) : reader_(file), names_(names) {}

  SDiagnosis Read();

 private:
  bool SkipVertices();
  bool ReadRecord(uint32_t tag);
  bool ReadSelection();
  bool ReadAnimation();
  bool SkipCounted(uint32_t count, size_t width);
  bool SkipFace(uint32_t tag);
  bool SkipWords(size_t count) {
    reader_.Skip(count * kWordSize);
    return !reader_.Failed();
  }

  CByteReader reader_;
  std::vector<std::string>& names_;
};

SDiagnosis CTextureNameReader::Read() {
  const uint32_t type = reader_.ReadU32();
  if (!reader_.Failed() && type == kAnimationControlType) return {};
  bool is_good = SkipVertices();
  while (is_good && reader_.Remaining() >= kWordSize) {
    const uint32_t tag = reader_.ReadU32();
    // The last word of a file closes it, whatever it is.
    if (reader_.AtEnd()) break;
    is_good = ReadRecord(tag);
  }
  return is_good ? SDiagnosis{} : SDiagnosis{reader_.Position(), "the model file is damaged"};
}

bool CTextureNameReader::SkipVertices() {
  reader_.Seek(kVertexCountOffset);
  return SkipCounted(reader_.ReadU32(), kVertexSize);
}

bool CTextureNameReader::SkipCounted(uint32_t count, size_t width) {
  if (!reader_.Holds(count, width)) return false;
  reader_.Skip(count * width);
  return true;
}

bool CTextureNameReader::ReadRecord(uint32_t tag) {
  switch (tag) {
    case kTagVertexNormals:
      return SkipWords(1) && SkipCounted(reader_.ReadU32(), kVertexSize);
    case kTagUntextured:
      return SkipWords(1);
    case kTagTexture:
      return ReadSelection();
    case kTagIgnoredPair:
      return SkipWords(2);
    case kTagAnimation:
      return ReadAnimation();
    default:
      return SkipFace(tag);
  }
}

bool CTextureNameReader::ReadSelection() {
  reader_.Skip(kWordSize);
  const std::string field = reader_.ReadFixedText(kTextureNameLength);
  reader_.Skip(kTextureFieldSize - kTextureNameLength);
  if (reader_.Failed()) return false;
  names_.push_back(UpperCase(ChangeExtension(field, "RAW")));
  return true;
}

bool CTextureNameReader::ReadAnimation() {
  reader_.Skip(kWordSize);
  const uint32_t count = reader_.ReadU32();
  reader_.Skip(4 * kWordSize);
  if (!reader_.Holds(count, kFrameFieldSize)) return false;
  for (uint32_t i = 0; i < count; ++i)
    names_.push_back(UpperCase(reader_.ReadFixedText(kFrameFieldSize)));
  return true;
}

bool CTextureNameReader::SkipFace(uint32_t tag) {
  const int32_t count = reader_.ReadI32();
  if (reader_.Failed() || count < 0 || count > kMostCorners) return false;
  const size_t corner = tag == kFaceUntextured ? kUntexturedCornerSize : kCornerSize;
  reader_.Skip(kFaceSize - kWordSize + static_cast<size_t>(count) * corner);
  return !reader_.Failed();
}

}  // namespace

SDiagnosis ReadTextureNames(std::span<const uint8_t> file, std::vector<std::string>& names) {
  return CTextureNameReader(file, names).Read();
}

std::string TextureNameOf(std::string_view path) {
  return UpperCase(ChangeExtension(FileNamePart(path), "RAW"));
}

std::string TextureNameFault(std::string_view name) {
  if (name.size() <= kTextureNameLength) return "";
  return Format("The texture name \"%s\" is too long for a model file: %zu characters fit.", DisplayName(name).c_str(),
                kTextureNameLength);
}

}  // namespace veldra

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "model/binfile.h"
#include "model/binformat.h"
#include "model/infofile.h"
#include "model/normals.h"
#include "platform/assert.h"
#include "platform/fileset.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Faces between two reports of how far it is.
constexpr int32_t kFacesAStep = 4096;
constexpr int32_t kNoMagic = std::numeric_limits<int32_t>::min();

/// Gathers words in a block of its own: growing the file by four bytes at a time costs more than working out what is in
/// them. Flush at the end.
class CWordBlock {
 public:
  explicit CWordBlock(CByteWriter& out) : out_(out) {}
  CWordBlock(const CWordBlock&) = delete;
  CWordBlock& operator=(const CWordBlock&) = delete;

  void Word(uint32_t word) {
    if (size_ == block_.size()) Flush();
    for (size_t i = 0; i < kWordSize; ++i)
      block_[size_ + i] = static_cast<uint8_t>(word >> (8 * i));
    size_ += kWordSize;
  }
  void Word(int32_t word) { Word(static_cast<uint32_t>(word)); }
  void Point(const SPoint& point) {
    Word(point.x);
    Word(point.y);
    Word(point.z);
  }
  void Text(std::string_view text, size_t width) {
    Flush();
    out_.WriteFixedText(text, width);
  }
  void Flush() {
    out_.WriteBytes({block_.data(), size_});
    size_ = 0;
  }

 private:
  CByteWriter& out_;
  std::array<uint8_t, 16384> block_;
  size_t size_ = 0;
};

/// Which faces open with a texture selection: those whose entry is another than the face before had.
class CSelections {
 public:
  /// The entry to select before FACE; null when none is.
  const CBinTexture* Before(const CBinFace& face) {
    const bool is_change = is_first_ || face.Texture() != previous_;
    is_first_ = false;
    previous_ = face.Texture();
    return is_change ? previous_ : nullptr;
  }

 private:
  const CBinTexture* previous_ = nullptr;
  bool is_first_ = true;
};

/// The word for RATE frames a second: truncated, so that a period that went through the reciprocal twice can come out
/// one lower, as the game's own tools write it.
uint32_t PeriodWord(double rate) {
  const double period = kPeriodOfOneSecond / rate;
  if (!(period >= 0.0 && period < 4294967296.0)) return 0x80000000U;
  return static_cast<uint32_t>(period);
}

class CBinSaver {
 public:
  CBinSaver(const CBinModel& model, const SSaveOptions& options, CByteWriter& out, CProgress* progress)
      : model_(model), options_(options), out_(out), progress_(progress) {}

  /// False when it was stopped.
  bool Save() {
    if (!FindNormals()) return false;
    WriteHeader();
    if (options_.vertex_normals) WriteVertexNormals();
    CSelections selections;
    for (int32_t i = 0; i < model_.FaceCount(); ++i) {
      if (!MayGoOn(i, 1)) return false;
      const CBinFace& face = model_.Face(i);
      const CBinTexture* const entry = selections.Before(face);
      if (entry != nullptr) WriteSelection(*entry);
      WriteFace(face);
    }
    out_.Word(0U);
    out_.Flush();
    return true;
  }

 private:
  /// ROUND: the walks over all faces that are done.
  bool MayGoOn(int32_t face, uint64_t round) {
    constexpr uint64_t kRounds = 2;
    if (face % kFacesAStep != 0 || progress_ == nullptr) return true;
    const auto faces = static_cast<uint64_t>(model_.FaceCount());
    return progress_->Step(round * faces + static_cast<uint64_t>(face), kRounds * faces);
  }

  bool FindNormals() {
    normals_.reserve(static_cast<size_t>(model_.FaceCount()));
    for (int32_t i = 0; i < model_.FaceCount(); ++i) {
      if (!MayGoOn(i, 0)) return false;
      normals_.push_back(CalcFaceNormal(model_.Face(i)));
    }
    return true;
  }

  const SPoint& NormalOf(const CBinFace& face) const { return normals_[static_cast<size_t>(face.Index())]; }

  void WriteHeader() {
    out_.Word(kModelType);
    out_.Word(options_.scale_word);
    out_.Word(2U);
    out_.Word(0U);
    out_.Word(model_.VertexCount());
    for (int32_t i = 0; i < model_.VertexCount(); ++i)
      out_.Point(model_.Vertex(i).Position());
  }

  void WriteVertexNormals() {
    out_.Word(kTagVertexNormals);
    out_.Word(0U);
    out_.Word(model_.VertexCount());
    const auto normal_of = [this](const CBinFace& face) { return NormalOf(face); };
    for (int32_t i = 0; i < model_.VertexCount(); ++i)
      out_.Point(MeanNormal(model_.Vertex(i), normal_of));
  }

  void WriteSelection(const CBinTexture& entry) {
    if (entry.Kind() == ETextureKind::kPlain) {
      out_.Word(kTagTexture);
      out_.Word(0U);
      out_.Text(entry.Name(), kTextureFieldSize);
      return;
    }
    const auto& frames = entry.Frames();
    const uint32_t words[] = {
        kTagAnimation, 0, static_cast<uint32_t>(frames.size()), 0, PeriodWord(entry.Rate()), 0, 0};
    for (const uint32_t word : words)
      out_.Word(word);
    for (const CBinTexture::SFrame& frame : frames) {
      VELDRA_ASSERT(frame.name.size() <= kLongestFrameName);
      out_.Text(frame.name, kFrameFieldSize);
    }
  }

  void WriteFace(const CBinFace& face) {
    const uint32_t type = options_.backdrop ? uint32_t{kFaceTransparentMtm} : face.Type();
    const bool is_textured = type != kFaceUntextured;
    if (!is_textured) {
      out_.Word(kTagUntextured);
      out_.Word(0U);
    }
    const SPoint& normal = NormalOf(face);
    out_.Word(type);
    out_.Word(face.CornerCount());
    out_.Point(normal);
    out_.Word(options_.backdrop ? kNoMagic : CalcMagic(face, normal));
    for (int k = 0; k < face.CornerCount(); ++k) {
      out_.Word(face.Corner(k)->Index());
      if (!is_textured) continue;
      out_.Word(Truncate(face.TexCoord(k).u * kTexCoordOne));
      out_.Word(Truncate(face.TexCoord(k).v * kTexCoordOne));
    }
  }

  const CBinModel& model_;
  const SSaveOptions& options_;
  CWordBlock out_;
  CProgress* progress_;
  std::vector<SPoint> normals_;
};

/// What the records of a model without texture changes take; they are few beside the faces.
size_t ExpectedSize(const CBinModel& model, const SSaveOptions& options) {
  const auto vertices = static_cast<size_t>(model.VertexCount());
  const auto faces = static_cast<size_t>(model.FaceCount());
  const size_t normals = options.vertex_normals ? 3 * kWordSize + vertices * kVertexSize : 0;
  const size_t face_size = kWordSize + kFaceSize + 4 * kCornerSize;
  return kHeaderSize + vertices * kVertexSize + normals + faces * face_size + kWordSize;
}

std::string NameFault(const CBinTexture& entry) {
  if (entry.Kind() == ETextureKind::kPlain) {
    if (entry.Name().size() <= kTextureFieldSize) return "";
    return Format("The texture name \"%s\" is too long for a model file: %zu characters fit.", entry.Name().c_str(),
                  kTextureFieldSize);
  }
  for (const CBinTexture::SFrame& frame : entry.Frames()) {
    if (frame.name.size() <= kLongestFrameName) continue;
    return Format("The texture name \"%s\" in the animation \"%s\" is too long for a model file: %zu characters fit.",
                  frame.name.c_str(), entry.Name().c_str(), kLongestFrameName);
  }
  return "";
}

std::span<const uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

}  // namespace

bool SaveBin(const CBinModel& model, const SSaveOptions& options, CByteWriter& out, CProgress* progress) {
  CBinModel::CBusy busy(model);
  VELDRA_ASSERT(NameFault(model).empty());
  out.Reserve(out.Size() + ExpectedSize(model, options));
  return CBinSaver(model, options, out, progress).Save();
}

std::vector<std::string> AnimationNamesInFileOrder(const CBinModel& model) {
  std::vector<std::string> names;
  CSelections selections;
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    const CBinTexture* const entry = selections.Before(model.Face(i));
    if (entry != nullptr && entry->Kind() == ETextureKind::kAnimated) names.push_back(entry->Name());
  }
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& entry = model.Texture(i);
    if (entry.Kind() == ETextureKind::kAnimated && entry.UseCount() == 0) names.push_back(entry.Name());
  }
  return names;
}

std::string NameFault(const CBinModel& model) {
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& entry = model.Texture(i);
    // An entry that no face uses is not in the file.
    std::string fault = entry.UseCount() == 0 ? "" : NameFault(entry);
    if (!fault.empty()) return fault;
  }
  return "";
}

bool SaveBinFile(const CBinModel& model, const SSaveOptions& options, const std::string& path, SError* error,
                 CProgress* progress) {
  const std::string fault = NameFault(model);
  if (!fault.empty()) {
    if (error != nullptr) error->what = fault;
    return false;
  }
  CByteWriter bytes;
  if (!SaveBin(model, options, bytes, progress)) {
    if (error != nullptr) error->what = "";
    return false;
  }
  const std::string info = WriteInfo(model, AnimationNamesInFileOrder(model));
  const std::vector<SNewFile> files = {{path, bytes.Bytes()}, {InfoPath(path), BytesOf(info)}};
  if (options.beside.empty()) return ReplaceFiles(files, error);
  std::vector<std::vector<SNewFile>> sets = {files};
  sets.insert(sets.end(), options.beside.begin(), options.beside.end());
  return ReplaceFileSets(sets, error);
}

}  // namespace veldra

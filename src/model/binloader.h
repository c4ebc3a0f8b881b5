#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/binfile.h"
#include "model/binformat.h"
#include "platform/text.h"

/// Inside LoadBin: the walk over a model file's records.
namespace veldra {

/// What stopped a load. The user has been told already unless it is a damaged file.
enum class ESeverity { kCorrupt, kStopped };

/// The distinct corners of a face, as they come in.
struct SCorners {
  std::array<CBinVertex*, kMostCorners> vertices = {};
  size_t count = 0;

  bool Has(const CBinVertex* vertex) const {
    return std::find(vertices.begin(), vertices.begin() + static_cast<std::ptrdiff_t>(count), vertex) !=
           vertices.begin() + static_cast<std::ptrdiff_t>(count);
  }
};

class CBinLoader {
 public:
  CBinLoader(CBinModel& model, std::span<const uint8_t> file, const std::vector<std::string>& animation_names,
             const SLoadContext& context)
      : model_(model), reader_(file), animation_names_(animation_names), context_(context) {}

  bool Load() { return ReadHeader() && ReadVertices() && ReadRecords(); }

  bool IsCorrupt() const { return is_corrupt_; }
  const SDiagnosis& Diagnosis() const { return diagnosis_; }

 private:
  // Header and vertices.
  bool ReadHeader();
  bool CheckType(uint32_t type);
  bool ReadVertices();

  // Records, in the order in which docs/file-formats.md lists them.
  bool ReadRecords();
  bool ReadRecord(uint32_t tag);
  bool SkipVertexNormals();
  bool SkipWords(const char* record, size_t count);
  bool ReadTextureSelection();
  bool ReadAnimatedTexture();
  bool ReadFrames(uint32_t count, std::vector<CBinTexture::SFrame>& frames);
  bool ReadFace(uint32_t tag, uint32_t type);
  bool ReadCorners(uint32_t tag, int32_t count, CBinFace& face, SCorners& corners);
  bool ReadUnknown(uint32_t tag);
  bool CheckUnknown(uint32_t tag);

  CBinTexture* PlainTexture(const std::string& name);
  CBinTexture& AnimatedTexture(std::vector<CBinTexture::SFrame> frames, double rate);
  CBinTexture& AddAnimation(std::string name, std::vector<CBinTexture::SFrame> frames, double rate);
  void Select(CBinTexture& entry);
  bool IsTextureSizeTaken();
  double Snap(uint32_t raw) const;

  bool MayGoOn(size_t items);
  bool Fail(ESeverity severity, size_t offset, std::string what);
  bool FailPastEnd(const std::string& record);
  bool FailVertex(uint32_t tag, int32_t corner, uint32_t index, size_t offset);
  bool FailCornerCount(uint32_t tag, int32_t count, size_t offset);
  std::string SelectionName() const { return Format("texture selection %d", selection_number_); }
  std::string AnimationName() const { return Format("animated texture %d", animation_number_); }
  std::string FaceName(uint32_t tag) const { return Format("face %d (type 0x%02x)", face_number_, tag); }
  bool IsVertex(uint32_t index) const { return index < static_cast<uint32_t>(model_.VertexCount()); }

  CBinModel& model_;
  CByteReader reader_;
  const std::vector<std::string>& animation_names_;
  const SLoadContext& context_;

  CBinTexture* texture_ = nullptr;  ///< selected for the faces that follow
  double size_factor_ = 1.0;        ///< its width - 1
  bool may_ask_size_ = true;
  std::unordered_map<std::string, CBinTexture*> plain_by_name_;
  std::unordered_map<std::string, CBinTexture*> animated_by_content_;
  std::map<uint32_t, SUnknownFaceAnswer> decisions_;

  // Records met so far, to name one in a diagnosis; each kind counts from 0.
  int face_number_ = 0;
  int selection_number_ = 0;
  int animation_number_ = 0;

  bool is_corrupt_ = false;
  SDiagnosis diagnosis_;
};

}  // namespace veldra

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "interchange/importfault.h"
#include "model/binmodel.h"
#include "packing/modeltextures.h"
#include "platform/questions.h"
#include "textures/texturestore.h"

namespace veldra {

/// What an import works with.
struct SImportContext {
  CTextureStore& textures;
  CQuestions& questions;
  std::string art_directory;           ///< where textures are looked for by name
  uint32_t face_type = kFaceTextured;  ///< of the new faces: the setting DEFFACETYPE
  const CSettings* settings =
      nullptr;  ///< textures are also looked for near the mesh, and in archives; null: they are not
};

/// The texture at PATH; when no file is there, the one of that name in the texture directory, near the file MESH or in
/// an archive, as those of models are found, and when that is missing too, what the user picks. Null with FAULT filled
/// when none can be loaded or a model cannot name it.
const STextureImage* FindImportTexture(const std::string& path, const std::string& mesh, const SImportContext& context,
                                       SImportFault& fault);
/// Tells the user that the file PATH could not be imported, and why, unless he knows.
void ShowImportFault(const std::string& path, const SImportFault& fault, CQuestions& questions);

/// Where the corners of a face lie in its texture when nothing else is known.
inline constexpr std::array<STexCoord, 4> kWholeTexture = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};

/// How many faces a mesh file of SIZE bytes may make. A face of a model takes some 290 bytes on its way into a file;
/// one of a mesh that somebody made stands on 14 bytes and more, once there are more than these.
constexpr uint64_t MostFaces(uint64_t size) {
  constexpr uint64_t kAlways = 200'000;
  constexpr uint64_t kBytesOfFace = 15;
  return kAlways + size / kBytesOfFace;
}
/// What is said of more.
std::string TooManyFaces(uint64_t size);

/// Collects what an import makes beside the model that it is for, which changes once, at the end, or not at all.
class CImportBuilder {
 public:
  CBinModel& Model() { return made_; }
  CBinTexture& AddTexture(const std::string& name, const STextureImage& image);
  /// 3 or 4 distinct CORNERS, and as many COORDS or more, which do not count for faces of type 0x19. Those alone may be
  /// without a texture. Stored normal and magic become the computed ones.
  void AddFace(std::span<const int32_t> corners, CBinTexture* texture, uint32_t type,
               std::span<const STexCoord> coords);
  /// Puts everything behind what MODEL has.
  bool AppendTo(CBinModel& model, SImportFault& fault);

 private:
  CBinModel made_;
};

/// Shows how far an import is, every few thousand STEPS of TOTAL.
class CImportProgress {
 public:
  CImportProgress(CQuestions& questions, const std::string& path);
  /// False when the user wants it stopped.
  bool Step(uint64_t done, uint64_t total) { return done % kStride != 0 || progress_->Step(done, total); }
  CProgress& Progress() { return *progress_; }

 private:
  static constexpr uint64_t kStride = 16384;
  std::unique_ptr<CProgress> progress_;
};

}  // namespace veldra

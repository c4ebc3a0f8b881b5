#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/binmodel.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/fileset.h"
#include "platform/questions.h"
#include "textures/texturefinder.h"

/// Model files. The byte functions know nothing of files and are what the fuzzers call; docs/file-formats.md has the
/// layout.
namespace veldra {

inline constexpr const char* kCorruptModelText = "Model is currupt and cannot be loaded";

struct SLoadContext {
  CTextureFinder& textures;
  CQuestions& questions;
  /// Ask once a load about textures that are neither 64 nor 256 wide (setting TEXTURESIZEMSG).
  bool ask_texture_size = true;
  CProgress* progress = nullptr;  ///< told how far the load is, and stops it; may be null
};

/// Fills the empty MODEL from the bytes of a model file and of its sidecar (INFO, empty when there is none). Whatever
/// the bytes are, nothing is read outside them and memory taken stays in proportion to them. On failure the user has
/// been told, MODEL is empty and DIAGNOSIS (may be null) says what and where, also where no message is shown (a
/// textured face before any texture, the user's own "no", a stop through the progress).
bool LoadBin(CBinModel& model, std::span<const uint8_t> file, std::string_view info, const SLoadContext& context,
             SDiagnosis* diagnosis = nullptr);

/// LoadBin on PATH and the sidecar beside it (found in any letter case).
bool LoadBinFile(CBinModel& model, const std::string& path, const SLoadContext& context,
                 SDiagnosis* diagnosis = nullptr);

/// The bytes of the model file PATH as one save left it, for who looks at them unmended. Nothing with ERROR.
std::optional<CFileBytes> ReadBinBytes(const std::string& path, SError* error);

struct SSaveOptions {
  bool backdrop = false;        ///< every face record's type 0x11 and its magic 0x80000000
  bool vertex_normals = false;  ///< with the block of vertex normals
  int32_t scale_word = 0x10000;
  /// Sets of files that SaveBinFile writes with the model, all or none.
  std::span<const std::vector<SNewFile>> beside = {};
};

/// Appends the model file's bytes to OUT. Names too long for their fields are a programming error: ask NameFault first.
/// False when PROGRESS (may be null) was stopped; OUT is then good for nothing.
bool SaveBin(const CBinModel& model, const SSaveOptions& options, CByteWriter& out, CProgress* progress = nullptr);

/// The names for the sidecar: one for each animated texture record that SaveBin writes, in its order (a name may
/// repeat), then those of the animations that no face uses.
std::vector<std::string> AnimationNamesInFileOrder(const CBinModel& model);

/// "" or, in words, the first texture name that does not fit its field in the file.
std::string NameFault(const CBinModel& model);

/// Replaces the model file and its sidecar together. On failure, which leaves both old files, ERROR says why; it is
/// empty when PROGRESS (may be null) was stopped.
bool SaveBinFile(const CBinModel& model, const SSaveOptions& options, const std::string& path, SError* error,
                 CProgress* progress = nullptr);

/// The sidecar's name: PATH with ".info" appended.
std::string InfoPath(std::string_view path);

}  // namespace veldra

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"
#include "platform/bytes.h"
#include "platform/png.h"
#include "textures/texturefinder.h"

/// The files in which the program keeps models for itself: a label that tells the user what it is, and a packed
/// snapshot.
namespace veldra {

struct SCopyLabel {
  std::string title;       ///< the document's title, or the command that led to this state
  std::string path;        ///< of the model file; "" while it was never saved
  std::string states_key;  ///< where the document's earlier states are; "" for nowhere
  int64_t time = 0;        ///< when it was written: seconds since 1970, UTC
  int32_t vertices = 0;
  int32_t faces = 0;
  SImage picture = {};  ///< small; without pixels when there is none
};

/// Pictures with a longer side are left out.
inline constexpr int kLargestCopyPicture = 512;

/// The whole file. The counts of LABEL are taken from MODEL, which must not be busy.
std::vector<uint8_t> WriteModelCopy(SCopyLabel label, const CBinModel& model);

/// The label of FILE, whose every byte is checked but for what only ReadModelCopy sees.
std::optional<SCopyLabel> ReadCopyLabel(std::span<const uint8_t> file, SDiagnosis* diagnosis = nullptr);

/// Fills the empty MODEL; false, MODEL empty, when FILE is damaged or a texture is missing.
bool ReadModelCopy(std::span<const uint8_t> file, CBinModel& model, CTextureFinder& textures,
                   SDiagnosis* diagnosis = nullptr);

/// Whether two files hold the same model exactly, whatever their labels say.
bool IsSameModel(std::span<const uint8_t> a, std::span<const uint8_t> b);

/// Seconds since 1970, UTC.
int64_t PresentTime();

}  // namespace veldra

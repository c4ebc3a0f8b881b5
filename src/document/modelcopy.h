#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "document/copyfile.h"
#include "model/binmodel.h"
#include "platform/files.h"
#include "textures/texturefinder.h"

/// Copies of models: their content is a snapshot.
namespace veldra {

/// The whole file. The counts of LABEL are taken from MODEL, which must not be busy. May throw std::bad_alloc.
std::vector<uint8_t> WriteModelCopy(SCopyLabel label, const CBinModel& model);

/// Fills the empty MODEL; false, MODEL empty, when FILE is damaged or a texture is missing.
bool ReadModelCopy(std::span<const uint8_t> file, CBinModel& model, CTextureFinder& textures,
                   SDiagnosis* diagnosis = nullptr);

}  // namespace veldra

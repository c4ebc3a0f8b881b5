#pragma once

#include <cstdint>
#include <span>

#include "model/binmodel.h"
#include "platform/bytes.h"
#include "textures/texturefinder.h"

namespace veldra {

/// A lossless image of a model in memory: the game's own format rounds texture coordinates and leaves out unused
/// textures, stored normals of other variants and groups, so it cannot bring back exactly what the user had.
/// snapshotformat.h has the layout.
///
/// Everything the model holds is in it but what follows from the rest (bounds, unit normals, use counts) and the
/// texture images, which are found by name again. The model must not be busy.
void WriteSnapshot(const CBinModel& model, CByteWriter& out);

/// Fills the empty MODEL from all of SNAPSHOT. Whatever the bytes are, nothing is read outside them and memory taken
/// stays in proportion to them; a snapshot that was changed anywhere is refused. False when it is damaged, of a newer
/// version, or when a texture was found nowhere and the user gave up; MODEL is empty then and DIAGNOSIS (may be null)
/// says what and where.
bool ReadSnapshot(CBinModel& model, std::span<const uint8_t> snapshot, CTextureFinder& textures,
                  SDiagnosis* diagnosis = nullptr);

}  // namespace veldra

#pragma once

#include <cstdint>
#include <string>

#include "document/tarn2doc.h"
#include "shapes/shape.h"

/// Generated shapes as a part of a document's model.
namespace veldra {

struct SInsertShapeInput {
  SShape shape;
  uint32_t type = kFaceTextured;  ///< of the faces; without a texture it is 0x19
  int32_t texture = -1;           ///< position among the model's texture entries; -1 for none
};

/// Adds the shape behind what the model has, with its groups, and selects its faces and vertices and nothing else.
/// False when the user has been told why it cannot be built.
bool InsertShape(CTarnDoc& document, const SInsertShapeInput& input);

/// Where a shape goes that is to stand where the user works: the middle of what is selected, else MIDDLE_OF_VIEW.
SPoint PlaceForShape(const CBinModel& model, const SPoint& middle_of_view);

}  // namespace veldra

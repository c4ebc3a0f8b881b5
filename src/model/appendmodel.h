#pragma once

#include "model/binmodel.h"

namespace veldra {

/// Moves OTHER's vertices and faces in behind MODEL's own; OTHER is empty afterwards. Plain texture entries of the same
/// name are shared, animations too when they have the same frames and rate. Groups come along as new groups. A group or
/// animation whose name is taken gets a number: "hood 2". With RECOMPUTE_MAGIC the moved faces' stored magic becomes
/// the computed one. Returns false, both unchanged, when the counts together do not fit in 31 bits.
bool AppendModel(CBinModel& model, CBinModel& other, bool recompute_magic);

}  // namespace veldra

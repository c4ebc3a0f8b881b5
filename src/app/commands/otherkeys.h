#pragma once

#include <vector>

#include "view/keyboardtable.h"

namespace veldra {

/// The keys of the command table that the list of keyboard commands does not have.
std::vector<SKeyRow> OtherKeys();

}  // namespace veldra

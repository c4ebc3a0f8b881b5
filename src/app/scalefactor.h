#pragma once

#include <string>
#include <string_view>

namespace veldra {

/// What is wrong with TEXT as a Hellbender scale factor, in a sentence, or "". The file holds it as a 16.16 fixed-point
/// word, which must neither overflow nor come out as zero.
std::string ScaleFactorFault(std::string_view text);

}  // namespace veldra

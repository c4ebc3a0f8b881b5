#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bytes.h"

namespace veldra {

/// The texture files that the model in FILE names, upper-cased, in the order in which they are met; of animations each
/// frame. A name comes as often as it is selected. Loads no textures and asks nothing; a face of unknown type is
/// stepped over like one that the user ignores. When the file turns out to be damaged, the names before that are in
/// NAMES and the result says where; else it is empty.
SDiagnosis ReadTextureNames(std::span<const uint8_t> file, std::vector<std::string>& names);

/// As a model names the texture file PATH: upper case, without folder, with the extension RAW.
std::string TextureNameOf(std::string_view path);

/// "", or why a model cannot have a texture of this NAME: files keep 12 characters of it.
std::string TextureNameFault(std::string_view name);

}  // namespace veldra

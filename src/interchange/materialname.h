#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How the material of a mesh file says which texture and which type its faces have: "ROAD_0x18".
namespace veldra {

/// Of faces without a texture.
inline constexpr std::string_view kUntexturedMaterial = "untextured_0x19";

struct SMaterialName {
  std::string_view texture;      ///< all but the type
  std::optional<uint32_t> type;  ///< nothing where the name ends in none that a face can have
};

/// NAME ends in "_0xTT", in either letter case; a modelling program may have put ".001" behind it.
SMaterialName ParseMaterialName(std::string_view name);
std::string MaterialName(std::string_view texture, uint32_t type);

}  // namespace veldra

#pragma once

#include <map>
#include <string>
#include <vector>

#include "interchange/wavemesh.h"

namespace veldra {

/// For each material with a map_Kd the picture that it names, as written.
using WaveMaps = std::map<std::string, std::string, std::less<>>;

/// Adds the materials of the MTL text; one that is defined twice keeps its first map.
void ParseMaterials(std::string_view text, WaveMaps& maps);

/// Those of all files that the mesh of the Wavefront file PATH names. Files are looked for beside it, in any letter
/// case; one that cannot be read adds a remark.
WaveMaps ReadMaterials(const std::string& path, const std::vector<std::string>& files, CRemarks& remarks);

}  // namespace veldra

#pragma once

#include <map>
#include <string>
#include <vector>

#include "interchange/wavemesh.h"

namespace veldra {

struct SWaveMap {
  std::string picture;  ///< as written, from whatever system
  std::string folder;   ///< of the file that names it
};

/// The map_Kd of each material that has one.
using WaveMaps = std::map<std::string, SWaveMap, std::less<>>;

/// Adds the materials of the MTL text, which lies in FOLDER; one that is defined twice keeps its first map.
void ParseMaterials(std::string_view text, const std::string& folder, WaveMaps& maps);

/// Those of all files that the mesh of the Wavefront file PATH names. Files are looked for beside it, in any letter
/// case; one that cannot be read adds a remark.
WaveMaps ReadMaterials(const std::string& path, const std::vector<std::string>& files, CRemarks& remarks);

/// The picture's file: where MAP says, seen from its own folder or that of the mesh file PATH, in any letter case, else
/// the one of its name in these folders; "" when there is none. Then where it says by itself, if that is on this
/// machine.
std::string FindPicture(const std::string& path, const SWaveMap& map);

}  // namespace veldra

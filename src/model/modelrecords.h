#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "model/helperclasses.h"
#include "platform/bytes.h"

namespace veldra {

/// A model file as it stands on the disk: nothing is mended, cut off or looked up.
struct SModelRecords {
  struct STexture {
    std::string name;       ///< the whole of its field, as stored
    std::string file_name;  ///< what a load looks for
    bool operator==(const STexture&) const = default;
  };
  struct SCorner {
    uint32_t vertex = 0;
    uint32_t u = 0;  ///< 0x00FFFFFF is the texture's end
    uint32_t v = 0;
  };
  struct SFace {
    uint32_t type = 0;
    bool has_coords = false;
    std::vector<int32_t> textures;  ///< positions in `textures`: those of an animation, or one, or none
    std::vector<SCorner> corners;   ///< 0 to 4, each of a vertex that there is
  };
  std::vector<SPoint> vertices;
  std::vector<STexture> textures;  ///< each once
  std::vector<SFace> faces;
};

/// Reads FILE into RECORDS. A face of unknown type is read like a textured one. What comes back is empty, or says what
/// is damaged and where.
SDiagnosis ReadModelRecords(std::span<const uint8_t> file, SModelRecords& records);

}  // namespace veldra

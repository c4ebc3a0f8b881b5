#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veldra::samples {

struct SSoundDesign {
  const char* name;        ///< "MKIDLE.WAV"
  double first_frequency;  ///< of the engine's firing, hertz
  double last_frequency;
  double seconds;
};

/// What the sample truck sounds like: idling, driving, revving up.
std::vector<SSoundDesign> SoundDesigns();

/// A WAV file: 8 bits, mono, 11025 samples a second.
std::vector<uint8_t> EngineSound(const SSoundDesign& design);

}  // namespace veldra::samples

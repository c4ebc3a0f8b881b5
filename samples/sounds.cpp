#include "samples/sounds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/bytes.h"
#include "samples/paint.h"

namespace veldra::samples {

namespace {

constexpr uint32_t kRate = 11025;
constexpr double kFadeSeconds = 0.02;

/// One firing of the engine at PHASE 0..1: a bang that dies down, the second of two a little weaker.
double Firing(double phase, int number) {
  const double bang = std::exp(-5.0 * phase) * std::sin(2.0 * std::numbers::pi * 3.0 * phase);
  return bang * (number % 2 == 0 ? 1.0 : 0.75);
}

}  // namespace

std::vector<SSoundDesign> SoundDesigns() {
  return {{"MKIDLE.WAV", 28, 28, 1.0}, {"MKDRIVE.WAV", 62, 62, 1.0}, {"MKREV.WAV", 30, 120, 1.6}};
}

std::vector<uint8_t> EngineSound(const SSoundDesign& design) {
  const auto samples = static_cast<uint32_t>(design.seconds * kRate);
  CByteWriter out;
  out.WriteText("RIFF");
  out.WriteU32(36 + samples);
  out.WriteText("WAVEfmt ");
  out.WriteU32(16);
  out.WriteU16(1);  // plain samples
  out.WriteU16(1);  // one channel
  out.WriteU32(kRate);
  out.WriteU32(kRate);  // bytes a second
  out.WriteU16(1);      // bytes a sample
  out.WriteU16(8);      // bits a sample
  out.WriteText("data");
  out.WriteU32(samples);
  double firings = 0;
  for (uint32_t i = 0; i < samples; ++i) {
    const double time = i / double(kRate);
    firings +=
        (design.first_frequency + (design.last_frequency - design.first_frequency) * time / design.seconds) / kRate;
    const double whole = std::floor(firings);
    const double rumble = (Noise(time * 900.0, 0.5, 90) - 0.5) * 0.3;
    const double fade = std::clamp(std::min(time, design.seconds - time) / kFadeSeconds, 0.0, 1.0);
    const double sample = (Firing(firings - whole, static_cast<int>(whole)) + rumble) * fade;
    out.WriteU8(static_cast<uint8_t>(std::clamp(128.0 + 110.0 * sample, 0.0, 255.0)));
  }
  return {out.Bytes().begin(), out.Bytes().end()};
}

}  // namespace veldra::samples

#include "platform/paths.h"
#include "platform/sound.h"
#include "platform/windows_system.h"
// Needs the one above.
#include <mmsystem.h>

namespace veldra {

std::string CSoundPlayer::WhyNot() {
  return waveOutGetNumDevs() == 0 ? "This computer has no sound device." : "";
}

bool CSoundPlayer::Play(const std::string& path, SError* error) {
  if (PlaySoundW(ToWide(NativePath(path)).c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT) != 0) return true;
  if (error != nullptr) error->what = "Windows cannot play it.";
  return false;
}

void CSoundPlayer::Stop() {
  PlaySoundW(nullptr, nullptr, 0);
}

}  // namespace veldra

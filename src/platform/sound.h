#pragma once

#include <string>

#include "platform/files.h"

namespace veldra {

/// Plays WAV files with what the system has: one at a time, in the background. Linux: the first of the programs
/// pw-play, paplay and aplay that is there. Windows: its own sound service.
class CSoundPlayer {
 public:
  CSoundPlayer() = default;
  ~CSoundPlayer() { Stop(); }
  CSoundPlayer(const CSoundPlayer&) = delete;
  CSoundPlayer& operator=(const CSoundPlayer&) = delete;

  /// Why nothing can be played on this system; "" when it can.
  static std::string WhyNot();
  /// Begins to play the file PATH; what still plays is stopped. False, with the reason, when that fails at once.
  bool Play(const std::string& path, SError* error);
  void Stop();

 private:
  long process_ = 0;  ///< the playing program's; 0 for none
};

}  // namespace veldra

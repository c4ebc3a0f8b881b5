#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstring>

#include "platform/paths.h"
#include "platform/process.h"
#include "platform/sound.h"

extern char** environ;

namespace veldra {

namespace {

constexpr std::array<const char*, 3> kPlayers = {"pw-play", "paplay", "aplay"};

/// The program NAME in one of the folders of PATH; "" when there is none.
std::string FindProgram(const std::string& name) {
  const std::string folders = EnvironmentVariable("PATH").value_or("");
  for (size_t start = 0; start <= folders.size();) {
    const size_t end = std::min(folders.find(':', start), folders.size());
    const std::string path = JoinPath(folders.substr(start, end - start), name);
    if (end > start && IsFile(path) && access(path.c_str(), X_OK) == 0) return path;
    start = end + 1;
  }
  return {};
}

std::string FindPlayer() {
  for (const char* name : kPlayers) {
    std::string path = FindProgram(name);
    if (!path.empty()) return path;
  }
  return {};
}

}  // namespace

std::string CSoundPlayer::WhyNot() {
  return FindPlayer().empty() ? "None of the programs pw-play, paplay and aplay is installed." : "";
}

bool CSoundPlayer::Play(const std::string& path, SError* error) {
  Stop();
  std::string player = FindPlayer();
  // A name that begins with "-" would be an option.
  std::string file = AbsolutePath(path);
  char* const arguments[] = {player.data(), file.data(), nullptr};
  pid_t process = 0;
  const int failure =
      player.empty() ? ENOENT : posix_spawn(&process, player.c_str(), nullptr, nullptr, arguments, environ);
  if (failure == 0) {
    process_ = process;
    return true;
  }
  if (error != nullptr) error->what = player.empty() ? WhyNot() : player + ": " + std::strerror(failure);
  return false;
}

void CSoundPlayer::Stop() {
  if (process_ == 0) return;
  const auto process = static_cast<pid_t>(process_);
  // Not waited for before, so the number is still this program's, whether it has ended or not.
  kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
  process_ = 0;
}

}  // namespace veldra

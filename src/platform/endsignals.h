#pragma once

#include <cstdint>
#include <optional>

namespace veldra {

/// From here on the signals by which a system asks a program to quit (SIGTERM, SIGHUP, SIGINT) do not end it but make
/// the descriptor that is returned readable. The next of them ends it as usual. Nothing where there are no such
/// signals.
std::optional<intptr_t> WatchEndSignals();

}  // namespace veldra

#pragma once

#include <cstdint>
#include <optional>

namespace veldra {

/// From here on a signal by which a system, a terminal or a user ends a program (SIGINT, SIGTERM, SIGHUP and their
/// kin; a console that closes) takes the program's temporary files away first. The exit status stays that of the
/// signal, and who has the program ignore one gets that. A file that grows beyond the user's limit makes the write
/// fail and does not end the program.
void TidyOnEndSignals();

/// TidyOnEndSignals, but the first such signal, ignored before or not, does not end the program: it makes the
/// descriptor that is returned readable. Nothing where there are no such signals.
std::optional<intptr_t> WatchEndSignals();

/// For the end of a program that watches: if it ends because of such a signal, its exit status says so, as that of any
/// program does. Returns when there was none.
void EndByReportedSignal();

}  // namespace veldra

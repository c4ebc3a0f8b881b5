#pragma once

#include <functional>
#include <string_view>

#include "platform/text.h"

namespace veldra {

using TraceSink = std::function<void(std::string_view text)>;

/// Writes a diagnostic line, printf-style; TEXT carries its own line end. Never shown to the user.
VELDRA_PRINTF(1, 2) void Trace(const char* format, ...);

/// Where traces go. An empty sink restores the default: the debugger output on Windows; elsewhere standard error when
/// the environment variable VELDRA_TRACE is set, else nowhere. Returns the earlier sink.
TraceSink SetTraceSink(TraceSink sink);

}  // namespace veldra

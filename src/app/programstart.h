#pragma once

#include <string>

#include "platform/programcall.h"

namespace veldra {

/// Starts CALL, which runs on by itself, in FOLDER ("": where this program is). "" or why that could not be.
std::string StartProgram(const SProgramCall& call, const std::string& folder = "");

}  // namespace veldra

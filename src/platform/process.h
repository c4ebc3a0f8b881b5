#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veldra {

/// The program's arguments in UTF-8, its own name left out. (Windows hands main() another encoding.)
std::vector<std::string> CommandLineArguments(int argc, char** argv);

std::optional<std::string> EnvironmentVariable(const std::string& name);

/// Somebody can look at what goes to standard error while it is written.
bool IsStandardErrorTerminal();

/// The process ends when it has computed for SECONDS; where the system cannot see to that, nothing happens.
void LimitProcessTime(int seconds);

/// Makes standard output take bytes as they are (Windows would turn "\n" into two).
void SetBinaryStandardOutput();

}  // namespace veldra

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace veldra {

inline constexpr const char* kNotEnoughMemoryText = "Veldra - Error: not enough memory\n";

/// One run of the command line: ARGUMENTS in UTF-8 without the program's own name, results to OUT, everything that is
/// said to the user to ERR. Returns the exit status: 0 done, 1 failed or cancelled, 2 wrong usage.
int RunCli(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace veldra

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/commandrow.h"

namespace veldra {

/// What a command line asks for.
struct SParsedLine {
  const SCommandRow* command = nullptr;  ///< to be run; null when there is nothing to do
  int status = kDone;                    ///< the exit status when COMMAND is null
};

/// Understands ARGUMENTS (UTF-8, without the program's name) as PROGRAM's row says and hands the values to the rows'
/// targets. The options of PROGRAM may stand before the command or behind it, where the command has none of the same
/// name. Help and version go to OUT, what is wrong to ERR.
SParsedLine ParseCommandLine(const SCommandRow& program, const char* version, const std::vector<std::string>& arguments,
                             std::ostream& out, std::ostream& err);

}  // namespace veldra

#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace veldra {

/// A program and what it is given, as one starts it without a shell.
struct SProgramCall {
  std::string program;
  std::vector<std::string> arguments;
};

/// What a text between braces in a command stands for: {"{game}", "/games/mtm2"}.
using Filling = std::pair<std::string, std::string>;

/// TEXT is a program and its arguments with blanks between them, and quotes round what has blanks in it; the path of a
/// program alone needs none. It is taken apart before FILLINGS are put in, so what they bring stays in one piece.
/// Nothing when TEXT is empty.
std::optional<SProgramCall> ReadProgramCall(const std::string& text, std::span<const Filling> fillings);

}  // namespace veldra

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/text.h"

/// Commands and their options as rows. The parser and its help are made from these alone.
namespace veldra {

class CSession;

enum EExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Takes a value as it was typed, for a flag "". Returns "", or what is wrong with it ("is not an integer").
using TakeValue = std::function<std::string(const std::string& text)>;

struct SOptionRow {
  std::string name;                     ///< "MODEL" for an argument, "--face" for an option
  std::string form;                     ///< what the value looks like, "N"; "" for a flag
  std::string help;                     ///< one line
  TakeValue take;                       ///< called for each value, in the order in which they were typed
  bool required = false;                ///< must be there
  bool repeated = false;                ///< may be there more than once
  bool is_output = false;               ///< names what is written; refused when it is ""
  bool is_text = false;                 ///< of an output: "-" is standard output, else no name at all
  std::vector<std::string> words = {};  ///< the only values that there are, in any letter case; empty for free ones
  std::string group = "Options";        ///< heading of an option in the help

  bool IsArgument() const { return !name.starts_with('-'); }
  bool IsFlag() const { return form.empty(); }
};

struct SCommandRow {
  std::string name;
  std::string help;
  std::vector<SOptionRow> options = {};
  std::function<int(CSession&)> run = {};   ///< returns the exit status; keeps alive what the options fill
  std::function<std::string()> check = {};  ///< what is wrong with the options together; "" for nothing
  std::vector<SCommandRow> commands = {};   ///< those of a group, which does nothing itself
};

// Rows by kind. What is typed goes to TARGET, which outlives the row.

SOptionRow Argument(std::string name, std::string help, std::string& target);                ///< required
SOptionRow Arguments(std::string name, std::string help, std::vector<std::string>& target);  ///< any number
SOptionRow Output(std::string name, std::string help, std::string& target);  ///< argument of what is written; required
/// The same for a text, which can go to standard output.
SOptionRow TextOutput(std::string name, std::string help, std::string& target);
SOptionRow Flag(std::string name, std::string help, bool& target);
SOptionRow Option(std::string name, std::string form, std::string help, TakeValue take);
SOptionRow Option(std::string name, std::string form, std::string help, std::string& target);

SOptionRow Required(SOptionRow row, bool required = true);
SOptionRow InGroup(std::string group, SOptionRow row);

/// Stores what PARSE makes of a text; FAULT is what is wrong where that is nothing.
template <typename Target, typename Parse>
TakeValue Parsed(Target& target, Parse parse, std::string fault) {
  return [&target, parse, fault](const std::string& text) {
    const auto value = parse(text);
    if (!value) return fault;
    target = *value;
    return std::string();
  };
}

/// A word and what it means.
template <typename Value>
using Words = std::vector<std::pair<std::string, Value>>;

/// An option that has only a few values.
template <typename Target, typename Value>
SOptionRow Choice(std::string name, const Words<Value>& words, std::string help, Target& target) {
  SOptionRow row = Option(std::move(name), "", std::move(help), TakeValue());
  for (const auto& [word, value] : words) {
    row.words.push_back(word);
    row.form += (row.form.empty() ? "" : "|") + word;
  }
  const auto find = [words](const std::string& text) -> std::optional<Value> {
    for (const auto& [word, value] : words)
      if (EqualNoCase(text, word)) return value;
    return std::nullopt;
  };
  row.take = Parsed(target, find, "is none of " + row.form);
  return row;
}

}  // namespace veldra

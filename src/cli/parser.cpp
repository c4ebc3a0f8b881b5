#include "cli/parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <map>
#include <ostream>
#include <sstream>

#include "cli/session.h"
#include "cli/suggest.h"
#include "platform/questions.h"
#include "platform/text.h"

// The only file that knows the parser's library, which takes long to compile.
namespace veldra {

namespace {

class CParser {
 public:
  CParser(const SCommandRow& program, const char* version);

  /// Throws what is wrong, and also help and version, as CLI::Error.
  const SCommandRow* Parse(const std::vector<std::string>& arguments);
  /// Name of an output that is named ""; null when there is none.
  const char* UnnamedOutput() const { return unnamed_output_; }
  int Exit(const CLI::Error& error, std::ostream& out, std::ostream& err) {
    std::ostringstream said;
    const int status = app_.exit(error, out, said);
    // It repeats what it was given.
    err << DisplayText(said.str());
    return status;
  }

 private:
  void AddOption(CLI::App& app, const SOptionRow& row, const std::string& group);
  void AddCommand(CLI::App& parent, const SCommandRow& row);
  void Fill(CLI::App& app, const SCommandRow& row);
  std::vector<const CLI::App*> ChosenLevels() const;
  std::string UnknownWords() const;
  void TakeValues(const CLI::App& app);
  void Take(const SOptionRow& row, const std::string& text);

  const SCommandRow& program_;
  CLI::App app_;
  std::map<const CLI::App*, const SCommandRow*> commands_;
  std::map<const CLI::Option*, const SOptionRow*> options_;
  const char* unnamed_output_ = nullptr;
};

CParser::CParser(const SCommandRow& program, const char* version)
    : program_(program), app_(program.help, program.name) {
  // A path that begins with "/" is a path on every system.
  app_.allow_windows_style_options(false);
  app_.get_formatter()->label("SUBCOMMAND", "COMMAND ...");
  app_.footer("The options of veldra-cli itself may stand before the command or behind it.");
  app_.set_version_flag("--version", version, "Print the version and exit");
  Fill(app_, program);
}

void CParser::AddOption(CLI::App& app, const SOptionRow& row, const std::string& group) {
  CLI::Option* const option = row.IsFlag() ? app.add_flag(row.name, row.help)->disable_flag_override()->take_all()
                                           : app.add_option(row.name, CLI::callback_t(), row.help)->type_name(row.form);
  option->required(row.required)->group(group);
  if (row.repeated && row.IsArgument()) option->expected(CLI::detail::expected_max_vector_size);
  if (row.repeated && !row.IsArgument()) option->take_all();
  options_[option] = &row;
}

void CParser::AddCommand(CLI::App& parent, const SCommandRow& row) {
  CLI::App& app = *parent.add_subcommand(row.name, row.help)->group("Commands");
  Fill(app, row);
  for (const SOptionRow& option : program_.options) {
    const bool has_own = std::ranges::find(row.options, option.name, &SOptionRow::name) != row.options.end();
    if (!has_own) AddOption(app, option, "");  // understood here too; the help of the program lists it
  }
}

void CParser::Fill(CLI::App& app, const SCommandRow& row) {
  commands_[&app] = &row;
  for (const SOptionRow& option : row.options)
    AddOption(app, option, option.group);
  for (const SCommandRow& command : row.commands)
    AddCommand(app, command);
  if (!row.commands.empty()) app.require_subcommand(0, 1);
}

/// The program, the group if there is one, and the command that were named.
std::vector<const CLI::App*> CParser::ChosenLevels() const {
  std::vector<const CLI::App*> levels = {&app_};
  while (!levels.back()->get_subcommands().empty())
    levels.push_back(levels.back()->get_subcommands().front());
  return levels;
}

std::string CParser::UnknownWords() const {
  std::string text;
  for (const CLI::App* app : ChosenLevels()) {
    const SCommandRow& row = *commands_.at(app);
    std::vector<std::string> known_options = {"--help"};
    for (const auto* options : {&row.options, &program_.options})
      std::ranges::transform(*options, std::back_inserter(known_options), &SOptionRow::name);
    std::vector<std::string> known_commands;
    std::ranges::transform(row.commands, std::back_inserter(known_commands), &SCommandRow::name);
    for (const std::string& word : app->remaining(false)) {
      if (word == "--") continue;
      const std::string name = word.substr(0, word.find('='));
      text += (text.empty() ? "\"" : "\n\"") + word + "\" was not expected" +
              DidYouMean(name, word.starts_with('-') ? known_options : known_commands);
      // What stands behind an unknown command belongs to it.
      if (!known_commands.empty() && !word.starts_with('-')) return text;
    }
  }
  return text;
}

void CParser::Take(const SOptionRow& row, const std::string& text) {
  if (row.is_output && text.empty()) unnamed_output_ = row.name.c_str();
  if (row.is_output && !row.is_text && text == kStandardStream)
    throw CLI::ValidationError(row.name, "standard output takes texts only, and this is none");
  const std::string fault = row.take(row.IsFlag() ? "" : text);
  if (fault.empty()) return;
  const std::string value = row.IsFlag() ? "" : "\"" + text + "\" ";
  throw CLI::ValidationError(row.name, value + fault + DidYouMean(text, row.words));
}

void CParser::TakeValues(const CLI::App& app) {
  std::map<const CLI::Option*, size_t> taken;
  for (const CLI::Option* option : app.parse_order()) {
    const auto row = options_.find(option);
    if (row != options_.end()) Take(*row->second, option->results().at(taken[option]++));
  }
}

const SCommandRow* CParser::Parse(const std::vector<std::string>& arguments) {
  try {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    app_.parse(reversed);
  } catch (const CLI::ExtrasError&) {
    throw CLI::ValidationError(UnknownWords());
  } catch (const CLI::RequiredError& error) {
    // A misspelt option may be the one that is missing.
    const std::string unknown = UnknownWords();
    if (unknown.empty()) throw;
    throw CLI::ValidationError(unknown + "\n" + error.what());
  }
  const std::vector<const CLI::App*> levels = ChosenLevels();
  for (const CLI::App* app : levels)
    TakeValues(*app);
  const SCommandRow* const command = commands_.at(levels.back());
  // Not left to the library, which would say this of an unknown command too.
  if (!command->run) throw CLI::RequiredError("A command");
  const std::string fault = command->check ? command->check() : "";
  if (!fault.empty()) throw CLI::ValidationError(fault);
  return command;
}

}  // namespace

SParsedLine ParseCommandLine(const SCommandRow& program, const char* version, const std::vector<std::string>& arguments,
                             std::ostream& out, std::ostream& err) {
  CParser parser(program, version);
  try {
    const SCommandRow* const command = parser.Parse(arguments);
    if (parser.UnnamedOutput() == nullptr) return {.command = command};
    err << kErrorCaption << ": " << parser.UnnamedOutput() << " is empty. What is written needs a name.\n";
    return {.status = kFailed};
  } catch (const CLI::Error& error) {
    // Help and version come this way too, and go to standard output.
    return {.status = parser.Exit(error, out, err) == 0 ? kDone : kWrongUsage};
  }
}

}  // namespace veldra

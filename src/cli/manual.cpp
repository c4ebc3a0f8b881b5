#include "cli/manual.h"

#include "platform/text.h"

namespace veldra {

namespace {

/// TEXT as it stands in a line of a manual page.
std::string Roff(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
  }
  return escaped.starts_with('.') || escaped.starts_with('\'') ? "\\&" + escaped : escaped;
}

std::string Bold(std::string_view text) {
  return "\\fB" + Roff(text) + "\\fR";
}

std::string ArgumentText(const SOptionRow& row) {
  const std::string name = "\\fI" + Roff(row.name) + "\\fR" + (row.repeated ? "..." : "");
  return row.required ? name : "[" + name + "]";
}

void AddOption(const SOptionRow& row, std::string& page) {
  page += ".TP\n" + (row.IsArgument() ? "\\fI" + Roff(row.name) + "\\fR" : Bold(row.name));
  if (!row.form.empty() && !row.IsArgument()) page += " \\fI" + Roff(row.form) + "\\fR";
  page += "\n" + Roff(row.help) + ".\n";
}

void AddCommands(const SCommandRow& group, const std::string& prefix, std::string& page) {
  for (const SCommandRow& command : group.commands) {
    const std::string name = prefix + command.name;
    if (!command.commands.empty()) {
      AddCommands(command, name + " ", page);
      continue;
    }
    page += ".SS \"" + Roff(name);
    for (const SOptionRow& row : command.options)
      if (row.IsArgument())
        page += " " + (row.required ? row.name : "[" + row.name + "]") + (row.repeated ? "..." : "");
    page += "\"\n" + Roff(command.help) + ".\n";
    for (const SOptionRow& row : command.options)
      AddOption(row, page);
  }
}

/// A word between single quotes, for bash and zsh.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text)
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

/// For fish, where a backslash takes a quote's meaning away.
std::string FishQuoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

/// A command with the names that lead to it: "" for the program, "pod extract".
struct SPlace {
  std::string path;
  const SCommandRow* row;
};

void AddPlaces(const SCommandRow& row, const std::string& path, std::vector<SPlace>& places) {
  places.push_back({path, &row});
  for (const SCommandRow& command : row.commands)
    AddPlaces(command, path.empty() ? command.name : path + " " + command.name, places);
}

std::vector<SPlace> Places(const SCommandRow& program) {
  std::vector<SPlace> places;
  AddPlaces(program, "", places);
  return places;
}

std::string FunctionName(const SCommandRow& program) {
  std::string name = "_" + program.name;
  for (char& c : name)
    if (c == '-') c = '_';
  return name;
}

/// The lines of a "case" that tell which command the words so far name.
std::string PlaceCases(const std::vector<SPlace>& places, const char* indent) {
  std::string lines;
  for (const SPlace& place : places) {
    for (const SCommandRow& command : place.row->commands) {
      const std::string path = place.path.empty() ? command.name : place.path + " " + command.name;
      lines += Format("%s%s) command=%s ;;\n", indent, Quoted(place.path + ":" + command.name).c_str(),
                      Quoted(path).c_str());
    }
  }
  return lines;
}

/// Calls ACTION(place, option) for each option that has one of a few words.
template <typename Action>
void ForEachChoice(const std::vector<SPlace>& places, const Action& action) {
  for (const SPlace& place : places)
    for (const SOptionRow& row : place.row->options)
      if (!row.IsArgument() && !row.words.empty()) action(place, row);
}

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words)
    joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

std::string OptionNames(const SCommandRow& command) {
  std::string names = "--help";
  for (const SOptionRow& row : command.options)
    if (!row.IsArgument()) names += " " + row.name;
  return names;
}

std::string CommandNames(const SCommandRow& group) {
  std::string names;
  for (const SCommandRow& command : group.commands)
    names += (names.empty() ? "" : " ") + command.name;
  return names;
}

/// When fish is at PLACE or behind it.
std::string FishCondition(const std::string& path) {
  std::string condition;
  for (size_t at = 0; at < path.size();) {
    const size_t end = std::min(path.find(' ', at), path.size());
    condition += (condition.empty() ? "" : "; and ") + ("__fish_seen_subcommand_from " + path.substr(at, end - at));
    at = end + 1;
  }
  return condition;
}

std::string FishOption(const std::string& start, const SOptionRow& row) {
  std::string line = start + " -l " + row.name.substr(2) + " -d " + FishQuoted(row.help);
  if (!row.words.empty()) return line + " -x -a " + FishQuoted(Joined(row.words)) + "\n";
  return line + (row.IsFlag() ? "\n" : " -r\n");
}

}  // namespace

std::string ManualPage(const SCommandRow& program, const std::string& version, const SManualTexts& texts) {
  std::string page = ".TH " + Roff(UpperCase(program.name)) + " 1 \"\" \"Veldra " + version + "\" \"User Commands\"\n";
  page += ".SH NAME\n" + Roff(program.name) + " \\- " + Roff(texts.summary) + "\n";
  page += ".SH SYNOPSIS\n.B " + Roff(program.name) + "\n[\\fIOPTION\\fR...]";
  for (const SOptionRow& row : program.options)
    if (row.IsArgument()) page += " " + ArgumentText(row);
  page += program.commands.empty() ? "\n" : " \\fICOMMAND\\fR [\\fIARGUMENT\\fR...]\n";
  page += ".SH DESCRIPTION\n" + Roff(texts.description) + "\n.SH OPTIONS\n";
  for (const SOptionRow& row : program.options)
    AddOption(row, page);
  AddOption({.name = "--help", .form = "", .help = "What there is, on every level", .take = {}}, page);
  AddOption({.name = "--version", .form = "", .help = "The version", .take = {}}, page);
  if (!program.commands.empty()) {
    page += ".SH COMMANDS\n";
    AddCommands(program, "", page);
    page += ".SH EXIT STATUS\n0: done. 1: the operation failed or was cancelled. 2: wrong usage.\n";
  }
  if (!texts.files.empty()) page += ".SH FILES\n" + Roff(texts.files) + "\n";
  return page + ".SH SEE ALSO\n" + Bold(texts.see_also) + "\n";
}

std::string BashCompletion(const SCommandRow& program) {
  const std::vector<SPlace> places = Places(program);
  const std::string function = FunctionName(program);
  std::string script = function + "() {\n  local cur=${COMP_WORDS[COMP_CWORD]} command='' words='' i\n";
  script += "  for ((i = 1; i < COMP_CWORD; i++)); do\n    case \"$command:${COMP_WORDS[i]}\" in\n";
  script += PlaceCases(places, "      ") + "    esac\n  done\n  case \"$command:${COMP_WORDS[COMP_CWORD - 1]}\" in\n";
  ForEachChoice(places, [&](const SPlace& place, const SOptionRow& row) {
    script += Format("    %s) words=%s ;;\n",
                     place.path.empty() ? ("*:" + row.name).c_str() : Quoted(place.path + ":" + row.name).c_str(),
                     Quoted(Joined(row.words)).c_str());
  });
  script += "  esac\n  if [[ -z $words ]]; then\n    case \"$command:$cur\" in\n";
  for (const SPlace& place : places) {
    script += Format("      %s:-*) words=%s ;;\n", Quoted(place.path).c_str(), Quoted(OptionNames(*place.row)).c_str());
    if (!place.row->commands.empty())
      script +=
          Format("      %s:*) words=%s ;;\n", Quoted(place.path).c_str(), Quoted(CommandNames(*place.row)).c_str());
  }
  script += "    esac\n  fi\n  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$cur\")\n}\n";
  return script + "complete -o default -F " + function + " " + program.name + "\n";
}

std::string ZshCompletion(const SCommandRow& program) {
  const std::vector<SPlace> places = Places(program);
  std::string script = "#compdef " + program.name + "\nlocal command='' i\nlocal -a names\n";
  script += "for ((i = 2; i < CURRENT; i++)); do\n  case \"$command:${words[i]}\" in\n";
  script += PlaceCases(places, "    ") + "  esac\ndone\ncase \"$command:${words[CURRENT - 1]}\" in\n";
  ForEachChoice(places, [&](const SPlace& place, const SOptionRow& row) {
    script += Format("  %s) compadd -- %s; return ;;\n",
                     place.path.empty() ? ("*:" + row.name).c_str() : Quoted(place.path + ":" + row.name).c_str(),
                     Joined(row.words).c_str());
  });
  const auto described = [](const std::string& name, const std::string& help) {
    return " " + Quoted(name + ":" + help);
  };
  script += "esac\ncase \"$command:${words[CURRENT]}\" in\n";
  for (const SPlace& place : places) {
    script += "  " + Quoted(place.path) + ":-*) names=(--help";
    for (const SOptionRow& row : place.row->options)
      if (!row.IsArgument()) script += described(row.name, row.help);
    script += ") ;;\n";
    if (place.row->commands.empty()) continue;
    script += "  " + Quoted(place.path) + ":*) names=(";
    for (const SCommandRow& command : place.row->commands)
      script += described(command.name, command.help);
    script += ") ;;\n";
  }
  return script + "esac\nif ((${#names})); then _describe '" + program.name + "' names; else _files; fi\n";
}

std::string FishCompletion(const SCommandRow& program) {
  std::string script;
  for (const SPlace& place : Places(program)) {
    const std::string condition = FishCondition(place.path);
    const std::string start = "complete -c " + program.name + (condition.empty() ? "" : " -n " + FishQuoted(condition));
    for (const SOptionRow& row : place.row->options)
      if (!row.IsArgument()) script += FishOption(start, row);
    if (place.row->commands.empty()) continue;
    std::string not_yet = condition.empty() ? "" : condition + "; and ";
    not_yet += "not __fish_seen_subcommand_from " + CommandNames(*place.row);
    for (const SCommandRow& command : place.row->commands)
      script += Format("complete -c %s -f -n %s -a %s -d %s\n", program.name.c_str(), FishQuoted(not_yet).c_str(),
                       command.name.c_str(), FishQuoted(command.help).c_str());
  }
  return script;
}

}  // namespace veldra

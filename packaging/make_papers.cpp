#include <cstdio>

#include "app/optionrows.h"
#include "cli/command.h"
#include "cli/globaloptions.h"
#include "cli/manual.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/process.h"

using namespace veldra;

namespace {

constexpr const char* kSettingsText =
    "Veldra.cfg in the current directory, else in $XDG_CONFIG_HOME/veldra (~/.config/veldra): the settings. "
    "$XDG_DATA_HOME/veldra (~/.local/share/veldra): copies of unsaved work, earlier states of documents, reports of "
    "crashes. The environment variable VELDRA_DATA names one folder for all of them.";
constexpr const char* kCliSettingsText =
    "Veldra.cfg in the current directory: the settings, which are read and never written. Without it all have their "
    "defaults.";

SCommandRow Editor() {
  SCommandRow editor = {.name = "veldra", .help = ""};
  for (const SProgramOptionRow& row : kProgramOptions)
    if (!row.is_hidden)
      editor.options.push_back({.name = std::string("--") + row.name, .form = row.value, .help = row.help, .take = {}});
  editor.options.push_back({.name = "FILE", .form = "", .help = "Files to open", .take = {}, .repeated = true});
  return editor;
}

bool Write(const std::string& folder, const std::string& name, const std::string& text) {
  SError error;
  if (ReplaceFile(JoinPath(folder, name), text, &error)) return true;
  std::fprintf(stderr, "make_papers: %s: %s\n", name.c_str(), error.what.c_str());
  return false;
}

bool WritePapers(const std::string& folder) {
  SGlobalOptions options;
  const SCommandRow cli = Program(options);
  const SCommandRow editor = Editor();
  const std::string pages[] = {
      ManualPage(editor, VELDRA_VERSION,
                 {.summary = "editor for the 3D models of Monster Truck Madness 2",
                  .description = "Opens models (.BIN), trucks (.TRK) and archives (.POD), and imports meshes (.obj, "
                                 ".3ds, .gltf, .glb, .ply, .stl). "
                                 "Help > Guide in the program leads through it.",
                  .files = kSettingsText,
                  .see_also = "veldra-cli(1)"}),
      ManualPage(
          cli, VELDRA_VERSION,
          {.summary = "reads, changes, converts and draws models of Monster Truck Madness 2",
           .description = "The editor's engine without its windows. What the editor would show in a box is printed "
                          "to standard error. - as a file to read is standard input, as a text to write standard "
                          "output.",
           .files = kCliSettingsText,
           .see_also = "veldra(1)"})};
  return Write(folder, "veldra.1", pages[0]) && Write(folder, "veldra-cli.1", pages[1]) &&
         Write(folder, "veldra-cli.bash", BashCompletion(cli)) && Write(folder, "_veldra-cli", ZshCompletion(cli)) &&
         Write(folder, "veldra-cli.fish", FishCompletion(cli)) &&
         Write(folder, "veldra.bash", BashCompletion(editor)) && Write(folder, "_veldra", ZshCompletion(editor)) &&
         Write(folder, "veldra.fish", FishCompletion(editor));
}

}  // namespace

/// Writes what the package has besides the programs and is made from their tables.
int main(int argc, char** argv) {
  const auto arguments = CommandLineArguments(argc, argv);
  if (arguments.size() == 1 && MakeDirectories(arguments[0])) return WritePapers(arguments[0]) ? 0 : 1;
  std::fprintf(stderr, "usage: make_papers DIR\n");
  return 2;
}

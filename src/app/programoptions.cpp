#include "app/programoptions.h"

#include <QCommandLineParser>
#include <algorithm>
#include <string_view>

namespace veldra {

bool AsksForTextOnly(int argc, char** argv) {
  constexpr std::string_view kTextOptions[] = {"-h", "--help", "--help-all", "-v", "--version"};
  return std::any_of(argv + 1, argv + argc, [&](const char* argument) {
    return std::find(std::begin(kTextOptions), std::end(kTextOptions), argument) != std::end(kTextOptions);
  });
}

SProgramOptions ParseProgramOptions(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Editor for the 3D models of Monster Truck Madness 2.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption picture(
      "save-picture",
      "Open the files, save a picture of the window as <PNG> and exit. Nothing is asked meanwhile: what would be a "
      "question goes to standard error.",
      "PNG");
  parser.addOption(picture);
  const QCommandLineOption command("command", "Before the picture, carry out a command of the menus (may be repeated).",
                                   "NAME");
  parser.addOption(command);
  const QCommandLineOption read_only("read-only", "Open the files as read-only.");
  parser.addOption(read_only);
  QCommandLineOption quit_when_drawn("quit-when-drawn", "Exit as soon as the model is drawn: for measuring.");
  quit_when_drawn.setFlags(QCommandLineOption::HiddenFromHelp);
  parser.addOption(quit_when_drawn);
  parser.addPositionalArgument("FILE", "Files to open.", "[FILE...]");
  parser.process(application);
  return {.files = parser.positionalArguments(),
          .picture = parser.value(picture),
          .commands = parser.values(command),
          .read_only = parser.isSet(read_only),
          .quit_when_drawn = parser.isSet(quit_when_drawn)};
}

}  // namespace veldra

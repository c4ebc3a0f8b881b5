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
  parser.addPositionalArgument("FILE", "Model files to open.", "[FILE...]");
  parser.process(application);
  return {.files = parser.positionalArguments(), .picture = parser.value(picture)};
}

}  // namespace veldra

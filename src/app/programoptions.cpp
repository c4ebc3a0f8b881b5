#include "app/programoptions.h"

#include <QCommandLineParser>
#include <algorithm>
#include <string_view>

#include "app/optionrows.h"

namespace veldra {

namespace {

QCommandLineOption Option(const SProgramOptionRow& row) {
  QCommandLineOption option(row.name, QStringLiteral("%1.").arg(row.help), row.value);
  if (row.is_hidden) option.setFlags(QCommandLineOption::HiddenFromHelp);
  return option;
}

}  // namespace

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
  for (const SProgramOptionRow& row : kProgramOptions)
    parser.addOption(Option(row));
  parser.addPositionalArgument("FILE", "Files to open.", "[FILE...]");
  parser.process(application);
  return {.files = parser.positionalArguments(),
          .picture = parser.value(kPictureOption.name),
          .commands = parser.values(kCommandOption.name),
          .settings_file = parser.value(kSettingsOption.name),
          .read_only = parser.isSet(kReadOnlyOption.name),
          .draw_in_memory = parser.isSet(kMemoryOption.name),
          .quit_when_drawn = parser.isSet(kQuitOption.name)};
}

}  // namespace veldra

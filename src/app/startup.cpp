#include "app/startup.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "settings/coptools.h"

namespace veldra {

namespace {

void SayNotFound(const std::string& path, CQuestions& questions) {
  questions.Message(
      {.text = "Default Palette not found!\nPlease locate ART\\" + FileNamePart(path) + " in the MTM2 directory.\n",
       .caption = kErrorCaption,
       .icon = EIcon::kWarning,
       .details = path});
}

std::optional<std::string> AskForAnother(const std::string& path, const std::string& directory, CQuestions& questions) {
  questions.Message({.text = "Error loading default palette.\nPlease select another.",
                     .caption = kErrorCaption,
                     .icon = EIcon::kError,
                     .details = path});
  return questions.AskOpenFile({.title = "Select Default Palette",
                                .filters = {{.label = "Adobe Color Table *.act", .pattern = "*.act"}},
                                .directory = directory,
                                .name = {},
                                .default_extension = "act"});
}

/// Where the game keeps its colour tables, as far as this machine tells.
std::string PaletteDirectory(const SStartup& startup) {
  const std::string art = JoinPath(startup.installation_directory, "ART");
  for (const std::string& candidate : {FindAnyCase(startup.settings.art_dir), FindAnyCase(art)})
    if (IsDirectory(candidate)) return candidate;
  return CurrentDirectory();
}

}  // namespace

std::optional<ColorTable> InsistOnPalette(CSettings& settings, const std::string& directory, CQuestions& questions) {
  while (!settings.defpal.empty()) {
    if (FindAnyCase(settings.defpal).empty()) SayNotFound(settings.defpal, questions);
    if (const auto colors = ReadColorTable(settings.defpal)) return colors;
    const auto chosen = AskForAnother(settings.defpal, directory, questions);
    if (!chosen) return std::nullopt;
    settings.defpal = *chosen;
  }
  return GreyRamp();
}

std::optional<SStartup> StartUp(const std::string& settings_path, CQuestions& questions,
                                const FirstStart& first_start) {
  SStartup startup;
  startup.settings_path = settings_path;
  SettingsMap map;
  CopTools::ReadCfgFile(startup.settings_path, map);
  startup.settings.Take(map);
  startup.settings_as_read = startup.settings;
  startup.installation_directory = CopTools::InstallationDirectory();
  if (first_start && !FileExists(settings_path)) first_start(startup);
  const auto colors = InsistOnPalette(startup.settings, PaletteDirectory(startup), questions);
  if (!colors) return std::nullopt;
  startup.default_colors = *colors;
  return startup;
}

}  // namespace veldra

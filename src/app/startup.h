#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/questions.h"
#include "settings/settings.h"
#include "textures/texturestore.h"

namespace veldra {

/// The program's exit code when the user gives up on the default colour table.
inline constexpr int kExitWithoutPalette = -1;

/// What is settled before the first window opens.
struct SStartup {
  std::string settings_path;
  CSettings settings;
  CSettings settings_as_read;  ///< to tell later which ones this program changed
  ColorTable default_colors = {};
  std::string installation_directory;  ///< the game's folder, "." when it is not installed
  bool keeps_settings = true;          ///< they are written back at the end
  std::string first_file;              ///< to open when the user names none; "" for none
};

/// Fills the settings of a program that has none yet.
using FirstStart = std::function<void(SStartup& startup)>;

/// Reads the settings file and insists on a default colour table that can be loaded: while there is none, another file
/// is asked for, which becomes the setting DEFPAL. Nothing when the user cancels. Where there is no settings file,
/// FIRST_START, which may be empty, is called before that.
std::optional<SStartup> StartUp(const std::string& settings_path, CQuestions& questions,
                                const FirstStart& first_start = {});

/// The colour table that SETTINGS.defpal names, after questions where it cannot be read. An empty setting gives a grey
/// ramp. DIRECTORY is where the file dialog opens.
std::optional<ColorTable> InsistOnPalette(CSettings& settings, const std::string& directory, CQuestions& questions);

}  // namespace veldra

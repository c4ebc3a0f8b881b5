#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "archive/poddocument.h"
#include "archive/stockfiles.h"
#include "platform/questions.h"
#include "settings/settings.h"
#include "textures/texturestore.h"

namespace veldra {

/// What the windows on archives and trucks need from the application. All of it outlives them.
struct SToolServices {
  CQuestions& questions;
  CSettings& settings;
  const CStockFiles& stock;
  const ColorTable& default_colors;  ///< for textures without a colour table of their own
  std::string game_folder;           ///< where the game is installed; "" for nowhere
  /// Opens an archive that was just written in the extractor. May be empty.
  std::function<void(const std::string& path)> show_archive = {};
  /// Opens the model or the truck ENTRY of ARCHIVE, which is as it is on the disk, in a window of its kind. May be
  /// empty.
  std::function<void(const CPodDocument& archive, size_t entry)> open_entry = {};
  /// Gives the entry NAME of the archive at PATH these bytes, on the disk and in the window that shows it. False when
  /// the user has been told why not, or does not want it. May be empty.
  std::function<bool(const std::string& path, const std::string& name, std::span<const uint8_t> bytes)>
      save_into_archive = {};
  /// Runs the command of the settings that starts the game, with ARCHIVE and the truck file TRUCK ("" for none). False
  /// when the user has been told why not. May be empty.
  std::function<bool(const std::string& archive, const std::string& truck)> start_game = {};
  /// There is such a command.
  bool CanStartGame() const { return start_game != nullptr && !settings.game_command.empty(); }
  /// Writes the sample project into the empty folder FOLDER. Its truck's path, or "" when the user has been told why
  /// not. May be empty.
  std::function<std::string(const std::string& folder)> write_sample = {};
};

}  // namespace veldra

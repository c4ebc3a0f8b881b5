#pragma once

#include <functional>
#include <string>

#include "archive/stockfiles.h"
#include "platform/questions.h"
#include "settings/settings.h"

namespace veldra {

/// What the windows on archives need from the application.
struct SPodServices {
  CQuestions& questions;
  CSettings& settings;
  const CStockFiles& stock;
  std::string game_folder;  ///< where the game is installed; "" for nowhere
  /// Opens an archive that was just written in the extractor. May be empty.
  std::function<void(const std::string& path)> show_archive = {};
};

/// "Pod *.pod" and all files.
SFilePrompt PodFilePrompt(const std::string& title, const CSettings& settings);

}  // namespace veldra

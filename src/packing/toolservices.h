#pragma once

#include <functional>
#include <string>

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
};

}  // namespace veldra

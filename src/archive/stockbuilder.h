#pragma once

#include <string>

#include "archive/stockfiles.h"
#include "platform/questions.h"

namespace veldra {

/// A stock-file list made from the archives of an installed game.
struct SStockList {
  StockNames names;     ///< sorted, each once
  size_t archives = 0;  ///< how many were read

  size_t Total() const;
  /// The count of each type beside the expected one, a line a type, and the total.
  std::string CountsText() const;
};

/// From all *.pod in GAME_FOLDER. False, after a message, when there is none or one cannot be read.
bool BuildStockList(CQuestions& questions, const std::string& game_folder, SStockList& list);
/// Builds the list, writes it to OUT (in the editor: Veldra.stock in the settings folder, after which a new CStockFiles
/// takes it up) and returns it. False, after a message, when that fails; OUT is then as before.
bool WriteStockList(CQuestions& questions, const std::string& game_folder, const std::string& out, SStockList& list);

}  // namespace veldra

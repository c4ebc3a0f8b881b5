#pragma once

#include <QAction>
#include <QObject>
#include <map>
#include <span>
#include <vector>

#include "settings/settings.h"
#include "settings/userkeys.h"

namespace veldra {

/// The actions of a window other than the main one, whose texts and keys come from a table of its own.
class CWindowKeys : public QObject {
  Q_OBJECT

 public:
  /// COMMANDS are those of ROWS. All outlive it.
  CWindowKeys(std::span<const SWindowKey> rows, std::vector<SKeyCommand> commands, const CSettings& settings,
              QObject* window);
  /// Gives ACTION the text of the row NAME, now, and its keys, from now on.
  void Bind(QAction& action, const char* name);
  /// In all windows: the settings hold other keys.
  static void RefreshAll();

 private:
  void Refresh();

  std::span<const SWindowKey> rows_;
  const CSettings& settings_;
  CUserKeys keys_;
  std::map<size_t, QAction*> actions_;  ///< by their rows
};

}  // namespace veldra

#pragma once

#include <QKeyEvent>
#include <QWidget>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "settings/keyevents.h"
#include "settings/settings.h"
#include "settings/userkeys.h"

namespace veldra {

/// What keys do in the mapping editor, in the order of its table.
enum class EMappingKey {
  kCorners,  // as EMappingMode has these
  kFaces,
  kIslands,
  kSelectAll,
  kDeselectAll,
  kInvert,
  kTurn,
  kTurnBack,
  kFlipAcross,
  kFlipDown,
  kFit,
  kZoomIn,
  kZoomOut,
};

/// The table, and what the arrow keys are for.
std::vector<SKeyCommand> MappingKeyCommands();

/// The keys of the table as SETTINGS have them.
class CMappingKeys {
 public:
  explicit CMappingKeys(const CSettings& settings) : settings_(settings) {}
  std::optional<EMappingKey> Find(const QKeyEvent& event) const;

 private:
  const CSettings& settings_;
  // Made anew when the setting is another one than these were made from.
  mutable std::optional<std::string> taken_;
  mutable std::vector<std::pair<CKeyMatch, EMappingKey>> keys_;
};

/// TEXT as a menu's, with the keys of COMMAND behind it.
QString WithMappingKey(const QString& text, EMappingKey command, const CSettings& settings);
/// Shows them behind the tool tip of WIDGET, which has one. SETTINGS outlive it.
void ShowMappingKeyInTip(QWidget& widget, EMappingKey command, const CSettings& settings);

}  // namespace veldra

#include "mapping/mappingkeys.h"

#include <QEvent>
#include <algorithm>

#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr const char* kMappingWindow = "Mapping Editor";
constexpr SWindowKey kMappingKeyRows[] = {
    {"corners", "Corners", "1"},
    {"faces", "Faces", "2"},
    {"islands", "Islands", "3"},
    {"selectAll", "Select All", "Ctrl+A"},
    {"deselectAll", "Deselect All", "Ctrl+D"},
    {"invert", "Invert Selection", "Ctrl+I"},
    {"turn", "Rotate Clockwise", "R"},
    {"turnBack", "Rotate Counterclockwise", "Shift+R"},
    {"flipAcross", "Flip Horizontally", "H"},
    {"flipDown", "Flip Vertically", "V"},
    {"fit", "Fit", "Home"},
    {"zoomIn", "Zoom In", "+"},
    {"zoomOut", "Zoom Out", "-"},
};
constexpr const char* kArrowKeys = "Left Right Up Down Shift+Left Shift+Right Shift+Up Shift+Down";

std::string KeysText(EMappingKey command, const CSettings& settings) {
  return ShownKeys(CUserKeys(MappingKeyCommands(), settings.keys).Keys(static_cast<size_t>(command)));
}

/// Writes the keys behind WIDGET's tool tip when it is about to be seen.
class CMappingKeyTip : public QObject {
 public:
  CMappingKeyTip(QWidget& widget, EMappingKey command, const CSettings& settings)
      : QObject(&widget), text_(widget.toolTip()), command_(command), settings_(settings) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return false;
    const std::string keys = KeysText(command_, settings_);
    static_cast<QWidget*>(watched)->setToolTip(keys.empty() ? text_ : text_ + QString(" (%1)").arg(ToQString(keys)));
    return false;
  }

 private:
  QString text_;
  EMappingKey command_;
  const CSettings& settings_;
};

}  // namespace

std::vector<SKeyCommand> MappingKeyCommands() {
  std::vector<SKeyCommand> commands = KeyCommandsOf("mapping", kMappingWindow, kMappingKeyRows);
  commands.push_back({"", kMappingWindow, "", "moving by texels", ParseKeys(kArrowKeys), true});
  return commands;
}

std::optional<EMappingKey> CMappingKeys::Find(const QKeyEvent& event) const {
  if (taken_ != settings_.keys) {
    taken_ = settings_.keys;
    keys_.clear();
    const CUserKeys keys(MappingKeyCommands(), settings_.keys);
    for (size_t i = 0; i < std::size(kMappingKeyRows); ++i)
      for (const std::string& key : keys.Keys(i))
        keys_.emplace_back(CKeyMatch(key), static_cast<EMappingKey>(i));
  }
  const auto found = std::ranges::find_if(keys_, [&](const auto& pair) { return pair.first.Matches(event); });
  if (found == keys_.end()) return std::nullopt;
  return found->second;
}

QString WithMappingKey(const QString& text, EMappingKey command, const CSettings& settings) {
  const std::string keys = KeysText(command, settings);
  return keys.empty() ? text : text + '\t' + ToQString(keys);
}

void ShowMappingKeyInTip(QWidget& widget, EMappingKey command, const CSettings& settings) {
  widget.installEventFilter(new CMappingKeyTip(widget, command, settings));
}

}  // namespace veldra

#include "view/keyboardtable.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veldra {

namespace {

// Rows that stand for several keys, and what stands in them after "Shift+" and its like.
constexpr std::pair<std::string_view, std::string_view> kSeveral[] = {
    {"X", "X,Y,Z"},
    {"Y", "X,Y,Z"},
    {"Z", "X,Y,Z"},
    {"Up", "Up/Down Arrows"},
    {"Down", "Up/Down Arrows"},
    {"Left", "Left/Right Arrows"},
    {"Right", "Left/Right Arrows"},
    {"PgUp", "Page Up/Page Down"},
    {"PgDown", "Page Up/Page Down"},
};

}  // namespace

const std::array<const char*, kKeyboardRows> kKeyboardCommands = {
    "New Model",
    "Open Model",
    "Save Model",
    "Info",
    "Jump To",
    "Select",
    "Select All",
    "Deselect All",
    "Cycle",
    "Reverse Cycle",
    "Cycle Selected",
    "Reverse Cycle Selected",
    "Invert Selection",
    "Delete current",
    "Jump To -1 Face",
    "Select",
    "Select All",
    "Deselect All",
    "Cycle",
    "Reverse Cycle",
    "Cycle Selected",
    "Reverse Cycle Selected",
    "Invert Selection",
    "Move",
    "Reverse Move",
    "Move Selection",
    "Reverse Move Selection",
    "Cycle Face",
    "Reverse Cycle Face",
    "Jump To Face",
    "Reverse Jump To Face",
    "Jump To -1 Vertex",
    "Open Bin Mapper",
    "Normalize Texture",
    "Offset U Coordinate",
    "Offset V Coordinate",
    "Reverse-offset U Coordinate",
    "Reverse-offset V Coordinate",
    "Play",
    "Rotate X",
    "Rotate Y",
    "Rotate Z",
    "Restore Rotation",
    "Zoom In",
    "Zoom Out",
};

const std::array<const char*, kKeyboardRows> kKeyboardKeys = {
    "Ctrl+N",
    "Ctrl+O",
    "Ctrl+S",
    "I",
    "J",
    "F",
    "Ctrl+A",
    "Ctrl+D",
    "Space",
    "Shift+Space",
    "G",
    "Shift+G",
    "Ctrl+I",
    "Ctrl+Del",
    "Home",
    "V",
    "Alt+A",
    "Alt+D",
    "Tab",
    "Shift+Tab",
    "B",
    "Shift+B",
    "Alt+I",
    "X,Y,Z",
    "Shift+X,Y,Z",
    "Alt+X,Y,Z",
    "Alt+Shift+X,Y,Z",
    "N",
    "Shift+N",
    "Alt+N",
    "Alt+Shift+N",
    "End",
    "T",
    "Ctrl+T",
    "Ctrl+J",
    "Ctrl+K",
    "Ctrl+Shift+J",
    "Ctrl+Shift+K",
    "P",
    "Up/Down Arrows",
    "Left/Right Arrows",
    "Page Up/Page Down",
    "5 (Number Pad)",
    "+",
    "-",
};

const std::array<const char*, kKeyboardRows> kKeyboardDescriptions = {
    "Creates a new model",
    "Opens a saved model",
    "Saves the current model",
    "Displays information about current model",
    "Opens the Jump To Face/Vertex dialog",
    "Adds current face to the selection",
    "Selects all faces",
    "Deselects all faces",
    "Cycles through all faces",
    "Reverse-cycles through all faces",
    "Cycles through all selected faces",
    "Reverse-cycles through all selected faces",
    "Inverts the face selection",
    "Deletes the current face",
    "Sets the current face to -1",
    "Adds current vertex to the selection",
    "Selects all vertices",
    "Deselects all vertices",
    "Cycles through all vertices",
    "Reverse-cycles through all vertices",
    "Cycles through all selected vertices",
    "Reverse-cycles through all selected vertices",
    "Inverts the vertex selection",
    "Moves current vertex along the positive X,Y, or Z Axis",
    "Moves current vertex along the negative X,Y, or Z axis",
    "Moves selected vertices along the positive X,Y, or Z axis",
    "Moves selected vertices along the negative X,Y, or Z axis",
    "Cycles through vertices of the current face",
    "Reverse-cycles through vertices of the current face",
    "Jumps to the first vertex of the current face",
    "Jumps to the last vertex of the current face",
    "Sets the current vertex to -1",
    "Opens the texture-mapping dialog",
    "Normalizes a texture for all faces",
    "Offsets the horizontal texture coordinate of current face vertex",
    "Offsets the vertical texture coordinate of current face vertex",
    "Reverse-offsets the horizontal texture coordinate of current face vertex",
    "Reverse-offsets the vertical texture coordinate of current face vertex",
    "Puts the active view into play mode",
    "Rotates model around the X axis",
    "Rotates model around the Y axis",
    "Rotates model around the Z axis",
    "Resets model rotation to the default position",
    "Increases the model zoom factor",
    "Decreases the model zoom factor",
};

int ListedRow(std::string_view key) {
  const size_t plus = key.rfind('+');
  const size_t bare = plus == std::string_view::npos || plus + 1 == key.size() ? 0 : plus + 1;
  const auto* several = std::find_if(std::begin(kSeveral), std::end(kSeveral),
                                     [&](const auto& pair) { return pair.first == key.substr(bare); });
  std::string wanted(key);
  if (several != std::end(kSeveral)) wanted.replace(bare, std::string::npos, several->second);
  const auto* const row = std::find(kKeyboardKeys.begin(), kKeyboardKeys.end(), wanted);
  return row != kKeyboardKeys.end() ? static_cast<int>(row - kKeyboardKeys.begin()) : -1;
}

const char* CategoryFrom(int row) {
  switch (row) {
    case 0:
      return "File";
    case 3:
      return "Model";
    case 5:
      return "Face";
    case 15:
      return "Vertex";
    case 32:
      return "Texture";
    case 38:
      return "View";
    default:
      return nullptr;
  }
}

}  // namespace veldra

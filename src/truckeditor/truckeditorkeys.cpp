#include "truckeditor/truckeditorkeys.h"

#include <string>

namespace veldra {

namespace {

constexpr const char* kTruckWindow = "Truck Editor";

constexpr SWindowKey kTruckKeys[] = {
    {"new", "&New", "Ctrl+N"},
    {"newByWizard", "New by &Wizard...", "Ctrl+Shift+N"},
    {"open", "&Open...", "Ctrl+O"},
    {"save", "&Save", "Ctrl+S"},
    {"saveAs", "Save &As...", "Ctrl+Shift+S"},
    {"reload", "&Reload", ""},
    {"earlierStates", "&Earlier States...", ""},
    {"pack", "&Pack Truck...", "Ctrl+P"},
    {"packAgain", "Pack A&gain", "Ctrl+Shift+P"},
    {"packAndStart", "Pack and Start &Game", "F9"},
    {"close", "&Close", "Ctrl+W"},
    {"undo", "&Undo", "Ctrl+Z"},
    {"redo", "&Redo", "Ctrl+Shift+Z Ctrl+Y"},
    {"refresh", "Look for &Files Again", "F5"},
    {"names", "Names and Models", "Ctrl+1"},
    {"positions", "Positions", "Ctrl+2"},
    {"scrapePoints", "Scrape Points", "Ctrl+3"},
    {"lights", "Lights", "Ctrl+4"},
    {"sounds", "Sounds", "Ctrl+5"},
    {"view3d", "3D", "Ctrl+6"},
    {"check", "Check", "Ctrl+7"},
};

}  // namespace

std::span<const SWindowKey> TruckEditorKeys() {
  return kTruckKeys;
}

std::vector<SKeyCommand> TruckEditorKeyCommands() {
  const std::string menus[] = {"&File", "&Edit", "&View"};
  std::vector<SKeyCommand> commands = KeyCommandsOf("truckEditor", kTruckWindow, kTruckKeys);
  for (SKeyCommand& menu : MenuKeysOf(kTruckWindow, menus))
    commands.push_back(std::move(menu));
  return commands;
}

}  // namespace veldra

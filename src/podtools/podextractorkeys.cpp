#include "podtools/podextractorkeys.h"

#include <string>

namespace veldra {

namespace {

constexpr const char* kExtractorWindow = "POD Extractor";

constexpr SWindowKey kExtractorKeys[] = {
    {"open", "&Open", "Ctrl+Return"},
    {"load", "&Load...", "Ctrl+O"},
    {"save", "&Save", "Ctrl+S"},
    {"saveAs", "Save &As...", "Ctrl+Shift+S"},
    {"refresh", "&Reload", "F5"},
    {"saveAndStart", "Save and Start &Game", "F9"},
    {"problems", "Show &Problems", "Ctrl+T"},
    {"compare", "&Compare With...", "Ctrl+D"},
    {"extract", "E&xtract", "Ctrl+E"},
    {"close", "&Close", "Ctrl+W"},
    {"undo", "Step &Back", "Ctrl+Z"},
    {"redo", "Step &Forward", "Ctrl+Shift+Z Ctrl+Y"},
    {"add", "A&dd Files...", "Ins"},
    {"addFolder", "Add F&older...", "Ctrl+Ins"},
    {"replace", "Re&place...", "Ctrl+R"},
    {"rename", "Rena&me", "F2"},
    {"remove", "Remo&ve", "Del"},
    {"up", "Move &Up", "Alt+Up"},
    {"down", "Move Do&wn", "Alt+Down"},
    {"first", "Move to the &Beginning", "Alt+Home"},
    {"last", "Move to the &End", "Alt+End"},
    {"arrange", "Give the Archive the &List's Order", ""},
    {"ownOrder", "Show the A&rchive's Order", ""},
};

}  // namespace

std::span<const SWindowKey> PodExtractorKeys() {
  return kExtractorKeys;
}

std::vector<SKeyCommand> PodExtractorKeyCommands() {
  const std::string menus[] = {"&Archive", "&Edit"};
  std::vector<SKeyCommand> commands = KeyCommandsOf("podExtractor", kExtractorWindow, kExtractorKeys);
  for (SKeyCommand& menu : MenuKeysOf(kExtractorWindow, menus))
    commands.push_back(std::move(menu));
  return commands;
}

}  // namespace veldra

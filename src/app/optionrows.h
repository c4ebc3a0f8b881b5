#pragma once

#include <array>

namespace veldra {

/// An option of the editor's command line.
struct SProgramOptionRow {
  const char* name;   ///< without "--"
  const char* value;  ///< what stands behind it; "" for nothing
  const char* help;   ///< one line
  bool is_hidden = false;
};

inline constexpr SProgramOptionRow kPictureOption = {"save-picture", "PNG",
                                                     "Open the files, save a picture of the window as PNG and exit. "
                                                     "Nothing is asked meanwhile: what would be a question "
                                                     "goes to standard error"};
inline constexpr SProgramOptionRow kCommandOption = {
    "command", "NAME", "Before the picture, carry out a command of the menus (may be repeated)"};
inline constexpr SProgramOptionRow kSettingsOption = {
    "cfg", "FILE", "Settings file (default: Veldra.cfg in the current directory, else the user's own)"};
inline constexpr SProgramOptionRow kReadOnlyOption = {"read-only", "", "Open the files as read-only"};
inline constexpr SProgramOptionRow kMemoryOption = {
    "draw-in-memory", "", "Draw the 3D views in memory, for drivers that fail in windows; slower"};
inline constexpr SProgramOptionRow kQuitOption = {"quit-when-drawn", "",
                                                  "Exit as soon as the model is drawn: for measuring", true};

/// In the order of the help.
inline constexpr std::array kProgramOptions = {kPictureOption,  kCommandOption, kSettingsOption,
                                               kReadOnlyOption, kMemoryOption,  kQuitOption};

}  // namespace veldra

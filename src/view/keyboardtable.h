#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// The keyboard commands as the keyboard dialog lists them. The keys themselves stand in the command table, which must
/// agree with these.
namespace veldra {

inline constexpr int kKeyboardRows = 45;

// Row by row, in the order of the list.
extern const std::array<const char*, kKeyboardRows> kKeyboardCommands;
extern const std::array<const char*, kKeyboardRows> kKeyboardKeys;
extern const std::array<const char*, kKeyboardRows> kKeyboardDescriptions;

/// A key that is not in the list.
struct SKeyRow {
  std::string command;
  std::string key;
  std::string description;
};

/// What the keyboard dialog shows: the user may have changed the keys.
struct SKeyTexts {
  std::array<std::string, kKeyboardRows> listed;  ///< the Keys of the list's rows
  std::vector<SKeyRow> others;
};

/// The row of the list that stands for KEY, spelled as in the command table ("Shift+X", "PgUp"); -1 when there is none.
int ListedRow(std::string_view key);

/// The category that begins at ROW, or null where the one before goes on.
const char* CategoryFrom(int row);

}  // namespace veldra

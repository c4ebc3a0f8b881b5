#pragma once

#include <array>
#include <string>
#include <string_view>

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

/// Whether a row of the list stands for KEY, spelled as in the command table ("Shift+X", "PgUp").
bool IsListed(std::string_view key);

/// The category that begins at ROW, or null where the one before goes on.
const char* CategoryFrom(int row);

}  // namespace veldra

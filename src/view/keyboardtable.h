#pragma once

#include <array>

/// The keyboard commands as the keyboard dialog lists them. The keys themselves stand in the command table, which must
/// agree with these.
namespace veldra {

inline constexpr int kKeyboardRows = 45;

// Row by row, in the order of the list.
extern const std::array<const char*, kKeyboardRows> kKeyboardCommands;
extern const std::array<const char*, kKeyboardRows> kKeyboardKeys;
extern const std::array<const char*, kKeyboardRows> kKeyboardDescriptions;

/// The category that begins at ROW, or null where the one before goes on.
const char* CategoryFrom(int row);

}  // namespace veldra

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Keys as texts. All tables, the settings file and the user's input come to one spelling, so that two keys are the
/// same where their texts are: "Ctrl+Alt+Shift+X" in this order, letters as capitals, "PgUp", "Num+5" on the number
/// pad. Signs have no Shift, which only makes them, and "=" is "+", whose key it is on many keyboards.
namespace veldra {

/// TEXT in that spelling. Takes letters in any case, "Delete" and its like, and "5 (Number Pad)". Nothing where it is
/// no key.
std::optional<std::string> ParseKey(std::string_view text);
/// The keys of TEXT, which has blanks between them; each must be one.
std::vector<std::string> ParseKeys(std::string_view text);

// All below take keys in that spelling.

/// As menus and lists show it: "5 (Number Pad)".
std::string ShownKey(const std::string& key);
/// "Ctrl+S, F2".
std::string ShownKeys(const std::vector<std::string>& keys);
/// Pressing one may be pressing the other: a digit without "Num+" is that of the number pad, too.
bool ArePressedAlike(std::string_view a, std::string_view b);
/// It types, moves or presses something in most controls: no Ctrl or Alt with it, and no function key.
bool IsPlainKey(std::string_view key);
/// Why no command can have it: the system, or all windows, have it for something else. "" for nothing.
std::string KeyFault(std::string_view key);
/// Where it stays what it is although a command has it, or "".
std::string KeyNote(std::string_view key);

}  // namespace veldra

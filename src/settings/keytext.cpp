#include "settings/keytext.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::string_view kNumberPadWords = " (Number Pad)";
constexpr std::string_view kNumberPad = "Num+";
constexpr std::array<std::string_view, 4> kModifiers = {"Meta+", "Ctrl+", "Alt+", "Shift+"};
constexpr size_t kShift = 3;
constexpr int kMostFunctionKeys = 35;

constexpr std::string_view kNamedKeys[] = {"Space", "Tab",   "Backspace", "Return", "Ins",  "Del",
                                           "Pause", "Print", "Home",      "End",    "Left", "Up",
                                           "Right", "Down",  "PgUp",      "PgDown", "Esc",  "Menu"};
constexpr std::pair<std::string_view, std::string_view> kOtherNames[] = {
    {"Delete", "Del"},   {"Insert", "Ins"}, {"PageUp", "PgUp"}, {"PageDown", "PgDown"},
    {"Enter", "Return"}, {"Escape", "Esc"}, {"Backtab", "Tab"}, {"SysReq", "Print"},
};

constexpr std::pair<std::string_view, const char*> kFaults[] = {
    {"Esc", "Esc closes dialogs and takes drags back."},
    {"F1", "F1 opens the help in every window."},
    {"F10", "F10 leads into the menus."},
    {"Menu", "The menu key opens context menus."},
    {"Shift+F10", "Shift+F10 opens context menus."},
    {"Print", "The desktop takes pictures of the screen with this key."},
    {"Alt+F4", "Alt+F4 closes windows."},
    {"Alt+Tab", "The desktop goes from window to window with Alt+Tab."},
    {"Alt+Shift+Tab", "The desktop goes from window to window with Alt+Shift+Tab."},
    {"Alt+Space", "Alt+Space opens the window's own menu."},
    {"Alt+Esc", "The desktop has Alt+Esc."},
    {"Ctrl+Esc", "The desktop has Ctrl+Esc."},
    {"Ctrl+Alt+Del", "The system has Ctrl+Alt+Del."},
};

bool StartsWithNoCase(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualNoCase(text.substr(0, start.size()), start);
}

/// One character of UTF-8 that is no blank and nothing invisible.
bool IsOneCharacter(std::string_view text) {
  if (text.empty() || ToUtf8(text) != text) return false;
  const auto goes_on = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  return static_cast<unsigned char>(text[0]) > ' ' && text != "\x7F" && !HasHiddenCharacters(text) &&
         std::ranges::all_of(text.substr(1), goes_on);
}

bool IsSignKey(std::string_view bare) {
  const char c = bare.size() == 1 ? UpperCase(bare)[0] : 'A';
  return c < 'A' || c > 'Z';
}

std::optional<std::string> FunctionKey(std::string_view text) {
  if (text.size() < 2 || UpperCase(text.substr(0, 1)) != "F" || text[1] < '1' || text[1] > '9') return std::nullopt;
  const auto number = ParseInteger(text.substr(1));
  if (!number || *number > kMostFunctionKeys) return std::nullopt;
  return "F" + std::to_string(*number);
}

/// Without modifiers.
std::optional<std::string> BareKey(std::string_view text) {
  if (IsOneCharacter(text)) return text == "=" ? "+" : FoldName(text);
  const auto* const other =
      std::ranges::find_if(kOtherNames, [&](const auto& names) { return EqualNoCase(names.first, text); });
  if (other != std::end(kOtherNames)) return std::string(other->second);
  const auto* const named = std::ranges::find_if(kNamedKeys, [&](auto name) { return EqualNoCase(name, text); });
  if (named != std::end(kNamedKeys)) return std::string(*named);
  return FunctionKey(text);
}

/// The key behind its modifiers, with its "Num+".
std::string_view WithoutModifiers(std::string_view key) {
  for (const std::string_view modifier : kModifiers)
    if (key.starts_with(modifier)) key.remove_prefix(modifier.size());
  return key;
}

std::string WithoutNumberPad(std::string_view key) {
  std::string text(key);
  if (const size_t at = text.find(kNumberPad); at != std::string::npos) text.erase(at, kNumberPad.size());
  return text;
}

bool IsFunctionKey(std::string_view key) {
  return FunctionKey(WithoutModifiers(key)).has_value();
}

}  // namespace

std::optional<std::string> ParseKey(std::string_view text) {
  text = Trim(text);
  bool on_number_pad = text.ends_with(kNumberPadWords);
  if (on_number_pad) text.remove_suffix(kNumberPadWords.size());
  std::array<bool, kModifiers.size()> held = {};
  for (bool is_there = true; is_there;) {
    is_there = false;
    for (size_t i = 0; i < kModifiers.size(); ++i) {
      if (!StartsWithNoCase(text, kModifiers[i])) continue;
      text.remove_prefix(kModifiers[i].size());
      held[i] = is_there = true;
    }
    if (StartsWithNoCase(text, kNumberPad)) {
      text.remove_prefix(kNumberPad.size());
      on_number_pad = is_there = true;
    }
  }
  const auto bare = BareKey(text);
  if (!bare) return std::nullopt;
  // Only digits are told apart there: with other keys it makes no difference where they are.
  on_number_pad = on_number_pad && bare->size() == 1 && (*bare)[0] >= '0' && (*bare)[0] <= '9';
  if (bare->size() == 1 && IsSignKey(*bare)) held[kShift] = false;
  std::string key;
  for (size_t i = 0; i < kModifiers.size(); ++i)
    if (held[i]) key += kModifiers[i];
  return key + (on_number_pad ? std::string(kNumberPad) : "") + *bare;
}

std::vector<std::string> ParseKeys(std::string_view text) {
  std::vector<std::string> keys;
  while (!(text = Trim(text)).empty()) {
    const size_t end = text.ends_with(kNumberPadWords) ? text.size() : std::min(text.find(' '), text.size());
    const auto key = ParseKey(text.substr(0, end));
    VELDRA_ASSERT(key);
    keys.push_back(*key);
    text.remove_prefix(end);
  }
  return keys;
}

std::string ShownKey(const std::string& key) {
  const std::string plain = WithoutNumberPad(key);
  return plain == key ? key : plain + std::string(kNumberPadWords);
}

std::string ShownKeys(const std::vector<std::string>& keys) {
  std::string text;
  for (const std::string& key : keys)
    text += (text.empty() ? "" : ", ") + ShownKey(key);
  return text;
}

bool ArePressedAlike(std::string_view a, std::string_view b) {
  return WithoutNumberPad(a) == WithoutNumberPad(b);
}

bool IsPlainKey(std::string_view key) {
  return !key.starts_with("Meta+") && !key.starts_with("Ctrl+") && !key.starts_with("Alt+") && !IsFunctionKey(key);
}

std::string KeyFault(std::string_view key) {
  const auto* const fault = std::ranges::find_if(kFaults, [&](const auto& row) { return row.first == key; });
  if (fault != std::end(kFaults)) return fault->second;
  if (key.starts_with("Meta+")) return "Keys with the system key are the desktop's.";
  if (key.starts_with("Ctrl+Alt+") && IsFunctionKey(key)) return "Keys of this kind are the system's.";
  return "";
}

std::string KeyNote(std::string_view key) {
  constexpr std::string_view kEditing[] = {"Ctrl+A",    "Ctrl+C",    "Ctrl+V",     "Ctrl+X",   "Ctrl+Y",
                                           "Ctrl+Z",    "Ctrl+Left", "Ctrl+Right", "Ctrl+Del", "Ctrl+Backspace",
                                           "Ctrl+Home", "Ctrl+End",  "Ctrl+Ins",   "Shift+Ins"};
  if (std::ranges::find(kEditing, key) != std::end(kEditing))
    return "In text fields this key edits the text, as everywhere.";
  if (!IsPlainKey(key)) return "";
  if (IsOneCharacter(WithoutNumberPad(WithoutModifiers(key)))) return "In text fields this key types, as everywhere.";
  return "In lists and fields this key moves about or presses, as everywhere.";
}

}  // namespace veldra

#include "settings/settings.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/assert.h"
#include "platform/numberrule.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr uint32_t kLargestColorNumber = 0xFFFFFF;

std::optional<SColor> ParseColor(std::string_view text) {
  text = Trim(text);
  if (text.empty()) return std::nullopt;
  const bool is_hex = text[0] == '#';
  if (is_hex) text.remove_prefix(1);
  if (is_hex && text.size() != 6) return std::nullopt;
  uint32_t number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number, is_hex ? 16 : 10);
  if (fault != std::errc() || end != text.data() + text.size() || number > kLargestColorNumber) return std::nullopt;
  const auto low = static_cast<uint8_t>(number);
  const auto high = static_cast<uint8_t>(number >> 16);
  const auto green = static_cast<uint8_t>(number >> 8);
  return is_hex ? SColor{high, green, low} : SColor{low, green, high};
}

bool IsAllowed(const SSettingRow& row, double value) {
  if (row.choices.empty()) return value >= row.smallest && value <= row.largest;
  return std::ranges::any_of(row.choices, [value](const SSettingChoice& choice) { return choice.value == value; });
}

// One overload for each kind of value: whether TEXT was good, and what it is as text.

bool FromText(const SSettingRow& row, const std::string& text, int32_t& value) {
  const auto number = ParseInteger(Trim(text));
  if (!number || !IsAllowed(row, *number)) return false;
  value = *number;
  return true;
}

bool FromText(const SSettingRow& row, const std::string& text, double& value) {
  const auto number = ParseNumber(Trim(text));
  if (!number || !IsAllowed(row, *number)) return false;
  value = *number;
  return true;
}

bool FromText(const SSettingRow&, const std::string& text, SColor& value) {
  const auto color = ParseColor(text);
  if (color) value = *color;
  return color.has_value();
}

bool FromText(const SSettingRow&, const std::string& text, std::string& value) {
  value = text;
  return true;
}

std::string ToText(int32_t value) {
  return std::to_string(value);
}

std::string ToText(double value) {
  return NumberText(value);
}

std::string ToText(const SColor& color) {
  return Format("#%02X%02X%02X", unsigned{color.red}, unsigned{color.green}, unsigned{color.blue});
}

std::string ToText(std::string text) {
  // A value ends with its line.
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

/// The file begins with the status and the main window; the rest follows in reading order.
int WritingRank(const SSettingRow* row) {
  if (row->key.starts_with("VERTSTAT")) return 0;
  return row->key.starts_with("MAINWND") ? 1 : 2;
}

std::vector<const SSettingRow*> RowsInWritingOrder() {
  std::vector<const SSettingRow*> rows;
  for (const SSettingRow& row : SettingRows())
    rows.push_back(&row);
  std::ranges::stable_sort(rows, {}, WritingRank);
  return rows;
}

}  // namespace

const SSettingRow* FindSettingRow(std::string_view key) {
  const auto rows = SettingRows();
  const auto found = std::ranges::find(rows, key, &SSettingRow::key);
  return found != rows.end() ? &*found : nullptr;
}

bool SetFromText(const SSettingRow& row, const std::string& text, CSettings& settings) {
  return std::visit([&](auto member) { return FromText(row, text, member(settings)); }, row.member);
}

std::string ToSettingText(const SSettingRow& row, const CSettings& settings) {
  // The table's one accessor a row serves reading and writing; here nothing is written through it.
  return std::visit([&](auto member) { return ToText(member(const_cast<CSettings&>(settings))); }, row.member);
}

CSettings::CSettings() {
  for (const SSettingRow& row : SettingRows()) {
    [[maybe_unused]] const bool is_good = SetFromText(row, row.default_text, *this);
    VELDRA_ASSERT(is_good);
  }
}

void CSettings::Take(const SettingsMap& map) {
  for (const SSettingRow& row : SettingRows()) {
    const auto entry = map.find(row.key);
    if (entry == map.end() || SetFromText(row, entry->second, *this)) continue;
    Trace("CSettings::Take : '%s' cannot be '%s', taken as '%s'\n", row.key.c_str(), entry->second.c_str(),
          row.default_text.c_str());
    SetFromText(row, row.default_text, *this);
  }
  if (map.contains("PODDIR") && !map.contains("PODDESTDIR")) pod_dest_dir = pod_dir;
}

std::vector<std::pair<std::string, std::string>> CSettings::Texts() const {
  std::vector<std::pair<std::string, std::string>> texts;
  for (const SSettingRow* row : RowsInWritingOrder())
    texts.emplace_back(row->key, ToSettingText(*row, *this));
  return texts;
}

}  // namespace veldra

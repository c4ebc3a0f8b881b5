#include "settings/userkeys.h"

#include <algorithm>
#include <utility>

#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kLongestSetting = size_t{64} << 10;  ///< far more than all keys of a keyboard

bool HasKey(const std::vector<std::string>& keys, std::string_view key) {
  return std::ranges::any_of(keys, [&](const std::string& each) { return ArePressedAlike(each, key); });
}

void RemoveKey(std::vector<std::string>& keys, std::string_view key) {
  std::erase_if(keys, [&](const std::string& each) { return ArePressedAlike(each, key); });
}

std::string_view IdOf(std::string_view entry) {
  return entry.substr(0, entry.find('='));
}

}  // namespace

std::string WithoutMenuSigns(std::string_view text) {
  if (text.ends_with("...")) text.remove_suffix(3);
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i)
    if (text[i] != '&' || (i > 0 && text[i - 1] == '&')) plain += text[i];
  return plain;
}

std::vector<SKeyCommand> KeyCommandsOf(const std::string& prefix, const std::string& window,
                                       std::span<const SWindowKey> rows) {
  std::vector<SKeyCommand> commands;
  for (const SWindowKey& row : rows)
    commands.push_back({prefix + '.' + row.name, window, window, WithoutMenuSigns(row.text), ParseKeys(row.keys)});
  return commands;
}

std::vector<SKeyCommand> MenuKeysOf(const std::string& window, std::span<const std::string> menus) {
  std::vector<SKeyCommand> commands;
  for (const std::string& menu : menus) {
    const size_t sign = menu.find('&');
    if (sign == std::string::npos || sign + 1 == menu.size()) continue;
    commands.push_back(
        {"", window, "", "the menu " + WithoutMenuSigns(menu), ParseKeys("Alt+" + menu.substr(sign + 1, 1)), true});
  }
  return commands;
}

CUserKeys::CUserKeys(std::vector<SKeyCommand> commands, std::string_view setting) : commands_(std::move(commands)) {
  Read(setting);
}

void CUserKeys::Read(std::string_view setting) {
  keys_.assign(commands_.size(), {});
  kept_.clear();
  faults_.clear();
  std::vector<bool> is_set(commands_.size());
  if (setting.size() > kLongestSetting) Refuse(std::exchange(setting, {}), "it is too long");
  while (!(setting = Trim(setting)).empty()) {
    const size_t end = std::min(setting.find(' '), setting.size());
    ReadEntry(setting.substr(0, end), is_set);
    setting.remove_prefix(end);
  }
  TakeDefaults(is_set);
}

void CUserKeys::Refuse(std::string_view entry, const std::string& why) {
  kept_.emplace_back(entry);
  constexpr size_t kMostShown = 60;
  faults_.push_back(Format("\"%s\": %s", DisplayName(entry.substr(0, kMostShown)).c_str(), why.c_str()));
}

void CUserKeys::ReadEntry(std::string_view entry, std::vector<bool>& is_set) {
  const std::string_view id = IdOf(entry);
  const auto command = Find(id);
  if (!command || id.size() == entry.size()) return Refuse(entry, "there is no such command");
  if (commands_[*command].is_fixed) return Refuse(entry, "the keys of this command stay");
  const std::string_view text = entry.substr(id.size() + 1);
  if (text.empty()) {
    is_set[*command] = true;
    return;
  }
  const auto key = ParseKey(text);
  if (!key) return Refuse(entry, "there is no such key");
  if (const std::string fault = KeyFault(*key); !fault.empty()) return Refuse(entry, fault);
  if (HasKey(keys_[*command], *key)) return;
  if (keys_[*command].size() == kMostKeys) return Refuse(entry, "the command has many keys already");
  if (const auto other = OtherWith(*command, *key))
    return Refuse(entry, Format("it is the key of %s already", commands_[*other].name.c_str()));
  keys_[*command].push_back(*key);
  is_set[*command] = true;
}

/// Those that the setting has given to others are left out.
void CUserKeys::TakeDefaults(const std::vector<bool>& is_set) {
  for (size_t i = 0; i < commands_.size(); ++i) {
    if (is_set[i]) continue;
    for (const std::string& key : commands_[i].defaults)
      if (commands_[i].is_fixed || !OtherWith(i, key)) keys_[i].push_back(key);
  }
}

std::optional<size_t> CUserKeys::Find(std::string_view id) const {
  const auto found = std::ranges::find(commands_, id, &SKeyCommand::id);
  if (found == commands_.end() || id.empty()) return std::nullopt;
  return static_cast<size_t>(found - commands_.begin());
}

const std::vector<std::string>& CUserKeys::KeysOf(std::string_view id) const {
  const auto command = Find(id);
  VELDRA_ASSERT(command);
  return keys_[*command];
}

std::optional<size_t> CUserKeys::OtherWith(size_t command, std::string_view key) const {
  for (size_t i = 0; i < commands_.size(); ++i) {
    if (i == command || commands_[i].window != commands_[command].window) continue;
    if (!commands_[i].is_fixed && HasKey(keys_[i], key)) return i;
    // What has a menu's key at first goes before the menu.
    if (commands_[i].is_fixed && HasKey(commands_[i].defaults, key) && !HasKey(commands_[command].defaults, key))
      return i;
  }
  return std::nullopt;
}

void CUserKeys::Give(size_t command, std::vector<std::string> keys) {
  for (size_t i = 0; i < commands_.size(); ++i) {
    if (i == command || commands_[i].window != commands_[command].window || commands_[i].is_fixed) continue;
    for (const std::string& key : keys)
      RemoveKey(keys_[i], key);
  }
  keys_[command] = std::move(keys);
  std::erase_if(kept_, [&](const std::string& entry) { return IdOf(entry) == commands_[command].id; });
}

std::string CUserKeys::Text() const {
  std::string text;
  const auto add = [&](const std::string& entry) { text += (text.empty() ? "" : " ") + entry; };
  for (size_t i = 0; i < commands_.size(); ++i) {
    if (!IsChanged(i)) continue;
    if (keys_[i].empty()) add(commands_[i].id + '=');
    for (const std::string& key : keys_[i])
      add(commands_[i].id + '=' + key);
  }
  for (const std::string& entry : kept_)
    add(entry);
  return text;
}

}  // namespace veldra

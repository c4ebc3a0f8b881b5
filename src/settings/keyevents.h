#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QList>
#include <string>
#include <string_view>
#include <vector>

/// Keys in the spelling of keytext.h as the window toolkit has them.
namespace veldra {

/// A key as the event that it means.
class CKeyMatch {
 public:
  explicit CKeyMatch(std::string_view key);
  bool IsValid() const { return key_ != 0; }
  /// Letters and named keys with exactly these modifiers; a sign ("+") however the keyboard's layout makes it, and a
  /// letter in its usual place where the layout has others than Latin ones.
  bool Matches(const QKeyEvent& event) const;

 private:
  bool MatchesNumberPad(const QKeyEvent& event) const;

  int key_ = 0;
  Qt::KeyboardModifiers modifiers_;
  bool on_number_pad_ = false;
};

/// The key that EVENT presses; "" for a modifier alone and for what is no key for commands.
std::string KeyOf(const QKeyEvent& event);

/// KEYS as the shortcuts of an action: one that two keys of a keyboard make, as "+" and Return, is two.
QList<QKeySequence> ShortcutsOf(const std::vector<std::string>& keys);

}  // namespace veldra

#pragma once

#include <QKeyEvent>
#include <QObject>
#include <functional>
#include <string_view>

#include "app/commands/commandtable.h"

namespace veldra {

/// A row's view_key as the key event that it means: "F", "Ctrl+Shift+J", "Tab", "+", "5 (Number Pad)".
class CViewKey {
 public:
  explicit CViewKey(std::string_view text);
  bool IsValid() const { return key_ != 0; }
  /// Letters and named keys with exactly these modifiers; a sign ("+") however the keyboard's layout makes it.
  bool Matches(const QKeyEvent& event) const;

 private:
  bool MatchesNumberPad(const QKeyEvent& event) const;

  int key_ = 0;
  Qt::KeyboardModifiers modifiers_;
  bool on_number_pad_ = false;
};

/// The keys of the 3D views, as the command table has them. Watches the widgets that it is installed on as an event
/// filter; so a key reaches a command before Qt takes it for itself (Tab, the menus' Alt keys). In other widgets than
/// views the keys that mean something there are theirs: all of them in text fields, else those that move about, press,
/// select or copy.
class CViewKeys : public QObject {
  Q_OBJECT

 public:
  /// RUN carries a command out where its rule allows it.
  CViewKeys(std::function<void(const SCommandRow&)> run, QObject* parent);

  /// The row of that key, enabled or not; null when there is none.
  static const SCommandRow* Find(const QKeyEvent& event);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void(const SCommandRow&)> run_;
};

}  // namespace veldra

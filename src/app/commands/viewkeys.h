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

/// The keys of the 3D views, as the command table has them. Watches the views that it is installed on as an event
/// filter; so a key reaches a command before Qt takes it for itself (Tab, the menus' Alt keys), and never while a text
/// field has the focus.
class CViewKeys : public QObject {
  Q_OBJECT

 public:
  /// RUN carries a command out, IS_ENABLED says whether it can be.
  CViewKeys(std::function<void(const SCommandRow&)> run, std::function<bool(const SCommandRow&)> is_enabled,
            QObject* parent);

  /// The row of that key, enabled or not; null when there is none.
  static const SCommandRow* Find(const QKeyEvent& event);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<void(const SCommandRow&)> run_;
  std::function<bool(const SCommandRow&)> is_enabled_;
};

}  // namespace veldra

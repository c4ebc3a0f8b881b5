#include "app/commands/viewkeys.h"

#include <QKeySequence>
#include <algorithm>
#include <utility>
#include <vector>

#include "view/tarn2view.h"

namespace veldra {

namespace {

constexpr std::string_view kOnNumberPad = " (Number Pad)";
constexpr Qt::KeyboardModifiers kAllModifiers =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

/// Shift is part of making a sign, not of what it means.
bool IsSign(int key) {
  return key > Qt::Key_Space && key < Qt::Key_A;
}

/// The key as the table names it: Shift+Tab comes as a key of its own, and "+" without its Shift as "=".
int PlainKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Backtab:
      return Qt::Key_Tab;
    case Qt::Key_Equal:
      return Qt::Key_Plus;
    default:
      return event.key();
  }
}

bool TakesText(const QObject& widget) {
  return widget.inherits("QLineEdit") || widget.inherits("QAbstractSpinBox") || widget.inherits("QComboBox");
}

/// WIDGET is no view, and the key means something in it.
bool IsWidgetsOwn(const QObject& widget, QKeyEvent& event) {
  constexpr int kMoving[] = {Qt::Key_Up,    Qt::Key_Down,   Qt::Key_Left,     Qt::Key_Right, Qt::Key_Home,
                             Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Tab,   Qt::Key_Backtab,
                             Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter};
  if (qobject_cast<const CTarnView*>(&widget) != nullptr) return false;
  return TakesText(widget) || std::ranges::find(kMoving, event.key()) != std::end(kMoving) ||
         event.matches(QKeySequence::SelectAll) || event.matches(QKeySequence::Copy);
}

/// Each row with its key taken apart once.
const std::vector<std::pair<CViewKey, const SCommandRow*>>& Rows() {
  static const auto rows = [] {
    std::vector<std::pair<CViewKey, const SCommandRow*>> found;
    for (const SCommandRow& row : CommandRows())
      if (*row.view_key != '\0') found.emplace_back(CViewKey(row.view_key), &row);
    return found;
  }();
  return rows;
}

}  // namespace

CViewKey::CViewKey(std::string_view text) {
  on_number_pad_ = text.ends_with(kOnNumberPad);
  if (on_number_pad_) text.remove_suffix(kOnNumberPad.size());
  const QKeySequence sequence(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown) return;
  key_ = sequence[0].key();
  modifiers_ = sequence[0].keyboardModifiers();
}

bool CViewKey::MatchesNumberPad(const QKeyEvent& event) const {
  // With Num Lock off the key in the middle has a name of its own.
  const bool is_middle = key_ == Qt::Key_5 && event.key() == Qt::Key_Clear;
  return is_middle || (event.key() == key_ && (event.modifiers() & Qt::KeypadModifier) != 0);
}

bool CViewKey::Matches(const QKeyEvent& event) const {
  const Qt::KeyboardModifiers ignored = IsSign(key_) ? Qt::ShiftModifier : Qt::NoModifier;
  if ((event.modifiers() & kAllModifiers & ~ignored) != (modifiers_ & ~ignored)) return false;
  return on_number_pad_ ? MatchesNumberPad(event) : PlainKey(event) == key_;
}

CViewKeys::CViewKeys(std::function<void(const SCommandRow&)> run, QObject* parent)
    : QObject(parent), run_(std::move(run)) {}

const SCommandRow* CViewKeys::Find(const QKeyEvent& event) {
  for (const auto& [key, row] : Rows())
    if (key.Matches(event)) return row;
  return nullptr;
}

bool CViewKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
    return QObject::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  const SCommandRow* row = IsWidgetsOwn(*watched, key) ? nullptr : Find(key);
  if (row == nullptr) return QObject::eventFilter(watched, event);
  event->accept();
  if (event->type() == QEvent::KeyPress) run_(*row);
  return true;
}

}  // namespace veldra

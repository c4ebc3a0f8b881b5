#include "app/commands/viewkeys.h"

#include <QKeySequence>
#include <algorithm>
#include <utility>

#include "view/tarn2view.h"

namespace veldra {

namespace {

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

}  // namespace

CViewKeys::CViewKeys(const CCommandKeys& keys, Runner run, QObject* parent)
    : QObject(parent), keys_(keys), run_(std::move(run)) {}

bool CViewKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
    return QObject::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  const SCommandRow* row = IsWidgetsOwn(*watched, key) ? nullptr : keys_.FindInView(key);
  if (row == nullptr) return QObject::eventFilter(watched, event);
  event->accept();
  if (event->type() == QEvent::KeyPress) run_(*row);
  return true;
}

}  // namespace veldra

#include "settings/keyfield.h"

#include <QKeyEvent>

#include "settings/keyevents.h"
#include "settings/keytext.h"
#include "ui/qstrings.h"

namespace veldra {

CKeyField::CKeyField(QWidget* parent) : QLineEdit(parent) {
  setReadOnly(true);
  setContextMenuPolicy(Qt::NoContextMenu);
  SetKey("");
}

void CKeyField::SetKey(const std::string& key) {
  key_ = key;
  Wait(false);
  emit KeyChanged();
}

void CKeyField::Wait(bool waits) {
  waits_ = waits;
  setText(waits_ ? QString() : ToQString(ShownKey(key_)));
  setPlaceholderText(waits_ ? tr("Press a key...") : tr("Click or Space, then a key"));
}

bool CKeyField::event(QEvent* event) {
  const bool is_press = event->type() == QEvent::KeyPress;
  if (!is_press && event->type() != QEvent::ShortcutOverride) return QLineEdit::event(event);
  auto& key = static_cast<QKeyEvent&>(*event);
  if (waits_) {
    event->accept();  // before a dialog, a menu or the focus takes it
    if (is_press) TakePress(key);
    return true;
  }
  if (is_press && TakeOtherPress(key)) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void CKeyField::TakePress(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier) return Wait(false);
  const std::string key = KeyOf(event);
  if (key.empty()) return;
  SetKey(key);
  emit Pressed();
}

bool CKeyField::TakeOtherPress(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Wait();
      return true;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      SetKey("");
      return true;
    default:
      return false;
  }
}

void CKeyField::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  Wait();
}

void CKeyField::focusOutEvent(QFocusEvent* event) {
  if (waits_) Wait(false);
  QLineEdit::focusOutEvent(event);
}

}  // namespace veldra

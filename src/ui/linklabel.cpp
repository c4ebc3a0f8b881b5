#include "ui/linklabel.h"

#include <QKeyEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace veldra {

CLinkLabel::CLinkLabel(const char* name, const QString& text, QWidget* parent) : QLabel(parent), words_(text) {
  setObjectName(name);
  setTextFormat(Qt::RichText);
  // By keys it would take two tabs: one to the label, one to what it leads to.
  setTextInteractionFlags(Qt::LinksAccessibleByMouse);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(text);
  connect(this, &QLabel::linkActivated, this, &CLinkLabel::Followed);
  ShowText();
}

void CLinkLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowText();
}

void CLinkLabel::keyPressEvent(QKeyEvent* event) {
  const bool is_followed = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!is_followed) return QLabel::keyPressEvent(event);
  event->accept();
  emit Followed();
}

void CLinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QStylePainter painter(this);
  QStyleOptionFocusRect option;
  option.initFrom(this);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

/// The colour stands in the text, where no style and no desktop gives another one.
void CLinkLabel::ShowText() {
  constexpr int kMiddle = 128;
  const bool is_dark = palette().color(QPalette::Window).lightness() < kMiddle;
  setText(QStringLiteral("<a href=\"#\" style=\"color:%1\">%2</a>")
              .arg(is_dark ? "#7cb7ff" : "#0b57c4", words_.toHtmlEscaped()));
}

}  // namespace veldra

#include "ui/linklabel.h"

#include <QEvent>

namespace veldra {

CLinkLabel::CLinkLabel(const char* name, const QString& text, QWidget* parent) : QLabel(parent), words_(text) {
  setObjectName(name);
  setTextFormat(Qt::RichText);
  setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(text);
  connect(this, &QLabel::linkActivated, this, &CLinkLabel::Followed);
  ShowText();
}

void CLinkLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowText();
}

/// The colour stands in the text, where no style and no desktop gives another one.
void CLinkLabel::ShowText() {
  constexpr int kMiddle = 128;
  const bool is_dark = palette().color(QPalette::Window).lightness() < kMiddle;
  setText(QStringLiteral("<a href=\"#\" style=\"color:%1\">%2</a>")
              .arg(is_dark ? "#7cb7ff" : "#0b57c4", words_.toHtmlEscaped()));
}

}  // namespace veldra

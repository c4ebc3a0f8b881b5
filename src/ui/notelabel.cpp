#include "ui/notelabel.h"

#include <QStyle>

namespace veldra {

CNoteLabel::CNoteLabel(const QString& text, const QCheckBox& box, QWidget* parent) : QLabel(text, parent) {
  const QStyle& look = *box.style();
  const int mark = look.pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &box) +
                   look.pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &box);
  setContentsMargins(mark, 0, 0, 0);
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
}

}  // namespace veldra

#pragma once

#include <QCheckBox>
#include <QLabel>

namespace veldra {

/// What there is to know about the choice of a check box, below it and as far in as its text.
class CNoteLabel : public QLabel {
  Q_OBJECT

 public:
  CNoteLabel(const QString& text, const QCheckBox& box, QWidget* parent = nullptr);
};

}  // namespace veldra

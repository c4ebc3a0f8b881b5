#pragma once

#include <QLabel>

namespace veldra {

/// Text that says what is wrong, in a red that can be read on light and on dark windows.
class CFaultLabel : public QLabel {
  Q_OBJECT

 public:
  explicit CFaultLabel(QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void TakeColor();
};

/// COLOR for text that warns on a window of PALETTE.
QColor FaultColor(const QPalette& palette);

}  // namespace veldra

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

/// Gives the hints in empty fields the colour of their texts, fainter, where the desktop has left them as they are on a
/// light window.
void MakePlaceholdersReadable();

}  // namespace veldra

#pragma once

#include <QMdiArea>

namespace veldra {

/// The main frame's area of documents; shows ways to begin while it is empty.
class CDocumentArea : public QMdiArea {
  Q_OBJECT

 public:
  explicit CDocumentArea(QWidget* parent = nullptr);
  /// PAGE, which becomes the area's own, is seen while no window is open.
  void SetWelcome(QWidget* page);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowWelcome();

  QWidget* welcome_ = nullptr;
};

}  // namespace veldra

#pragma once

#include <QMdiArea>

namespace veldra {

/// The main frame's area of documents; says how to begin while it is empty.
class CDocumentArea : public QMdiArea {
  Q_OBJECT

 public:
  explicit CDocumentArea(QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace veldra

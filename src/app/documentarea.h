#pragma once

#include <QMdiArea>

#include "app/help/welcomepage.h"

namespace veldra {

/// The main frame's area of documents; shows ways to begin while it is empty.
class CDocumentArea : public QMdiArea {
  Q_OBJECT

 public:
  explicit CDocumentArea(QWidget* parent = nullptr);
  CWelcomePage& Welcome() { return *welcome_; }

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowWelcome();

  CWelcomePage* welcome_;
};

}  // namespace veldra

#pragma once

#include <QDialog>

namespace veldra {

/// What the program is, under which licence, and what it is built on.
class CAboutDialog : public QDialog {
  Q_OBJECT

 public:
  explicit CAboutDialog(QWidget* parent);
};

}  // namespace veldra

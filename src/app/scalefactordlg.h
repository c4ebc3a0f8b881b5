#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>

namespace veldra {

/// Asks for the Hellbender scale factor and says what is wrong with it while one types.
class CScaleFactorDialog : public QDialog {
  Q_OBJECT

 public:
  CScaleFactorDialog(double offered, QWidget* parent);
  /// Once accepted.
  double Factor() const;

 private:
  void Check();

  QLineEdit* factor_;
  QLabel* fault_;
  QDialogButtonBox* buttons_;
};

}  // namespace veldra

#pragma once

#include <QComboBox>
#include <QDialog>
#include <QRadioButton>

#include "platform/questions.h"

namespace veldra {

/// What to do with faces of a type that nobody knows. Closing it without an answer aborts.
class CUnknownFaceDialog : public QDialog {
  Q_OBJECT

 public:
  CUnknownFaceDialog(uint32_t type, QWidget* parent);
  SUnknownFaceAnswer Answer() const;

 private:
  QRadioButton* ignore_;
  QRadioButton* abort_;
  QRadioButton* change_;
  QComboBox* types_;
};

}  // namespace veldra

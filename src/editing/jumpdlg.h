#pragma once

#include <QRadioButton>

#include "editing/editcursor.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which face or vertex is to be the current one; -1 is none.
class CJumpDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CJumpDialog(const CEditCursor& cursor, EGroupKind last, QWidget* parent);
  // Once accepted.
  EGroupKind Kind() const;
  int32_t Index() const;

 private:
  void ShowKind();

  const CEditCursor& cursor_;
  QRadioButton* faces_;
  QRadioButton* vertices_;
  CNumberField* number_;
  QLabel* range_;
};

}  // namespace veldra

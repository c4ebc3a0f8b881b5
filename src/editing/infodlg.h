#pragma once

#include <QDialog>
#include <QPlainTextEdit>

#include "editing/editcursor.h"

namespace veldra {

/// The model information text, with the details of the current face and vertex.
class CInfoDialog : public QDialog {
  Q_OBJECT

 public:
  CInfoDialog(const CEditCursor& cursor, QWidget* parent);
};

/// Where that text is shown: the numbers of its first lines stand below one another.
QPlainTextEdit* MakeInfoText();

}  // namespace veldra

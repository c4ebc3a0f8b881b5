#pragma once

#include <QDialog>

#include "platform/questions.h"
#include "settings/settings.h"

namespace veldra {

/// All keyboard commands: as a list, and as a sheet to print.
class CKeyboardDialog : public QDialog {
  Q_OBJECT

 public:
  /// SETTINGS keep its place and the list's columns.
  CKeyboardDialog(CSettings& settings, CQuestions& questions, QWidget* parent);
};

}  // namespace veldra

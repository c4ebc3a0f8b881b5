#pragma once

#include <QDialog>
#include <vector>

#include "platform/questions.h"
#include "settings/settings.h"
#include "view/keyboardtable.h"

namespace veldra {

/// All keyboard commands: as a list, and as a sheet to print; and what the mouse does.
class CKeyboardDialog : public QDialog {
  Q_OBJECT

 public:
  /// SETTINGS keep its place and the list's columns. OTHER_KEYS: those that the program has beside the list's, on a
  /// page of their own.
  CKeyboardDialog(CSettings& settings, CQuestions& questions, const std::vector<SKeyRow>& other_keys, QWidget* parent);
};

}  // namespace veldra

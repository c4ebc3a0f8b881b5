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
  /// What exec gives when the user wants to change keys.
  static constexpr int kChangeKeys = 2;

  /// SETTINGS keep its place and the list's columns. KEYS that are not the list's have a page of their own.
  CKeyboardDialog(CSettings& settings, CQuestions& questions, const SKeyTexts& keys, QWidget* parent);
};

}  // namespace veldra

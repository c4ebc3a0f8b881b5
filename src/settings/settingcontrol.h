#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "settings/settings.h"
#include "ui/numberfield.h"

namespace veldra {

/// The control with which a user changes one setting. Its value is the text that stands in the settings file.
struct SSettingControl {
  const SSettingRow* row = nullptr;
  QWidget* box = nullptr;          ///< the control with what the setting means
  CNumberField* number = nullptr;  ///< null for what cannot be wrong
  std::function<std::string()> text = {};
  std::function<void(const std::string&)> set_text = {};
};

/// The one that fits ROW, with its default in it. CHANGED is called when the user or SET_TEXT changes the value.
SSettingControl MakeSettingControl(const SSettingRow& row, const std::function<void()>& changed);

}  // namespace veldra

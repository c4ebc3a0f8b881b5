#pragma once

#include <QMainWindow>

#include "settings/settings.h"

namespace veldra {

/// Puts WINDOW where SETTINGS remember it, on the screen as PutAt has it, or in the middle of the screen at its usual
/// size, as far as there is room, when they do not.
void RestoreWindowPlace(QMainWindow& window, const CSettings& settings);

/// Remembers where WINDOW stands, if the settings want that.
void RememberWindowPlace(const QMainWindow& window, CSettings& settings);

}  // namespace veldra

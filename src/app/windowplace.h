#pragma once

#include <QMainWindow>

#include "settings/settings.h"

namespace veldra {

/// Puts WINDOW where SETTINGS remember it, or in the middle of the screen at its usual size when they do not, or when
/// that place lies on no screen.
void RestoreWindowPlace(QMainWindow& window, const CSettings& settings);

/// Remembers where WINDOW stands, if the settings want that.
void RememberWindowPlace(const QMainWindow& window, CSettings& settings);

}  // namespace veldra

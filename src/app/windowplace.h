#pragma once

#include <QMainWindow>

#include "settings/settings.h"

namespace veldra {

/// Puts WINDOW where SETTINGS remember it, on the screen as PutAt has it, or in the middle of the screen at its usual
/// size, as far as there is room, when they do not.
void RestoreWindowPlace(QMainWindow& window, const CSettings& settings);
/// Makes WINDOW as large as the screen if it was so. To call after the state of its docks is restored: what the toolkit
/// keeps of a state for a window that is about to grow, Qt 6.4 uses after it is gone.
void MaximizeAsBefore(QMainWindow& window, const CSettings& settings);

/// Remembers where WINDOW stands, if the settings want that.
void RememberWindowPlace(const QMainWindow& window, CSettings& settings);

}  // namespace veldra

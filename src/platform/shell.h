#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the desktop shows of a program besides its windows. Where a desktop has no such thing, nothing happens.
namespace veldra {

/// The number by which the system knows a window (QWidget::winId).
using WindowId = uintptr_t;

/// How far a long operation is, 0 to 1, on the window's button in the task bar. Below 0: none is under way.
void ShowTaskbarProgress(WindowId window, double part);

/// The files that were open last, the latest first, in the menu of the program's button in the task bar. False when the
/// desktop has no such menu or refuses.
bool ListRecentInTaskbar(const std::vector<std::string>& paths);

/// While the session waits for an answer: why WINDOW holds up its end. Empty: it no longer does.
void ExplainDelay(WindowId window, const std::string& reason);

/// True where the user wants programs dark and the window toolkit does not see to that by itself.
bool WantsDarkWindows();

/// A program without a console of its own writes its messages into the one that it was started from, if any.
void UseStartingConsole();

}  // namespace veldra

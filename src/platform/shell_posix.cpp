#include "platform/shell.h"

// The desktops here tell the toolkit of their colours, keep recent files by themselves and wait for an answer.
namespace veldra {

void ShowTaskbarProgress(WindowId, double) {}

bool ListRecentInTaskbar(const std::vector<std::string>&) {
  return false;
}

void ExplainDelay(WindowId, const std::string&) {}

bool WantsDarkWindows() {
  return false;
}

void UseStartingConsole() {}

}  // namespace veldra

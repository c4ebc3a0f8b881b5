#pragma once

#include <optional>
#include <string>

#include "platform/questions.h"
#include "platform/shell.h"

namespace veldra {

/// The system's own dialog for files to open, where it has one that takes a check box and a note; the dialogs of the
/// window toolkit have no place for these.
class CSystemOpenDialog {
 public:
  /// PROMPT without a picture; OWNER is the window in front; FOLDER where it opens, "" for where the system likes.
  CSystemOpenDialog(const SFilePrompt& prompt, WindowId owner, const std::string& folder)
      : prompt_(prompt), owner_(owner), folder_(folder) {}

  /// False when there is no such dialog here: nothing was asked.
  static bool IsThere();
  /// Runs it. Nothing when the user cancels.
  std::optional<SOpenFiles> Ask(bool several) const;

 private:
  // Unused where there is no such dialog.
  [[maybe_unused]] const SFilePrompt& prompt_;
  [[maybe_unused]] WindowId owner_;
  [[maybe_unused]] const std::string& folder_;
};

}  // namespace veldra

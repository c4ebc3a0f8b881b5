#pragma once

#include <QProcess>

namespace veldra::testing {

/// A window manager that draws frames about the windows and keeps owned ones in front, on a display that has none; as
/// long as this lives.
class CWindowManager {
 public:
  CWindowManager();
  ~CWindowManager();
  CWindowManager(const CWindowManager&) = delete;
  CWindowManager& operator=(const CWindowManager&) = delete;

  /// False when none could be started.
  bool IsThere() const { return is_there_; }

 private:
  QProcess process_;
  bool is_there_ = false;
};

}  // namespace veldra::testing

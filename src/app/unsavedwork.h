#pragma once

#include <QObject>
#include <QSessionManager>
#include <QTimer>
#include <vector>

#include "document/recovery.h"

namespace veldra {

class CMainFrame;

/// Sees to it that unsaved work outlives the program however it ends: has the recovery copies written while it runs and
/// offered when it starts, and answers the end of the desktop session and the system's signals to quit.
class CUnsavedWork : public QObject {
  Q_OBJECT

 public:
  explicit CUnsavedWork(CMainFrame& frame);

  /// Offers what programs that died have left, if anything. To be called once the window is there.
  void OfferLeftovers();
  /// What the session's end asks for: with CAN_ASK the question about each unsaved document, else copies at once. False
  /// when the user wants to stay.
  bool PrepareForSessionEnd(bool can_ask);

 private:
  void Tick();
  void OnCommitData(QSessionManager& manager);
  void FollowSignals();
  void Recover(const std::vector<SLeftover>& leftovers, const std::vector<size_t>& chosen);
  bool Discard(const std::vector<SLeftover>& leftovers, const std::vector<size_t>& chosen);

  CMainFrame& frame_;
  QTimer timer_;
};

}  // namespace veldra

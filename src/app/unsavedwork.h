#pragma once

#include <QObject>
#include <QSessionManager>
#include <QTimer>

namespace veldra {

class CMainFrame;

/// Sees to it that unsaved work outlives the program however it ends: has the recovery copies written while it runs,
/// and answers the end of the desktop session and the system's signals to quit.
class CUnsavedWork : public QObject {
  Q_OBJECT

 public:
  explicit CUnsavedWork(CMainFrame& frame);

  /// What the session's end asks for: with CAN_ASK the question about each unsaved document, else copies at once. False
  /// when the user wants to stay.
  bool PrepareForSessionEnd(bool can_ask);

 private:
  void Tick();
  void OnCommitData(QSessionManager& manager);
  void FollowSignals();

  CMainFrame& frame_;
  QTimer timer_;
};

}  // namespace veldra

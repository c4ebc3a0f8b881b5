#pragma once

#include <QStringList>

#include "app/mainfrm.h"

namespace veldra {

/// Opens FILES in FRAME, waits until the active model was drawn and saves a picture of the whole window as PICTURE (a
/// PNG file). Without files the picture is of the empty window. With COMMANDS (names of the command table) each is
/// carried out first, and when one has opened a window the picture is of that. Ends the event loop with exit code 0, or
/// with 1 and a message on standard error when a file could not be opened or nothing was drawn within DEADLINE
/// milliseconds.
class CWindowPicture : public QObject {
  Q_OBJECT

 public:
  static constexpr int kDeadlineMs = 60000;

  CWindowPicture(CMainFrame& frame, const QStringList& files, const QString& picture, const QStringList& commands = {},
                 int deadline_ms = kDeadlineMs);

 private:
  void OpenFiles();
  void WaitForView(CTarnView& view);
  void RunCommands();
  void Take();
  void Fail(const QString& reason);

  CMainFrame& frame_;
  QStringList files_;
  QString picture_;
  QStringList commands_;
};

}  // namespace veldra

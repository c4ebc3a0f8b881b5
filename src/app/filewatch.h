#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include "app/documentwindows.h"

namespace veldra {

/// Notices that the file of an open document has changed or is gone, and tells the user, once for each change. Looks
/// when the system reports something and when the user comes back to the program; asks only while the program is in
/// front and no dialog is open.
class CFileWatch : public QObject {
  Q_OBJECT

 public:
  CFileWatch(CDocumentWindows& windows, QObject* parent);

 private:
  void Follow();
  void LookSoon() { settle_.start(); }
  void Look();
  void LookAt(CTarnDoc& document);

  CDocumentWindows& windows_;
  QFileSystemWatcher watcher_;
  QTimer settle_;
  bool is_asking_ = false;
};

}  // namespace veldra

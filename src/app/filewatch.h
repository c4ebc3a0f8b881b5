#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include "app/documentwindows.h"
#include "app/tarn2.h"

namespace veldra {

/// Notices that another program has changed the file of an open document, and offers to read it anew, once for each
/// change. Looks when the system reports something and when the user comes back to the program; asks only while the
/// program is in front and no dialog is open.
class CFileWatch : public QObject {
  Q_OBJECT

 public:
  CFileWatch(CTarn2App& app, CDocumentWindows& windows, QObject* parent);

 private:
  void Follow();
  void LookSoon() { settle_.start(); }
  void Look();
  void Offer(CTarnDoc& document);

  CTarn2App& app_;
  CDocumentWindows& windows_;
  QFileSystemWatcher watcher_;
  QTimer settle_;
  bool is_asking_ = false;
};

}  // namespace veldra

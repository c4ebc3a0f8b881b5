#pragma once

#include <QFileSystemWatcher>
#include <QTimer>
#include <functional>

#include "document/filedocument.h"

namespace veldra {

/// Notices that the file of an open document has changed or is gone, and tells the user, once for each change; likewise
/// files of other kinds. Looks
/// when the system reports something and when the user comes back to the program; asks only while the program is in
/// front and no dialog is open.
class CFileWatch : public QObject {
  Q_OBJECT

 public:
  /// What is watched: the open documents, and how one comes to the front.
  struct SWatched {
    std::function<QList<CFileDocument*>()> documents;
    std::function<void(const CFileDocument& document)> show;
    /// Further files, and what looks at them; it asks nothing.
    std::function<std::vector<std::string>()> others;
    std::function<void()> look_at_others;
  };
  CFileWatch(SWatched watched, QObject* parent);
  /// To be called when other documents are open, or files have other names.
  void Follow();

 private:
  void LookSoon() { settle_.start(); }
  void Look();
  void LookAt(CFileDocument& document);

  SWatched watched_;
  QFileSystemWatcher watcher_;
  QTimer settle_;
  bool is_asking_ = false;
};

}  // namespace veldra

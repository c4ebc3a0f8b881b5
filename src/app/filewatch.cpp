#include "app/filewatch.h"

#include <QApplication>

#include "document/filenews.h"
#include "model/binfile.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// Who writes a file does so in several steps.
constexpr int kSettleMs = 300;

/// The files of the documents, and their folders, in which a file that was replaced appears.
QStringList WatchedPaths(const QList<CTarnDoc*>& documents) {
  QStringList paths;
  for (const CTarnDoc* document : documents) {
    if (document->Path().empty()) continue;
    for (const std::string& path : {document->Path(), InfoPath(document->Path()), DirectoryPart(document->Path())})
      if (FileExists(path)) paths.append(ToQString(path));
  }
  paths.removeDuplicates();
  return paths;
}

}  // namespace

CFileWatch::CFileWatch(CDocumentWindows& windows, QObject* parent) : QObject(parent), windows_(windows) {
  settle_.setSingleShot(true);
  settle_.setInterval(kSettleMs);
  connect(&settle_, &QTimer::timeout, this, &CFileWatch::Look);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &CFileWatch::LookSoon);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &CFileWatch::LookSoon);
  connect(&windows_, &CDocumentWindows::DocumentsChanged, this, &CFileWatch::Follow);
  connect(qApp, &QGuiApplication::applicationStateChanged, this, &CFileWatch::LookSoon);
}

void CFileWatch::Follow() {
  const QStringList wanted = WatchedPaths(windows_.Documents());
  const QStringList watched = watcher_.files() + watcher_.directories();
  for (const QString& path : watched)
    if (!wanted.contains(path)) watcher_.removePath(path);
  for (const QString& path : wanted)
    if (!watched.contains(path)) watcher_.addPath(path);
}

void CFileWatch::Look() {
  if (is_asking_ || QGuiApplication::applicationState() != Qt::ApplicationActive) return;
  if (QApplication::activeModalWidget() != nullptr) {
    LookSoon();
    return;
  }
  // A file that was replaced is no longer the one that is watched.
  Follow();
  is_asking_ = true;
  for (CTarnDoc* document : windows_.Documents()) {
    // While a question is open, windows may close.
    if (windows_.Documents().contains(document)) LookAt(*document);
  }
  is_asking_ = false;
}

void CFileWatch::LookAt(CTarnDoc& document) {
  // On its way to the disk, or from there.
  if (document.Model().IsBusy()) {
    LookSoon();
    return;
  }
  const EFileNews news = TakeFileNews(document);
  if (news == EFileNews::kNone) return;
  if (!IsSettledQuietly(document, news)) windows_.Activate(document);
  SettleFileNews(document, news);
}

}  // namespace veldra

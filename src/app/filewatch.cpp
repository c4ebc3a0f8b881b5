#include "app/filewatch.h"

#include <QApplication>
#include <utility>

#include "document/filenews.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// Who writes a file does so in several steps.
constexpr int kSettleMs = 300;

/// The files of the documents, and their folders, in which a file that was replaced appears.
QStringList WatchedPaths(const QList<CFileDocument*>& documents, const std::vector<std::string>& others) {
  QStringList paths;
  for (const std::string& path : others)
    paths << ToQString(path) << ToQString(DirectoryPart(path));
  for (const CFileDocument* document : documents) {
    std::vector<std::string> files = document->FilesOf(document->Path());
    if (!files.empty()) files.push_back(DirectoryPart(document->Path()));
    for (const std::string& path : files)
      if (FileExists(path)) paths.append(ToQString(path));
  }
  paths.removeDuplicates();
  return paths;
}

}  // namespace

CFileWatch::CFileWatch(SWatched watched, QObject* parent) : QObject(parent), watched_(std::move(watched)) {
  settle_.setSingleShot(true);
  settle_.setInterval(kSettleMs);
  connect(&settle_, &QTimer::timeout, this, &CFileWatch::Look);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &CFileWatch::LookSoon);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &CFileWatch::LookSoon);
  connect(qApp, &QGuiApplication::applicationStateChanged, this, &CFileWatch::LookSoon);
}

void CFileWatch::Follow() {
  const QStringList wanted = WatchedPaths(watched_.documents(), watched_.others());
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
  for (CFileDocument* document : watched_.documents()) {
    // While a question is open, windows may close.
    if (watched_.documents().contains(document)) LookAt(*document);
  }
  is_asking_ = false;
  watched_.look_at_others();
}

void CFileWatch::LookAt(CFileDocument& document) {
  // On its way to the disk, or from there.
  if (document.IsBusy()) {
    LookSoon();
    return;
  }
  const EFileNews news = TakeFileNews(document);
  if (news == EFileNews::kNone) return;
  if (!IsSettledQuietly(document, news)) watched_.show(document);
  SettleFileNews(document, news);
}

}  // namespace veldra

#include "app/windowpicture.h"

#include <QApplication>
#include <QBuffer>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

#include "platform/files.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// After the first frame, for layouts and status texts that follow from it.
constexpr int kSettleMs = 150;
/// For a window that a command opens.
constexpr int kCommandMs = 700;

}  // namespace

CWindowPicture::CWindowPicture(CMainFrame& frame, const QStringList& files, const QString& picture,
                               const QStringList& commands, int deadline_ms)
    : frame_(frame), files_(files), picture_(picture), commands_(commands) {
  QTimer::singleShot(deadline_ms, this, [this, deadline_ms] {
    Fail(tr("nothing was drawn within %1 seconds").arg(deadline_ms / 1000.0));
  });
  QTimer::singleShot(0, this, [this] { OpenFiles(); });
}

void CWindowPicture::OpenFiles() {
  for (const QString& file : files_) {
    if (!frame_.OpenFile(file.toStdString())) {
      Fail(tr("%1 could not be opened").arg(file));
      return;
    }
  }
  if (frame_.ActiveView() != nullptr) {
    WaitForView(*frame_.ActiveView());
  } else {
    QTimer::singleShot(kSettleMs, this, [this] { RunCommands(); });
  }
}

void CWindowPicture::WaitForView(CTarnView& view) {
  connect(&view, &CTarnView::DrawingFailed, this, [this, &view] { Fail(view.Fault()); });
  const auto settle = [this] { QTimer::singleShot(kSettleMs, this, [this] { RunCommands(); }); };
  connect(&view, &CTarnView::FirstFrameDrawn, this, settle);
  if (view.HasDrawn()) settle();
}

/// A command may open a dialog and come back only when that is closed, so what follows is under way before.
void CWindowPicture::RunCommands() {
  QTimer::singleShot(commands_.isEmpty() ? 0 : kCommandMs, this,
                     [this] { commands_.isEmpty() ? Take() : RunCommands(); });
  if (commands_.isEmpty()) return;
  auto* action = frame_.findChild<QAction*>(commands_.takeFirst());
  if (action != nullptr) action->trigger();
}

void CWindowPicture::Take() {
  // On a busy machine the layouts that follow from the last texts are still to come.
  QCoreApplication::sendPostedEvents();
  QWidget* top = QApplication::activeModalWidget();
  if (top == nullptr) top = QApplication::activeWindow();
  QByteArray png;
  QBuffer buffer(&png);
  if (!(top != nullptr ? top : &frame_)->grab().save(&buffer, "PNG")) {
    Fail(tr("the picture could not be made"));
    return;
  }
  SError error;
  const std::string_view bytes(png.constData(), static_cast<size_t>(png.size()));
  if (!ReplaceFile(picture_.toStdString(), bytes, &error)) {
    Fail(picture_ + ": " + ToQString(error.what));
    return;
  }
  QApplication::exit(0);
}

void CWindowPicture::Fail(const QString& reason) {
  std::fprintf(stderr, "veldra: %s\n", DisplayText(reason.toStdString()).c_str());
  QApplication::exit(1);
}

}  // namespace veldra

#include <QApplication>
#include <QOpenGLContext>
#include <QTimer>
#include <cstdlib>
#include <memory>

#include "app/commandicons.h"
#include "app/mainfrm.h"
#include "app/printedquestions.h"
#include "app/programoptions.h"
#include "app/qtquestions.h"
#include "app/startup.h"
#include "app/windowpicture.h"
#include "platform/files.h"

namespace {

using namespace veldra;

void NameProgram() {
  QCoreApplication::setApplicationName("veldra");
  QCoreApplication::setApplicationVersion(VELDRA_VERSION);
}

/// Qt itself falls over when a window with an OpenGL view comes to be drawn where there is no OpenGL at all.
bool HasOpenGl() {
  QOpenGLContext probe;
  return probe.create();
}

/// Until the main window closes. What runs first in the event loop opens the files.
int RunWindow(CTarn2App& app, CQtQuestions& dialogs, const SProgramOptions& options) {
  CMainFrame frame(app);
  dialogs.SetParent(&frame);
  frame.show();
  QGuiApplication::setQuitOnLastWindowClosed(true);
  std::unique_ptr<CWindowPicture> picture;
  if (!options.picture.isEmpty()) {
    picture = std::make_unique<CWindowPicture>(frame, options.files, options.picture);
  } else {
    QTimer::singleShot(0, &frame, [&] {
      for (const QString& file : options.files)
        frame.OpenFile(file.toStdString());
    });
  }
  return QApplication::exec();
}

int Run(const SProgramOptions& options) {
  CQtQuestions dialogs;
  CPrintedQuestions printed;
  CQuestions& questions = options.picture.isEmpty() ? static_cast<CQuestions&>(dialogs) : printed;
  // The dialogs of start-up close before there is a main window, which is no reason to quit.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  auto startup = StartUp(CurrentDirectory(), questions);
  if (!startup) return kExitWithoutPalette;
  if (!HasOpenGl()) {
    questions.Message({.text = "Veldra needs OpenGL, which this system does not offer.",
                       .caption = kErrorCaption,
                       .icon = EIcon::kError,
                       .details = "Installing the graphics card's driver usually helps."});
    return EXIT_FAILURE;
  }
  CTarn2App app(std::move(*startup), questions);
  const int exit_code = RunWindow(app, dialogs, options);
  app.SaveSettings();
  return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  NameProgram();
  if (AsksForTextOnly(argc, argv)) {
    const QCoreApplication application(argc, argv);
    ParseProgramOptions(application);
    return 0;
  }
  const QApplication application(argc, argv);
  QApplication::setWindowIcon(ProgramIcon());
  return Run(ParseProgramOptions(application));
}

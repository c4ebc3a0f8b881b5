#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <memory>

#include "app/application.h"
#include "app/mainfrm.h"
#include "app/openglcheck.h"
#include "app/printedquestions.h"
#include "app/programoptions.h"
#include "app/qtquestions.h"
#include "app/recoveryoffer.h"
#include "app/startup.h"
#include "app/unsavedwork.h"
#include "app/windowpicture.h"
#include "platform/endsignals.h"
#include "platform/files.h"
#include "ui/commandicons.h"
#include "ui/faultlabel.h"
#include "ui/screenplace.h"

namespace {

using namespace veldra;

void NameProgram() {
  QCoreApplication::setApplicationName("veldra");
  QCoreApplication::setApplicationVersion(VELDRA_VERSION);
}

bool IsAttended(const SProgramOptions& options) {
  return options.picture.isEmpty() && !options.quit_when_drawn;
}

void OpenFiles(CMainFrame& frame, const SProgramOptions& options) {
  for (const QString& file : options.files)
    frame.OpenFile(file.toStdString(), options.read_only);
  OfferLeftovers(frame.App(), frame.Windows(), frame.Tools(), &frame);
}

/// For measuring: opens the files and ends the program, without more ado, once the active one is on the screen.
void QuitWhenDrawn(CMainFrame& frame, const SProgramOptions& options) {
  for (const QString& file : options.files)
    frame.OpenFile(file.toStdString(), options.read_only);
  const CTarnView* view = frame.ActiveView();
  if (view == nullptr || !view->Fault().isEmpty()) std::_Exit(EXIT_FAILURE);
  QObject::connect(view, &CTarnView::DrawingFailed, [] { std::_Exit(EXIT_FAILURE); });
  QObject::connect(view, &CTarnView::frameSwapped, [view] {
    if (view->HasDrawn()) std::_Exit(EXIT_SUCCESS);
  });
}

/// Until the main window closes. What runs first in the event loop opens the files.
int RunWindow(CApplication& program, CTarn2App& app, CQtQuestions& dialogs, const SProgramOptions& options) {
  CMainFrame frame(app);
  dialogs.SetParent(&frame);
  const CUnsavedWork unsaved(frame);
  program.SetOutOfMemory([&frame] { frame.TellOutOfMemory(); });
  frame.show();
  QGuiApplication::setQuitOnLastWindowClosed(true);
  std::unique_ptr<CWindowPicture> picture;
  if (!options.picture.isEmpty()) {
    picture = std::make_unique<CWindowPicture>(frame, options.files, options.picture, options.commands);
  } else {
    QTimer::singleShot(0, &frame,
                       [&] { options.quit_when_drawn ? QuitWhenDrawn(frame, options) : OpenFiles(frame, options); });
  }
  const int exit_code = QApplication::exec();
  // What the commands before a picture have changed is nobody's work.
  if (picture != nullptr)
    for (CTarnDoc* document : frame.Windows().Documents())
      app.LetGo(*document);
  program.SetOutOfMemory({});
  dialogs.SetParent(nullptr);
  return exit_code;
}

int Run(CApplication& program, const SProgramOptions& options) {
  CQtQuestions dialogs;
  CPrintedQuestions printed;
  CQuestions& questions = IsAttended(options) ? static_cast<CQuestions&>(dialogs) : printed;
  // The dialogs of start-up close before there is a main window, which is no reason to quit.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  auto startup = StartUp(CurrentDirectory(), questions);
  if (!startup) return kExitWithoutPalette;
  const EOpenGl opengl = CheckOpenGl();
  if (opengl == EOpenGl::kNone) {
    questions.Message({.text = "Veldra needs OpenGL, which this system does not offer.",
                       .caption = kErrorCaption,
                       .icon = EIcon::kError,
                       .details = "Installing the graphics card's driver usually helps."});
    return EXIT_FAILURE;
  }
  // A picture is worth the wait.
  if (opengl == EOpenGl::kSoftware && options.picture.isEmpty()) CTarnView::SetSamples(0);
  CTarn2App app(std::move(*startup), questions);
  const int exit_code = RunWindow(program, app, dialogs, options);
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
  // Views keep what they have drawn when their window becomes part of another, and none is drawn before it has its
  // size.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  int exit_code = 0;
  {
    CApplication application(argc, argv);
    QApplication::setWindowIcon(ProgramIcon());
    MakePlaceholdersReadable();
    new CScreenFit(application);
    exit_code = Run(application, ParseProgramOptions(application));
  }
  EndByReportedSignal();
  return exit_code;
}

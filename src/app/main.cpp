#include <QApplication>
#include <QIcon>
#include <QSettings>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include "app/application.h"
#include "app/mainfrm.h"
#include "app/openglcheck.h"
#include "app/printedquestions.h"
#include "app/programoptions.h"
#include "app/qtquestions.h"
#include "app/recoveryoffer.h"
#include "app/setupdlg.h"
#include "app/startup.h"
#include "app/unsavedwork.h"
#include "app/windowpicture.h"
#include "platform/assert.h"
#include "platform/crashreport.h"
#include "platform/endsignals.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "platform/text.h"
#include "platform/userfolders.h"
#include "settings/coptools.h"
#include "ui/commandicons.h"
#include "ui/faultlabel.h"
#include "ui/screenplace.h"

namespace {

using namespace veldra;

void NameProgram() {
  QCoreApplication::setApplicationName("veldra");
  QCoreApplication::setApplicationVersion(VELDRA_VERSION);
}

std::string CrashFolder() {
  return JoinPath(UserDataDirectory(), "recovery");
}

void WatchForCrashes() {
  ReportCrashes(CrashFolder(), "Veldra " VELDRA_VERSION);
  SetAssertHandler([](const char* condition, const char* file, int line) {
    const std::string text = Format("%s:%d: assertion failed: %s\n", file, line, condition);
    NoteReasonForCrash(text);
    std::fputs(text.c_str(), stderr);
    std::abort();
  });
}

void TellOfCrashes(CQuestions& questions) {
  const std::vector<std::string> reports = TakeNewCrashReports(CrashFolder());
  if (reports.empty()) return;
  std::string details;
  for (const std::string& report : reports)
    details += report + "\n";
  questions.Message({.text = "Veldra has crashed. A report of it is here:",
                     .icon = EIcon::kWarning,
                     .details = details + "\nIt tells what was open, the last commands and where the program was. "
                                          "Nothing has been sent anywhere."});
}

/// Where the toolkit leaves windows light unless told otherwise. Its look of the system's own has no dark side.
void FollowDarkDesktop() {
  if (!WantsDarkWindows() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return;
  qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
  QApplication::setStyle(QStringLiteral("fusion"));
}

void KeepWindowsWithTheRest() {
  const std::string carried = CarriedDirectory();
  if (!carried.empty()) QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(carried));
}

bool IsAttended(const SProgramOptions& options) {
  return options.picture.isEmpty() && !options.quit_when_drawn;
}

void OpenFiles(CMainFrame& frame, const SProgramOptions& options) {
  for (const QString& file : options.files)
    frame.OpenFile(file.toStdString(), options.read_only);
  const std::string& first = frame.App().FirstFile();
  if (options.files.isEmpty() && !first.empty()) frame.OpenFile(first);
  frame.ShowWelcome();
  TellOfCrashes(frame.App().Questions());
  OfferLeftovers(frame.App(), frame.Windows(), frame.Tools(), &frame);
}

/// Nobody is there to be asked, and nothing is decided.
void GoWithoutSettings(SStartup& startup) {
  startup.settings.defpal.clear();
  startup.keeps_settings = false;
}

/// The page where the user says where the game is. Later: there is none for now.
void AskWhereThingsAre(SStartup& startup, const QStringList& files, CQuestions& questions) {
  std::vector<std::string> paths;
  for (const QString& file : files)
    paths.push_back(file.toStdString());
  CSetUpDialog dialog(CSetUpDialog::EOccasion::kFirstStart, ProposeSetUp(paths));
  const SSetUp choice = dialog.exec() == QDialog::Accepted ? dialog.Choice() : SSetUp();
  ApplySetUp(choice, DirectoryPart(startup.settings_path), startup.settings, questions, &startup.first_file);
}

std::string SettingsFile(const SProgramOptions& options) {
  if (options.settings_file.isEmpty()) return CopTools::SettingsPath(CurrentDirectory());
  return AbsolutePath(options.settings_file.toStdString());
}

/// For measuring: opens the files and ends the program, without more ado, once the active one is on the screen.
void QuitWhenDrawn(CMainFrame& frame, const SProgramOptions& options) {
  for (const QString& file : options.files)
    frame.OpenFile(file.toStdString(), options.read_only);
  const CTarnView* view = frame.ActiveView();
  if (view == nullptr || !view->Fault().isEmpty()) std::_Exit(EXIT_FAILURE);
  QObject::connect(view, &CTarnView::DrawingFailed, [] { std::_Exit(EXIT_FAILURE); });
  QObject::connect(view, &CTarnView::FrameShown, [view] {
    if (view->HasDrawn()) std::_Exit(EXIT_SUCCESS);
  });
}

/// Until the main window closes. What runs first in the event loop opens the files.
/// While it lives the toolkit draws its small standard pictures (a dock's close button, a field's clear button) itself.
/// It would look for each in all folders of the system's icon themes: a tenth of the time that a start takes.
class CStartWithoutIconThemes {
 public:
  CStartWithoutIconThemes() { QIcon::setThemeSearchPaths({QStringLiteral(":/icons")}); }
  ~CStartWithoutIconThemes() { QIcon::setThemeSearchPaths(paths_); }
  CStartWithoutIconThemes(const CStartWithoutIconThemes&) = delete;
  CStartWithoutIconThemes& operator=(const CStartWithoutIconThemes&) = delete;

 private:
  QStringList paths_ = QIcon::themeSearchPaths();
};

int RunWindow(CApplication& program, CTarn2App& app, CQtQuestions& dialogs, const SProgramOptions& options) {
  std::optional<CStartWithoutIconThemes> starts(std::in_place);
  CMainFrame frame(app);
  dialogs.SetParent(&frame);
  const CUnsavedWork unsaved(frame);
  program.SetOutOfMemory([&frame] { frame.TellOutOfMemory(); });
  if (options.files.isEmpty() && app.FirstFile().empty()) frame.ShowWelcome();
  frame.show();
  QGuiApplication::setQuitOnLastWindowClosed(true);
  std::unique_ptr<CWindowPicture> picture;
  if (!options.picture.isEmpty()) {
    picture = std::make_unique<CWindowPicture>(frame, options.files, options.picture, options.commands);
  } else {
    QTimer::singleShot(0, &frame, [&] {
      options.quit_when_drawn ? QuitWhenDrawn(frame, options) : OpenFiles(frame, options);
      starts.reset();
    });
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

/// How the 3D views are drawn on this system.
void ChooseDrawing(const SProgramOptions& options, CSettings& settings, CQuestions& questions) {
  const EOpenGl opengl = CheckOpenGl();
  // A picture is worth the wait.
  if (opengl == EOpenGl::kSoftware && options.picture.isEmpty()) CTarnView::SetSamples(0);
  if (opengl != EOpenGl::kTooOld && !options.draw_in_memory) return;
  CGlCanvas::DrawInMemory();
  if (options.draw_in_memory || settings.slow_drawing_msg == 0) return;
  questions.Message(
      {.text =
           "There is no driver of a graphics card here with OpenGL 2.1. The 3D views are drawn without it: all works, "
           "but slower.",
       .details = "Installing the graphics card's driver usually helps. This is said once."});
  if (IsAttended(options)) settings.slow_drawing_msg = 0;
}

int Run(CApplication& program, const SProgramOptions& options) {
  CQtQuestions dialogs;
  CPrintedQuestions printed;
  CQuestions& questions = IsAttended(options) ? static_cast<CQuestions&>(dialogs) : printed;
  // The dialogs of start-up close before there is a main window, which is no reason to quit.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  auto startup = StartUp(SettingsFile(options), questions, [&](SStartup& fresh) {
    IsAttended(options) ? AskWhereThingsAre(fresh, options.files, questions) : GoWithoutSettings(fresh);
  });
  if (!startup) return kExitWithoutPalette;
  ChooseDrawing(options, startup->settings, questions);
  CTarn2App app(std::move(*startup), questions);
  const int exit_code = RunWindow(program, app, dialogs, options);
  app.SaveSettings();
  return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  NameProgram();
  UseStartingConsole();
  WatchForCrashes();
  if (AsksForTextOnly(argc, argv)) {
    const QCoreApplication application(argc, argv);
    ParseProgramOptions(application);
    return 0;
  }
  // Views keep what they have drawn when their window becomes part of another, and none is drawn before it has its
  // size.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  FollowDarkDesktop();
  KeepWindowsWithTheRest();
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

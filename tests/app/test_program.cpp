#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QProcess>

#include "app/editorfixture.h"
#include "app/windowpicture.h"
#include "platform/files.h"
#include "settings/coptools.h"

namespace veldra::testing {

namespace {

struct SRun {
  int exit_code = -1;
  std::string errors;
  std::string output;
};

SRun RunProgram(const CTempFolder& folder, const QStringList& arguments,
                const std::vector<std::pair<QString, QString>>& environment = {}) {
  QProcess process;
  QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
  variables.insert("XDG_CONFIG_HOME", QString::fromStdString(folder.File("config")));
  // Leaks are looked for where the test program itself opens these windows; here unloaded drivers would be reported.
  variables.insert("ASAN_OPTIONS", variables.value("ASAN_OPTIONS") + ":detect_leaks=0");
  for (const auto& [name, value] : environment)
    variables.insert(name, value);
  process.setProcessEnvironment(variables);
  process.setWorkingDirectory(QString::fromStdString(folder.Path()));
  process.start(VELDRA_PROGRAM, arguments);
  EXPECT_TRUE(process.waitForFinished(100000));
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  return {process.exitCode(), process.readAllStandardError().toStdString(),
          process.readAllStandardOutput().toStdString()};
}

/// The view's green ground and the model before it are in the picture of the window.
void ExpectModelIn(const QImage& picture) {
  EXPECT_EQ(picture.size(), QSize(1200, 800));
  int background = 0;
  int model = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor color = picture.pixelColor(x, y);
      background += color == QColor(0, 255, 0) ? 1 : 0;
      model += color.green() < 60 && color.red() + color.blue() > 100 ? 1 : 0;
    }
  }
  EXPECT_GT(background, 100000);
  EXPECT_GT(model, 20000);
}

}  // namespace

TEST_F(CEditorTest, ProgramSavesAPictureOfTheWindowWithTheModelInIt) {
  WriteModel("m.bin", {.unused_vertex = true});
  folder.Write("Veldra.cfg", "DEFPAL " + settings.defpal + "\nARTDIR " + folder.Path() + "\nBACKGRND #00FF00\n");
  const struct {
    QStringList options;
    std::vector<std::pair<QString, QString>> environment;
    const char* said;
  } cases[] = {
      {{}, {}, ""},
      {{"--draw-in-memory"}, {}, ""},
#ifndef _WIN32  // whose window toolkit cannot be told to do without
      {{}, {{"QT_XCB_GL_INTEGRATION", "none"}}, "OpenGL 2.1"},
#endif
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.options.join(' ').toStdString() + row.said);
    const QStringList arguments = {"--save-picture", "out.png", "--command", "deleteUnused", "m.bin"};
    const SRun run = RunProgram(folder, row.options + arguments, row.environment);
    ASSERT_EQ(run.exit_code, 0) << run.errors;
    EXPECT_EQ(run.errors.find("OpenGL 2.1") != std::string::npos, *row.said != '\0') << run.errors;
    ExpectModelIn(QImage(QString::fromStdString(folder.File("out.png"))));
  }
  EXPECT_NE(ReadTestFile(folder.File("Veldra.cfg")).find("RENDERMODE"), std::string::npos);
  // What the command changed is nobody's work.
  EXPECT_TRUE(ListDirectory(folder.File("data/recovery")).empty());
}

TEST_F(CEditorTest, ProgramSaysWhatWentWrong) {
  WriteModel("m.bin");
  folder.Write("broken.bin", std::string_view("\x14\0\0\0cut off", 11));
  const std::string good = "DEFPAL " + settings.defpal + "\nARTDIR " + folder.Path() + "\n";
  const struct {
    QStringList arguments;
    std::string settings_text;
    std::vector<std::pair<QString, QString>> environment;
    int exit_code;
    const char* said;
  } cases[] = {
      {{"--save-picture", "o.png", "missing.bin"}, good, {}, 1, "missing.bin"},
      {{"--save-picture", "o.png", "broken.bin"}, good, {}, 1, "currupt"},
      {{"--save-picture", "no/such/o.png", "m.bin"}, good, {}, 1, "no/such/o.png"},
#ifndef _WIN32  // whose window toolkit cannot be told to do without
      {{"--save-picture", "o.png", "m.bin"},
       good,
       {{"QT_XCB_GL_INTEGRATION", "none"}, {"__EGL_VENDOR_LIBRARY_FILENAMES", "/no/such/file"}},
       1,
       "OpenGL 1.1"},
#endif
      {{"--save-picture", "o.png"}, "DEFPAL nowhere.act\n", {}, 255, "Default Palette not found!"},
      {{"--nonsense"}, good, {}, 1, "nonsense"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.arguments.join(' ').toStdString());
    folder.Write("Veldra.cfg", row.settings_text);
    const SRun run = RunProgram(folder, row.arguments, row.environment);
    EXPECT_EQ(run.exit_code & 0xFF, row.exit_code);  // more is told by some systems only
    EXPECT_NE(run.errors.find(row.said), std::string::npos) << run.errors;
    EXPECT_FALSE(FileExists(folder.File("o.png")));
  }
}

TEST_F(CEditorTest, VersionAndHelpNeedNoDisplay) {
  for (const auto& [option, said] : {std::pair{"--version", "veldra " VELDRA_VERSION}, {"--help", "--save-picture"}}) {
    const SRun run = RunProgram(folder, {option}, {{"DISPLAY", ""}, {"QT_QPA_PLATFORM", "xcb"}});
    EXPECT_EQ(run.exit_code, 0);
    EXPECT_NE(run.output.find(said), std::string::npos) << run.output;
  }
}

TEST_F(CEditorTest, APictureGivesUpWhenNothingIsDrawnInTime) {
  Start();
  const std::string path = WriteModel("m.bin");
  frame->hide();
  const CWindowPicture picture(*frame, {QString::fromStdString(path)}, QString::fromStdString(folder.File("o.png")), {},
                               100);
  EXPECT_EQ(QApplication::exec(), 1);
  EXPECT_FALSE(FileExists(folder.File("o.png")));
}

}  // namespace veldra::testing

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTreeWidget>
#include <QtTest>
#include <csignal>
#include <fstream>
#include <random>

#include "app/editorfixture.h"
#include "app/recoverydlg.h"
#include "app/recoveryoffer.h"
#include "app/unsavedwork.h"
#include "platform/files.h"
#include "platform/userfolders.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

constexpr int kLookMs = 10000;

/// The recovery copies that lie there.
std::vector<std::string> Copies(const CTempFolder& folder) {
  std::vector<std::string> copies;
  const std::string sessions = folder.File("data/recovery");
  for (const std::string& session : ListDirectory(sessions))
    for (const std::string& file : ListDirectory(sessions + "/" + session))
      if (file.ends_with(".copy")) copies.push_back(sessions + "/" + session + "/" + file);
  return copies;
}

/// Leaves what a program leaves that dies with this model unsaved.
void LeaveCopy(const std::string& title, int32_t vertices, const std::string& path = "") {
  CRecoveryFolder dead;
  CBinModel model;
  for (int32_t i = 0; i < vertices; ++i)
    model.AddVertex({i, 0, 0});
  EXPECT_TRUE(dead.Save({.id = 1, .title = title, .path = path}, model));
}

}  // namespace

// --- At the start ----------------------------------------------------------------------------------------------------

TEST_F(CEditorTest, WhatWasLeftUnsavedIsOffered) {
  const std::string path = WriteModel("m.bin");
  LeaveCopy("Untitled 3", 7);
  LeaveCopy("m.bin", 5, path);
  LeaveCopy("unwanted", 2);
  LeaveCopy("broken", 4);
  for (const std::string& file : Copies(folder)) {
    const std::string bytes = ReadTestFile(file);
    if (bytes.find("broken") == std::string::npos) continue;
    EXPECT_TRUE(ReplaceFile(file, bytes.substr(0, 40)));
  }
  Start();
  ASSERT_TRUE(frame->OpenFile(path));  // gives way to what was made of it
  CDialogDriver driver;
  const auto row_of = [](QTreeWidget& list, const QString& title) {
    const auto rows = list.findItems(title, Qt::MatchExactly);
    EXPECT_EQ(rows.size(), 1) << title.toStdString();
    return rows.value(0);
  };
  driver.On("recovery", [&](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "leftovers");
    EXPECT_EQ(list->topLevelItemCount(), 4);
    EXPECT_EQ(row_of(*list, "Untitled 3")->text(2), "7");
    for (const char* kept : {"Untitled 3", "m.bin"})
      row_of(*list, kept)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(row_of(*list, "Damaged copy")->checkState(0), Qt::Unchecked);
    questions.OnYesNo("Discard 1 unsaved document for good?", EAnswer::kYes);
    ClickButton(dialog, "Discard");
  });
  driver.On("recovery", [&](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "leftovers");
    row_of(*list, "Damaged copy")->setCheckState(0, Qt::Checked);
    ClickButton(dialog, "Recover");
  });
  EXPECT_TRUE(OfferLeftovers(*app, frame->Windows(), frame.get()));
  Settle();
  ASSERT_EQ(frame->Children().size(), 2);
  const auto recovered = app->FindDocument(path);
  ASSERT_NE(recovered, nullptr);
  EXPECT_EQ(recovered->Model().VertexCount(), 5);
  EXPECT_TRUE(recovered->IsModified());
  EXPECT_EQ(app->Recovery().Leftovers().size(), 1u);  // the damaged one
}

// --- At the end ------------------------------------------------------------------------------------------------------

TEST_F(CEditorTest, TheEndOfTheSessionAsksOrKeepsCopies) {
  const std::string path = WriteModel("m.bin");
  Start();
  CUnsavedWork unsaved(*frame);
  ASSERT_TRUE(frame->OpenFile(path));
  frame->ActiveDocument()->Model().AddVertex({1, 2, 3});
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kCancel);
  EXPECT_FALSE(unsaved.PrepareForSessionEnd(true));
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  EXPECT_TRUE(unsaved.PrepareForSessionEnd(true));
  EXPECT_EQ(Copies(folder).size(), 0u);
  frame->ActiveDocument()->Model().AddVertex({4, 5, 6});
  EXPECT_TRUE(unsaved.PrepareForSessionEnd(false));
  EXPECT_EQ(Copies(folder).size(), 1u);
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  EXPECT_TRUE(frame->close());
  frame.reset();
  EXPECT_EQ(Copies(folder).size(), 0u);
}

// --- Files that others change ----------------------------------------------------------------------------------------

TEST_F(CEditorTest, AFileChangedByAnotherProgramIsOfferedOnceForEachChange) {
  const std::string path = WriteModel("m.bin");
  Start();
  ASSERT_TRUE(frame->OpenFile(path));
  const auto wait_for = [this](int32_t low) {
    return QTest::qWaitFor([&] { return frame->ActiveDocument()->Model().Bound(0) == low; }, kLookMs);
  };
  questions.OnYesNo("m.bin", EAnswer::kYes);
  WriteModel("m.bin", {.shift_x = 100});
  EXPECT_TRUE(wait_for(-900));

  frame->ActiveDocument()->SetModified(true);
  questions.OnYesNo("lose the changes", EAnswer::kNo);
  WriteModel("m.bin", {.shift_x = 300});
  EXPECT_TRUE(QTest::qWaitFor([this] { return questions.IsDone(); }, kLookMs));
  EXPECT_EQ(frame->ActiveDocument()->Model().Bound(0), -900);
  questions.OnYesNo("lose the changes", EAnswer::kYes);
  Do(ECommand::kFileReload);
  EXPECT_TRUE(wait_for(-700));
  EXPECT_FALSE(frame->ActiveDocument()->IsModified());
}

// --- Programs that die -----------------------------------------------------------------------------------------------

namespace {

constexpr const char* kVictimFolder = "VELDRA_TEST_VICTIM_FOLDER";
constexpr const char* kVictimNumber = "VELDRA_TEST_VICTIM_NUMBER";
constexpr int kSpeed = 50;
constexpr int kIntervalMs = 10000 / kSpeed;
constexpr int kSlackMs = 1500;  ///< a machine that is busy, where each copy takes long and makes the next one wait
constexpr int kEditEveryMs = 15;

/// Starts this test program again as one of the editors that are to die.
class CVictim {
 public:
  CVictim(const CTempFolder& folder, int number) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("VELDRA_RECOVERY_SPEED", QString::number(kSpeed));
    environment.insert(kVictimFolder, QString::fromStdString(folder.Path()));
    environment.insert(kVictimNumber, QString::number(number));
    process_.setProcessEnvironment(environment);
    process_.start(QCoreApplication::applicationFilePath(),
                   {"--gtest_filter=CVictimTest.DISABLED_WorksUntilItIsKilled", "--gtest_also_run_disabled_tests"});
  }
  bool WaitUntilItWorks() {
    return QTest::qWaitFor([this] { return (said_ += process_.readAllStandardOutput()).contains("editing"); }, 30000);
  }
  void End(int signal) {
    kill(static_cast<pid_t>(process_.processId()), signal);
    EXPECT_TRUE(process_.waitForFinished(30000));
  }

 private:
  QProcess process_;
  QByteArray said_;
};

std::string LogName(int victim) {
  return "log" + std::to_string(victim) + ".txt";
}

int64_t NowMs() {
  return QDateTime::currentMSecsSinceEpoch();
}

}  // namespace

/// The editor that is to die: it works on a document of a file and on one without, and writes down when it did what.
class CVictimTest : public CEditorTest {
 protected:
  void Work(const std::string& directory, int32_t number) {
    qputenv("VELDRA_DATA", QByteArray::fromStdString(directory + "/data"));
    Start();
    CUnsavedWork unsaved(*frame);
    EXPECT_TRUE(frame->OpenFile(directory + "/m.bin"));
    frame->Files().New();
    std::ofstream log(directory + "/" + LogName(number));
    int32_t edits = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      ++edits;
      for (CTarnDoc* document : frame->Windows().Documents())
        document->Model().AddVertex({edits, number, 0});
      log << edits << ' ' << NowMs() << std::endl;
      if (edits == 1) std::puts("editing"), std::fflush(stdout);
    });
    timer.start(kEditEveryMs);
    QApplication::exec();
    frame.reset();  // as the program does after a signal
    std::_Exit(0);
  }
};

TEST_F(CVictimTest, DISABLED_WorksUntilItIsKilled) {
  Work(qEnvironmentVariable(kVictimFolder).toStdString(), qEnvironmentVariableIntValue(kVictimNumber));
}

class CKilledEditorTest : public CEditorTest {
 protected:
  /// How many edits were done at TIME.
  int32_t EditsAt(int victim, int64_t time) const {
    std::ifstream log(folder.File(LogName(victim)));
    int32_t edits = 0;
    int32_t edit = 0;
    for (int64_t at = 0; log >> edit >> at && at <= time;)
      edits = edit;
    return edits;
  }
  /// What the next start finds: the victim and the last edit of each document, taken over and let go.
  std::vector<std::pair<int, int32_t>> RecoveredEdits() {
    std::vector<std::pair<int, int32_t>> edits;
    Start();
    for (const SLeftover& leftover : app->Recovery().Leftovers()) {
      EXPECT_EQ(leftover.fault, "");
      const auto document = app->OpenLeftover(leftover);
      if (document == nullptr) continue;
      const CBinModel& model = document->Model();
      const SPoint last = model.Vertex(model.VertexCount() - 1).Position();
      edits.emplace_back(last.y, last.x);
      app->LetGo(*document);
    }
    EXPECT_EQ(app->Recovery().Leftovers().size(), 0u);
    return edits;
  }
};

/// Several at a time, which share all that the program keeps for its user.
TEST_F(CKilledEditorTest, LosesAtMostOneInterval) {
  WriteModel("m.bin");
  std::mt19937 random(static_cast<unsigned>(::testing::UnitTest::GetInstance()->random_seed()));
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    CVictim victims[] = {{folder, 0}, {folder, 1}, {folder, 2}, {folder, 3}};
    int64_t killed[4] = {};
    for (CVictim& victim : victims)
      ASSERT_TRUE(victim.WaitUntilItWorks());
    QTest::qWait(kIntervalMs + kSlackMs);
    for (int i = 0; i < 4; ++i) {
      QTest::qWait(static_cast<int>(random() % 300));
      victims[i].End(SIGKILL);
      killed[i] = NowMs();
    }
    const auto found = RecoveredEdits();
    ASSERT_EQ(found.size(), 8u);
    for (const auto& [victim, edits] : found)
      EXPECT_GE(edits, EditsAt(victim, killed[victim] - kIntervalMs - kSlackMs));
  }
}

TEST_F(CKilledEditorTest, LosesNothingWhenToldToQuit) {
  WriteModel("m.bin");
  for (const int signal : {SIGTERM, SIGHUP}) {
    CVictim victim(folder, 1);
    ASSERT_TRUE(victim.WaitUntilItWorks());
    victim.End(signal);
    const auto found = RecoveredEdits();
    ASSERT_EQ(found.size(), 2u);
    for (const auto& [number, edits] : found)
      EXPECT_EQ(edits, EditsAt(number, NowMs()));
  }
}

}  // namespace veldra::testing

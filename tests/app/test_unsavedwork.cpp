#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTreeWidget>
#include <QtTest>
#include <fstream>
#include <random>

#include "app/editorfixture.h"
#include "app/recoverydlg.h"
#include "app/recoveryoffer.h"
#include "app/unsavedwork.h"
#include "document/modelcopy.h"
#include "platform/files.h"
#include "platform/userfolders.h"
#include "support/childtest.h"
#include "support/dialogdriver.h"
#include "truckeditor/truckdocument.h"

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
  EXPECT_TRUE(dead.Save(1, WriteModelCopy({.title = title, .path = path, .time = PresentTime()}, model)));
}

/// With a truck too.
class CUnsavedWorkTest : public CEditorTest {
 protected:
  CTruckDocument& Truck() { return dynamic_cast<CTruckDocument&>(*frame->Tools().Documents().at(0)); }
  void ChangeTruck(const std::string& name) {
    if (frame->Tools().Documents().isEmpty()) frame->Tools().ShowTruckEditor();
    Truck().Change("", [&](CTruck& truck) { truck.name = name; });
  }
  std::string WriteTruck(const std::string& name) const {
    CTruck truck;
    truck.name = name;
    EXPECT_TRUE(truck.Save(folder.File("t.trk")));
    return folder.File("t.trk");
  }
};

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
  EXPECT_TRUE(OfferLeftovers(*app, frame->Windows(), frame->Tools(), frame.get()));
  Settle();
  ASSERT_EQ(frame->Children().size(), 2);
  const auto recovered = app->FindDocument(path);
  ASSERT_NE(recovered, nullptr);
  EXPECT_EQ(recovered->Model().VertexCount(), 5);
  EXPECT_TRUE(recovered->IsModified());
  EXPECT_EQ(app->Recovery().Leftovers().size(), 1u);  // the damaged one
}

// --- At the end ------------------------------------------------------------------------------------------------------

TEST_F(CUnsavedWorkTest, TheEndOfTheSessionAsksOrKeepsCopies) {
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
  ChangeTruck("One");
  EXPECT_TRUE(unsaved.PrepareForSessionEnd(false));
  EXPECT_EQ(Copies(folder).size(), 2u);
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  questions.OnYesNoCancel("Save changes to Untitled?", EAnswer::kCancel);
  EXPECT_FALSE(unsaved.PrepareForSessionEnd(true));
  questions.OnYesNoCancel("Save changes to m.bin?", EAnswer::kNo);
  questions.OnYesNoCancel("Save changes to Untitled?", EAnswer::kNo);
  EXPECT_TRUE(frame->close());
  frame.reset();
  EXPECT_EQ(Copies(folder).size(), 0u);
}

TEST_F(CUnsavedWorkTest, CopiesAreWrittenWhileOneWorks) {
  Start();
  const CUnsavedWork unsaved(*frame);
  ChangeTruck("One");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Copies(folder).size() == 1; }, 6 * kLookMs));
  Truck().Undo();
  EXPECT_EQ(Copies(folder).size(), 0u) << "nothing is unsaved";
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

TEST_F(CUnsavedWorkTest, ATruckFileChangedByAnotherProgramIsOfferedAgain) {
  const std::string path = WriteTruck("One");
  Start();
  ASSERT_TRUE(frame->OpenFile(path));
  const auto wait_for = [&](const std::string& name) {
    return QTest::qWaitFor([&] { return Truck().Truck().name == name; }, kLookMs);
  };
  questions.OnYesNo("has been changed on the disk.\nLoad it again?", EAnswer::kYes);
  WriteTruck("Longer");
  EXPECT_TRUE(wait_for("Longer"));
  app->Settings().reload_unmodified = 1;
  WriteTruck("Even longer");
  EXPECT_TRUE(wait_for("Even longer"));
  ASSERT_TRUE(RemoveFile(path));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Truck().IsModified(); }, kLookMs));
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1u) << "it is gone";
  EXPECT_TRUE(Truck().Save(path));
  EXPECT_FALSE(Truck().IsModified());
}

// --- Programs that die -----------------------------------------------------------------------------------------------

namespace {

constexpr const char* kVictimFolder = "VELDRA_TEST_VICTIM_FOLDER";
constexpr const char* kVictimNumber = "VELDRA_TEST_VICTIM_NUMBER";
/// An editor's clock goes on by a second with each edit, however long that takes.
constexpr int kEditsAnInterval = 10;
constexpr int kEditEveryMs = 5;

/// Starts this test program again as one of the editors that are to die.
class CVictim {
 public:
  CVictim(const CTempFolder& folder, int number) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kVictimFolder, QString::fromStdString(folder.Path()));
    environment.insert(kVictimNumber, QString::number(number));
    process_.setProcessEnvironment(environment);
    process_.start(QCoreApplication::applicationFilePath(),
                   {"--gtest_filter=CVictimTest.DISABLED_WorksUntilItIsKilled", "--gtest_also_run_disabled_tests"});
  }
  bool WaitUntilItWorks() {
    return QTest::qWaitFor([this] { return (said_ += process_.readAllStandardOutput()).contains("editing"); }, 120000);
  }
  void Kill() {
    process_.kill();
    EXPECT_TRUE(process_.waitForFinished(30000));
  }
  qint64 Process() const { return process_.processId(); }
  bool Ends() { return process_.waitForFinished(30000); }

 private:
  QProcess process_;
  QByteArray said_;
};

std::string LogName(int victim) {
  return "log" + std::to_string(victim) + ".txt";
}

}  // namespace

/// The editor that is to die: it works on a model of a file, on one without and on a truck, and writes down each edit
/// that the recovery copies had the time for.
class CVictimTest : public CUnsavedWorkTest {
 protected:
  void Edit() {
    ++edits_;
    for (CTarnDoc* document : frame->Windows().Documents())
      document->Model().AddVertex({edits_, number_, 0});
    ChangeTruck(std::to_string(edits_) + " " + std::to_string(number_));
  }
  void Work(const std::string& directory) {
    qputenv("VELDRA_DATA", QByteArray::fromStdString(directory + "/data"));
    clock = [this] { return CRecoveryKeeper::Time(std::chrono::seconds(edits_)); };
    Start();
    const CUnsavedWork unsaved(*frame);
    EXPECT_TRUE(frame->OpenFile(directory + "/m.bin"));
    frame->Files().New();
    EXPECT_TRUE(frame->OpenFile(directory + "/t.trk"));
    std::ofstream log(directory + "/" + LogName(number_));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      Edit();
      app->Recovery().Tick();
      log << edits_ << '\n' << std::flush;
      if (edits_ == kEditsAnInterval + 1) std::puts("editing"), std::fflush(stdout);
    });
    timer.start(kEditEveryMs);
    QApplication::exec();
    frame.reset();  // as the program does after a signal
    std::_Exit(0);
  }

  const int32_t number_ = qEnvironmentVariableIntValue(kVictimNumber);
  int32_t edits_ = 0;
};

TEST_F(CVictimTest, DISABLED_WorksUntilItIsKilled) {
  Work(qEnvironmentVariable(kVictimFolder).toStdString());
}

class CKilledEditorTest : public CUnsavedWorkTest {
 protected:
  /// How many edits it is known to have done.
  int32_t EditsOf(int victim) const {
    std::ifstream log(folder.File(LogName(victim)));
    int32_t edits = 0;
    for (int32_t edit = 0; log >> edit;)
      edits = edit;
    return edits;
  }
  /// What the next start finds: the victim and the last edit of each document, taken over and let go.
  std::vector<std::pair<int, int32_t>> RecoveredEdits() {
    Start();
    CDialogDriver driver;
    driver.On("recovery", [](QWidget& dialog) { ClickButton(dialog, "Recover"); });
    EXPECT_TRUE(OfferLeftovers(*app, frame->Windows(), frame->Tools(), frame.get()));
    EXPECT_TRUE(app->Recovery().Leftovers().empty());
    std::vector<std::pair<int, int32_t>> edits;
    for (const CTarnDoc* document : frame->Windows().Documents()) {
      const SPoint last = document->Model().Vertex(document->Model().VertexCount() - 1).Position();
      edits.emplace_back(last.y, last.x);
    }
    for (CFileDocument* document : frame->Tools().Documents()) {
      const std::string name = dynamic_cast<CTruckDocument&>(*document).Truck().name;
      edits.emplace_back(std::stoi(name.substr(name.find(' '))), std::stoi(name));
      EXPECT_EQ(document->Title(), "t.trk");
    }
    for (CFileDocument* document : frame->Documents()) {
      EXPECT_TRUE(document->IsModified());
      app->LetGo(*document);
    }
    return edits;
  }
};

/// Several at a time, which share all that the program keeps for its user.
TEST_F(CKilledEditorTest, LosesAtMostOneInterval) {
#ifdef _WIN32
  GTEST_SKIP() << "under Wine one of several editors that start at once hangs now and then";
#endif
  WriteModel("m.bin");
  WriteTruck("One");
  std::minstd_rand random(static_cast<unsigned>(::testing::UnitTest::GetInstance()->random_seed()));
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE(round);
    CVictim victims[] = {{folder, 0}, {folder, 1}, {folder, 2}, {folder, 3}};
    for (CVictim& victim : victims)
      ASSERT_TRUE(victim.WaitUntilItWorks());
    for (CVictim& victim : victims) {
      QTest::qWait(static_cast<int>(random() % 300));
      victim.Kill();
    }
    const auto found = RecoveredEdits();
    ASSERT_EQ(found.size(), 12u);
    for (const auto& [victim, edits] : found)
      EXPECT_GE(edits, EditsOf(victim) - kEditsAnInterval);
  }
}

TEST_F(CKilledEditorTest, LosesNothingWhenToldToQuit) {
  WriteModel("m.bin");
  WriteTruck("One");
  if (EndSignals().empty()) GTEST_SKIP() << "programs with windows are told by messages here";
  for (const int signal : EndSignals()) {
    CVictim victim(folder, 1);
    ASSERT_TRUE(victim.WaitUntilItWorks());
    SendSignal(victim.Process(), signal);
    ASSERT_TRUE(victim.Ends());
    const auto found = RecoveredEdits();
    ASSERT_EQ(found.size(), 3u);
    for (const auto& [number, edits] : found)
      EXPECT_EQ(edits, EditsOf(number));
  }
}

}  // namespace veldra::testing

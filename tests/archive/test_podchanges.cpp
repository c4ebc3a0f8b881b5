#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

#include "archive/podchanges.h"
#include "archive/podedit.h"
#include "archive/testpod.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

class CPodChangesTest : public ::testing::Test {
 protected:
  CPodChangesTest() { EXPECT_TRUE(archive.Load(path)); }

  /// What the archive would hold if it were saved now.
  std::vector<std::pair<std::string, std::string>> Listed() const {
    std::vector<std::pair<std::string, std::string>> list;
    for (size_t i = 0; i < archive.Entries().size(); ++i) {
      const auto bytes = archive.ReadEntry(i);
      list.emplace_back(archive.Entries()[i].Name(), bytes ? bytes->Text() : "?");
    }
    return list;
  }

  const std::vector<STestEntry> entries = {
      {std::string("ART\\SKY.RAW\0PAL", 15), "sky"}, {"DATA\\B.TXT", "b"}, {"X\\C.XYZ", "c"}, {"ART\\D.RAW", "d"}};
  CTempFolder folder;
  std::string path = folder.Write("p.pod", MakePod(entries));
  std::string other = folder.Write("in/b.txt", "other");
  CScriptedQuestions questions;
  CPodDocument archive;
  CPodChanges changes{archive};
};

TEST_F(CPodChangesTest, EveryStepGoesBackAndForwardAndIsSaved) {
  const auto add = [&] {
    return changes.Add(questions, {{"n.bmp", {folder.Write("in/n.bmp", "new")}}, {"b.txt", {other}}});
  };
  const struct {
    const char* name;
    std::function<bool()> change;
    std::vector<std::pair<std::string, std::string>> after;
  } steps[] = {
      {"Add 2 files",
       add,
       {{"ART\\SKY.RAW", "sky"},
        {"DATA\\B.TXT", "other"},
        {"X\\C.XYZ", "c"},
        {"ART\\D.RAW", "d"},
        {"UI\\N.BMP", "new"}}},
      {"Replace SKY.RAW",
       [&] { return changes.Replace(questions, 0, other); },
       {{"ART\\SKY.RAW", "other"},
        {"DATA\\B.TXT", "other"},
        {"X\\C.XYZ", "c"},
        {"ART\\D.RAW", "d"},
        {"UI\\N.BMP", "new"}}},
      {"Rename C.XYZ",
       [&] { return changes.Rename(questions, 2, "e.abc"); },
       {{"ART\\SKY.RAW", "other"},
        {"DATA\\B.TXT", "other"},
        {"X\\E.ABC", "c"},
        {"ART\\D.RAW", "d"},
        {"UI\\N.BMP", "new"}}},
      {"Move 2 files",
       [&] {
         return changes.Move({0, 2}, 2);
       },
       {{"DATA\\B.TXT", "other"},
        {"ART\\D.RAW", "d"},
        {"ART\\SKY.RAW", "other"},
        {"X\\E.ABC", "c"},
        {"UI\\N.BMP", "new"}}},
      {"Remove B.TXT",
       [&] { return changes.Remove({0}); },
       {{"ART\\D.RAW", "d"}, {"ART\\SKY.RAW", "other"}, {"X\\E.ABC", "c"}, {"UI\\N.BMP", "new"}}},
      {"Put in order",
       [&] {
         return changes.Arrange({1, 0, 2, 3});
       },
       {{"ART\\SKY.RAW", "other"}, {"ART\\D.RAW", "d"}, {"X\\E.ABC", "c"}, {"UI\\N.BMP", "new"}}},
  };
  const auto first = Listed();
  questions.OnReplace("DATA\\B.TXT", EReplaceAnswer::kYes);
  for (const auto& step : steps) {
    EXPECT_TRUE(step.change()) << step.name;
    EXPECT_EQ(changes.BackName(), step.name);
    EXPECT_EQ(Listed(), step.after) << step.name;
  }
  for (size_t i = std::size(steps); i-- > 0;) {
    changes.StepBack();
    EXPECT_EQ(Listed(), i == 0 ? first : steps[i - 1].after) << steps[i].name;
  }
  EXPECT_FALSE(changes.CanStepBack());
  while (changes.CanStepForward())
    changes.StepForward();
  ASSERT_TRUE(SavePod(questions, archive, path));
  EXPECT_EQ(ReadTestFile(path),
            MakePod({{entries[0].name, "other"}, entries[3], {"X\\E.ABC", "c"}, {"UI\\N.BMP", "new"}}))
      << "what stands behind a name's zero has to stay";
}

TEST_F(CPodChangesTest, WhatIsRefusedChangesNothing) {
  const auto before = Listed();
  questions.OnReplace("DATA\\B.TXT", EReplaceAnswer::kCancel);
  EXPECT_FALSE(changes.Add(questions, {{"n.txt", {other}}, {"b.txt", {other}}}));
  EXPECT_FALSE(changes.Add(questions, {{"toolongname.txt", {other}}}));
  EXPECT_FALSE(changes.Rename(questions, 0, "d.raw"));
  EXPECT_FALSE(changes.Rename(questions, 0, "..\\x.raw\\"));
  EXPECT_FALSE(changes.Replace(questions, 0, folder.File("none")));
  EXPECT_FALSE(changes.Remove({}));
  EXPECT_EQ(questions.TakeMessageTexts().size(), 4u);
  EXPECT_EQ(Listed(), before);
  EXPECT_FALSE(changes.CanStepBack());
}

TEST_F(CPodChangesTest, AFailedSaveLeavesTheOldArchive) {
  ASSERT_TRUE(changes.Replace(questions, 1, other));
  for (const std::string_view operation : {"open", "write", "sync", "close", "rename"}) {
    SetFileFault([&](std::string_view each, std::string_view) { return each == operation ? ENOSPC : 0; });
    EXPECT_FALSE(SavePod(questions, archive, path)) << operation;
    SetFileFault({});
    EXPECT_EQ(questions.TakeMessageTexts().size(), 1u) << operation;
    EXPECT_EQ(ReadTestFile(path), MakePod(entries)) << operation;
    EXPECT_EQ(ListDirectory(folder.Path()), (std::vector<std::string>{"in", "p.pod"})) << operation;
  }
  folder.Write("in/b.txt", "longer than before");
  EXPECT_EQ(archive.MeasureFiles(), std::nullopt);
  EXPECT_TRUE(SavePod(questions, archive, folder.File("copy.pod")));
  EXPECT_EQ(ReadTestFile(folder.File("copy.pod")).size(), MakePod(entries).size() + 17);
}

TEST_F(CPodChangesTest, AnArchiveThatAnotherProgramHasReplacedIsNotMixedWithTheOldOne) {
  ASSERT_TRUE(changes.Remove({0}));
  const std::string theirs = MakePod({{"DATA\\THEIRS.TXT", std::string(ReadTestFile(path).size(), 't')}});
  folder.Write("p.pod", theirs);
  SError error;
  EXPECT_FALSE(SavePod(questions, archive, path));
  EXPECT_FALSE(archive.ReadEntry(0, &error));
  EXPECT_NE(questions.TakeMessageTexts().at(0).find("could not be read"), std::string::npos);
  EXPECT_NE(error.what.find("changed it meanwhile"), std::string::npos) << error.what;
  EXPECT_EQ(ReadTestFile(path), theirs);
}

}  // namespace
}  // namespace veldra::testing

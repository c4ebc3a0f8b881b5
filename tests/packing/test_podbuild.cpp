#include "packing/podbuild.h"

#include <gtest/gtest.h>

#include "archive/testpod.h"
#include "packing/gamecommand.h"
#include "packing/packtruck.h"
#include "platform/files.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

class CPodBuildTest : public ::testing::Test {
 protected:
  std::string Names() const {
    std::string names;
    for (const CPodBuild::SItem& item : build.Items())
      names += item.name + (item.is_stock ? "* " : " ");
    return names;
  }

  CTempFolder folder;
  CScriptedQuestions questions;
  CStockFiles stock;
  CPodBuild build{questions, stock};
};

TEST_F(CPodBuildTest, KeepsTheOrderAndTellsAllRefusalsAtOnce) {
  folder.Write("in/b.raw", "four");
  folder.Write("in/sub/x.jpg", "x");
  const std::string archive = folder.Write("old.POD", MakePod({{"SOUND\\HORN.WAV", "wave"}, {"ART\\B.RAW", "again"}}));
  const std::vector<std::string> paths = {folder.Write("BIGFOOT.TRK", "stock"), folder.File("in"), archive,
                                          folder.Write("TOOLONGNAME.RAW", "x"), folder.File("none.raw")};
  EXPECT_EQ(build.AddAny(paths, true), 4u);
  EXPECT_EQ(Names(), "TRUCK\\BIGFOOT.TRK* ART\\B.RAW SUB\\X.JPG SOUND\\HORN.WAV ");
  ASSERT_EQ(questions.Messages().size(), 2u) << "of the archive, and of what stands behind it";
  EXPECT_EQ(questions.Messages()[0].text, "Error loading file \"B.RAW\"");
  EXPECT_EQ(questions.Messages()[1].text,
            "File \"TOOLONGNAME.RAW\" cannot be loaded.\nFile name cannot exceed 8 characters");
  EXPECT_EQ(questions.Messages()[1].details, "Error loading file \"none.raw\"");
  EXPECT_EQ(build.TotalLength(false), 84 + 4 * 40 + 5 + 4 + 1 + 4u);
  EXPECT_EQ(build.TotalLength(true), 84 + 3 * 40 + 4 + 1 + 4u);
  EXPECT_EQ(build.Sources(true).size(), 3u);
  EXPECT_EQ(build.AddArchive(folder.Write("bad.pod", "x")), 0u);
  EXPECT_EQ(questions.TakeMessageTexts().back(), "Failed to load POD file");

  const struct {
    std::vector<size_t> positions;
    int by;
    bool moves;
    const char* names;
  } cases[] = {{{0, 2}, -1, false, "ART\\B.RAW SUB\\X.JPG SOUND\\HORN.WAV "},
               {{1, 2}, -1, true, "SUB\\X.JPG SOUND\\HORN.WAV ART\\B.RAW "},
               {{0, 1}, 1, true, "ART\\B.RAW SUB\\X.JPG SOUND\\HORN.WAV "},
               {{2}, 1, false, "ART\\B.RAW SUB\\X.JPG SOUND\\HORN.WAV "},
               {{}, 1, false, "ART\\B.RAW SUB\\X.JPG SOUND\\HORN.WAV "}};
  build.Remove(std::vector<size_t>{0});
  for (const auto& row : cases) {
    EXPECT_EQ(build.Move(row.positions, row.by), row.moves);
    EXPECT_EQ(Names(), row.names);
  }
}

TEST(GameCommand, IsTakenApartBeforeItsPlaceholdersAreFilled) {
  const CTempFolder folder;
  const std::string program = folder.Write("the game.exe", "");
  const SGameCommandPlaces places = {.archive = "/a b/{truck}.POD", .truck = "T \"1\".TRK", .game = folder.Path()};
  const struct {
    std::string text;
    std::vector<std::string> words;
  } kCases[] = {{"", {}},
                {"  \"\"", {}},
                {program, {program}},
                {"\"" + program + "\" -x", {program, "-x"}},
                {"wine {game}/a.exe  {archive}", {"wine", places.game + "/a.exe", places.archive}},
                {"run --t={truck} \"\" \"{archive}\"", {"run", "--t=" + places.truck, "", places.archive}},
                {"run {other} {archive", {"run", "{other}", "{archive"}}};
  for (const auto& each : kCases) {
    const auto command = ReadGameCommand(each.text, places);
    std::vector<std::string> words;
    if (command) words = command->call.arguments;
    if (command) words.insert(words.begin(), command->call.program);
    EXPECT_EQ(words, each.words) << each.text;
  }
  EXPECT_EQ(ReadGameCommand("run", places)->folder, folder.Path());
  EXPECT_EQ(ReadGameCommand(program, {})->folder, folder.Path());
}

TEST(PackTruck, LooksBesideTheTruckThenInTheFoldersAndArchivesOfSettingsAndGame) {
  const CTempFolder folder;
  for (const char* name : {"mods/mine.trk", "mods/b.pod", "art/x", "pods/c.POD", "pods/d.txt", "game/e.pod"})
    folder.Write(name, "x");
  CSettings settings;
  settings.trk_dir = folder.File("mods");
  settings.art_dir = folder.File("ART");
  settings.pod_dir = folder.File("pods");
  settings.bin_dir = folder.File("none");
  const SSearchPlaces places = PlacesForTruck(folder.File("mods/mine.trk"), settings, folder.File("game"));
  const auto expect = [&](const std::vector<std::string>& found, std::initializer_list<const char*> names) {
    ASSERT_EQ(found.size(), names.size());
    for (size_t i = 0; i < found.size(); ++i)
      EXPECT_TRUE(IsSameFile(found[i], folder.File(names.begin()[i]))) << found[i];
  };
  expect(places.archives, {"mods/b.pod", "pods/c.POD", "game/e.pod"});
  expect(places.folders, {"mods", "art", "game", "pods"});
}

TEST(PackTruck, LeavesOutStockFilesAndWhatOnlyTheyNeed) {
  STruckPackPlan plan;
  for (int i = 0; i < 8; ++i) {
    STruckPackRow& row = plan.rows.emplace_back();
    row.name = std::to_string(i);
    row.is_missing = (i & 4) != 0;
    row.is_stock = (i & 1) != 0;
    row.is_for_stock = (i & 2) != 0;
  }
  for (const STruckPackRow& row : plan.rows) {
    EXPECT_EQ(STruckPackPlan::IsLeftOut(row, true), row.is_stock || row.is_for_stock) << row.name;
    EXPECT_FALSE(STruckPackPlan::IsLeftOut(row, false)) << row.name;
  }
  EXPECT_EQ(plan.Sources(true).size(), 1u);
  EXPECT_EQ(plan.Sources(false).size(), 4u);
  EXPECT_EQ(plan.Lacking(true).size(), 1u);
  EXPECT_EQ(plan.Lacking(true)[0]->name, "4");
}

}  // namespace
}  // namespace veldra::testing

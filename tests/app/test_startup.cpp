#include <gtest/gtest.h>

#include <filesystem>

#include "app/editorfixture.h"
#include "app/recentfiles.h"
#include "app/scalefactor.h"
#include "app/setup.h"
#include "app/startup.h"
#include "app/tarn2.h"
#include "archive/podwriter.h"
#include "platform/paths.h"
#include "settings/coptools.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra {

using testing::CScriptedQuestions;
using testing::CTempFolder;
using testing::CVariable;
using testing::ReadTestFile;
using testing::TestPalette;

namespace {

constexpr const char* kAskedAgain = "Error loading default palette.\nPlease select another.";

std::string NotFound(const std::string& name) {
  return "Default Palette not found!\nPlease locate ART\\" + name + " in the MTM2 directory.\n";
}

}  // namespace

TEST(StartUp, PaletteIsAskedForUntilOneLoads) {
  const CTempFolder folder;
  const std::string good = folder.Write("Art/Good.Act", TestPalette());
  const std::string too_short = folder.Write("short.act", std::vector<uint8_t>(767, 1));
  const std::string on_windows = "C:\\Program Files\\Microsoft Games\\ART\\METALCR2.ACT";
  const struct {
    const char* what;
    std::string setting;
    std::vector<std::optional<std::string>> chosen;
    std::vector<std::string> messages;
    std::optional<std::string> used;
  } cases[] = {
      {"good", good, {}, {}, good},
      {"other letter case", folder.File("ART\\GOOD.ACT"), {}, {}, folder.File("ART\\GOOD.ACT")},
      {"missing, then good", on_windows, {good}, {NotFound("METALCR2.ACT"), kAskedAgain}, good},
      {"short, then good", too_short, {good}, {kAskedAgain}, good},
      {"folder, then short, then cancelled", folder.Path(), {too_short, std::nullopt}, {kAskedAgain, kAskedAgain}, {}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    folder.Write("Veldra.cfg", "DEFPAL " + row.setting + "\nBINDIR /with two blanks/x\nBINDIR /the later one\nJUNK\n");
    CScriptedQuestions questions;
    for (const auto& choice : row.chosen)
      questions.OnOpenFile("Select Default Palette", choice);
    const auto startup = StartUp(folder.File("Veldra.cfg"), questions);
    EXPECT_EQ(questions.TakeMessageTexts(), row.messages);
    ASSERT_EQ(startup.has_value(), row.used.has_value());
    if (!startup) continue;
    EXPECT_EQ(startup->settings.defpal, *row.used);
    EXPECT_EQ(startup->settings.bin_dir, "/the later one");
    EXPECT_EQ(startup->default_colors[3 * 7], 7);
    EXPECT_EQ(startup->default_colors[3 * 7 + 2], 248);
  }
}

TEST(StartUp, AFirstStartFollowsFromWhereTheGameIs) {
  const CTempFolder folder;
  const CVariable data("VELDRA_DATA", folder.File("user"));
  const std::string settings_path = CopTools::SettingsPath(folder.Path());
  EXPECT_TRUE(IsSameFile(settings_path, folder.File("user/Veldra.cfg"))) << settings_path;
  CScriptedQuestions questions;
  folder.Write("game/models/A.BIN", "x");
  folder.Write("game/art/A.RAW", "x");
  folder.Write("packed/ART/METALCR2.ACT", TestPalette());
  folder.Write("packed/SKY.RAW", std::string(4096, 'x'));
  ASSERT_TRUE(CreatePod(questions, folder.File("game/Truck2.Pod"),
                        {{"ART\\METALCR2.ACT", {folder.File("packed/ART/METALCR2.ACT")}},
                         {"ART\\SKY.RAW", {folder.File("packed/SKY.RAW")}}}));
  const auto first_start = [&](SStartup& startup) {
    const SGameFolder game = LookIntoGameFolder(folder.File("game/models"));
    EXPECT_EQ(game.Text(), "1 archive, 2 textures, 1 model, 0 trucks\nColour table METALCR2.ACT in Truck2.Pod");
    ApplySetUp({.has_game = true,
                .game = game,
                .builds_stock_list = true,
                .wants_sample = true,
                .sample_folder = folder.File("sample")},
               folder.File("user"), startup.settings, questions, &startup.first_file);
  };
  const auto startup = StartUp(settings_path, questions, first_start);
  ASSERT_TRUE(startup);
  EXPECT_TRUE(IsSameFile(startup->settings.bin_dir, folder.File("game/models"))) << startup->settings.bin_dir;
  EXPECT_TRUE(IsSameFile(startup->settings.pod_dir, folder.File("game"))) << startup->settings.pod_dir;
  EXPECT_TRUE(IsSameFile(startup->settings.defpal, folder.File("user/METALCR2.ACT"))) << startup->settings.defpal;
  EXPECT_EQ(startup->default_colors[2], 255);
  folder.Write("sample/MODELS/TRUCK.BIN", "mine");
  EXPECT_EQ(WriteSample(folder.File("sample"), questions), startup->first_file);
  EXPECT_EQ(ReadTestFile(startup->first_file), "mine");
  EXPECT_EQ(WriteSample(folder.File("game"), questions), "");
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{"The sample project could not be written."});
  EXPECT_TRUE(FileExists(folder.File("user/Veldra.stock")));
  folder.Write("Veldra.cfg", "");
  EXPECT_EQ(CopTools::SettingsPath(folder.Path()), folder.File("Veldra.cfg")) << "that of the folder counts";
}

TEST(Program, OfSettingsInTheCurrentFolderIsStartedOnceTheUserSaysSo) {
  const CTempFolder folder;
  const CVariable user("XDG_CONFIG_HOME", folder.File("user"));
  folder.Write("Veldra.cfg", "GAMECOMMAND game.exe\nDEFPAL " + folder.Write("good.act", TestPalette()) + "\n");
  const auto start = [&](CScriptedQuestions& questions) { return *StartUp(folder.File("Veldra.cfg"), questions); };
  CScriptedQuestions questions;
  CTarn2App elsewhere(start(questions), questions);
  EXPECT_TRUE(elsewhere.MayStart(&CSettings::game_command)) << "settings that somebody has asked for";

  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(reinterpret_cast<const char8_t*>(folder.Path().c_str())));
  CTarn2App here(start(questions), questions);
  questions.OnYesNo("game.exe", EAnswer::kNo).OnYesNo("game.exe", EAnswer::kYes);
  EXPECT_FALSE(here.MayStart(&CSettings::game_command));
  EXPECT_TRUE(here.MayStart(&CSettings::game_command));
  EXPECT_TRUE(here.MayStart(&CSettings::game_command)) << "asked once";
  here.Settings().game_command = "mine";
  EXPECT_TRUE(here.MayStart(&CSettings::game_command)) << "entered by the user";
  std::filesystem::current_path(before);
}

TEST(RecentFiles, KeepTheLatestFirstAndEachOnce) {
  CRecentFiles files;
  int changes = 0;
  files.SetOnChange([&] { ++changes; });
  for (int i = 0; i < 10; ++i)
    files.Add("f" + std::to_string(i));
  files.Add("f5");
  files.Remove("f8");
  EXPECT_EQ(files.Paths(), (std::vector<std::string>{"f5", "f9", "f7", "f6", "f4", "f3", "f2"}));
  files.Remove("f8");
  EXPECT_EQ(changes, 12) << "once for each";
  files.Set({"a", "b", "a", ""});
  EXPECT_EQ(files.Paths(), (std::vector<std::string>{"a", "b"}));
}

TEST(ScaleFactor, TakesWhatTheFileCanHold) {
  for (const char* good : {"1", " 0.5 ", "-2.25", "32767.9999", "-32768", "0.0000153", "1e3"})
    EXPECT_EQ(ScaleFactorFault(good), "") << good;
  for (const char* bad : {"", "x", "1,5", "1 2", "0", "0.00001", "-0.00001", "32768", "-32769", "nan", "inf", "1e999"})
    EXPECT_NE(ScaleFactorFault(bad), "") << bad;
}

}  // namespace veldra

#include "settings/coptools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "platform/files.h"
#include "platform/text.h"
#include "platform/trace.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

using ::testing::EndsWith;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

TEST(ReadCfgFile, SplitsEachLineAtItsFirstBlankAndLetsTheLaterOneWin) {
  const testing::CTempFolder folder;
  const std::string path = folder.Write("Veldra.cfg",
                                        "\xEF\xBB\xBF"
                                        "BINDIR C:\\My Games\\a  b \r\n"
                                        "RENDERMODE 1\n"
                                        "\n"
                                        "ALONE\r\n"
                                        "EMPTY \n"
                                        "LATIN \xE9t\xE9\n"
                                        "TAB\tKEY x\n"
                                        "RENDERMODE 2");
  std::string traced;
  TraceSink earlier = SetTraceSink([&](std::string_view line) { traced += line; });
  SettingsMap map = {{"EARLIER", "kept"}, {"EMPTY", "overridden"}};
  CopTools::ReadCfgFile(path, map);
  SetTraceSink(std::move(earlier));
  EXPECT_THAT(map, UnorderedElementsAre(Pair("BINDIR", "C:\\My Games\\a  b "), Pair("RENDERMODE", "2"),
                                        Pair("ALONE", ""), Pair("EMPTY", ""), Pair("LATIN", "\xC3\xA9t\xC3\xA9"),
                                        Pair("TAB\tKEY", "x"), Pair("EARLIER", "kept")));
  EXPECT_THAT(traced, EndsWith("CopTools::ReadCfgFile(" + path + ") : Set 'RENDERMODE' to '2'\n"));
  EXPECT_EQ(std::ranges::count(traced, '\n'), 7);
}

TEST(ReadCfgFile, LeavesTheMapAloneWithoutAFile) {
  const testing::CTempFolder folder;
  SettingsMap map = {{"KEY", "value"}};
  CopTools::ReadCfgFile(folder.File("none.cfg"), map);
  CopTools::ReadCfgFile(folder.Path(), map);
  EXPECT_THAT(map, UnorderedElementsAre(Pair("KEY", "value")));
}

SettingsMap ReadMap(const std::string& path) {
  SettingsMap map;
  CopTools::ReadCfgFile(path, map);
  return map;
}

/// A value unlike the default for every row.
void ChangeEverything(CSettings& settings) {
  int step = 0;
  for (const SSettingRow& row : SettingRows()) {
    ++step;
    if (auto* number = std::get_if<int32_t& (*)(CSettings&)>(&row.member)) {
      (*number)(settings) =
          !row.choices.empty() ? row.choices.front().value : static_cast<int32_t>(row.largest) - step % 7;
    } else if (auto* real = std::get_if<double& (*)(CSettings&)>(&row.member)) {
      (*real)(settings) = row.largest / 3.0;
    } else if (auto* color = std::get_if<SColor& (*)(CSettings&)>(&row.member)) {
      (*color)(settings) = {static_cast<uint8_t>(step), 2, 250};
    } else {
      std::get<std::string& (*)(CSettings&)>(row.member)(settings) = Format("/a folder/\xC3\xA9 %d/ ", step);
    }
  }
}

#ifndef _WIN32
TEST(InstallationDirectory, IsWhatTheRegistrySaysElseHere) {
  const testing::CTempFolder folder;
  const testing::CVariable prefix("WINEPREFIX", folder.Path());
  EXPECT_EQ(CopTools::InstallationDirectory(), ".") << "no registry";
  const std::string key = "WINE REGISTRY Version 2\n\n[Software\\\\Microsoft\\\\Monster Truck Madness\\\\1.0] 1\n";
  folder.Write("system.reg", key + "\"Other\"=\"C:\\\\Games\"\n");
  EXPECT_EQ(CopTools::InstallationDirectory(), ".") << "no such value";
  folder.Write("system.reg", key + "\"InstalledTo\"=\"C:\\\\Games\\\\MTM2\"\n");
  EXPECT_EQ(CopTools::InstallationDirectory(), ".") << "no such drive";
  folder.Write("dosdevices/c:/games/MTM2/x", "");
  EXPECT_EQ(CopTools::InstallationDirectory(), folder.File("dosdevices/c:/games/MTM2"));
}
#endif

TEST(WriteCfgFile, EverySettingComesBackAsItWas) {
  const testing::CTempFolder folder;
  const std::string path = folder.File("Veldra.cfg");
  CSettings written;
  ChangeEverything(written);
  ASSERT_TRUE(CopTools::WriteCfgFile(path, written));

  const SettingsMap map = ReadMap(path);
  EXPECT_EQ(map.size(), SettingRows().size());
  CSettings read;
  read.Take(map);
  EXPECT_EQ(read.Texts(), written.Texts());
  EXPECT_NE(read.Texts(), CSettings().Texts());
}

TEST(WriteCfgFile, KeepsLinesThatTheTableDoesNotKnowOnce) {
  const testing::CTempFolder folder;
  const std::string path = folder.Write("Veldra.cfg", "FUTURE some thing\r\nRENDERMODE 0\r\nOTHER 1\r\n");
  for (int round = 0; round < 2; ++round)
    ASSERT_TRUE(CopTools::WriteCfgFile(path, CSettings()));
  const std::string text = testing::ReadTestFile(path);
  EXPECT_THAT(text, EndsWith("\nFUTURE some thing\nOTHER 1\n"));
  EXPECT_EQ(text.find("RENDERMODE 0"), std::string::npos);
}

TEST(WriteCfgFile, AValueCannotBreakOutOfItsLine) {
  const testing::CTempFolder folder;
  CSettings settings;
  settings.bin_dir = "a\nARTDIR evil\r";
  ASSERT_TRUE(CopTools::WriteCfgFile(folder.File("Veldra.cfg"), settings));
  SettingsMap map = ReadMap(folder.File("Veldra.cfg"));
  EXPECT_EQ(map["BINDIR"], "a ARTDIR evil ");
  EXPECT_EQ(map["ARTDIR"], settings.art_dir);
}

TEST(WriteCfgFile, LeavesTheOldFileWhenTheDiskIsFull) {
  const testing::CTempFolder folder;
  const std::string path = folder.Write("Veldra.cfg", "FUTURE x\n");
  SetFileFault([](std::string_view operation, std::string_view) { return operation == "write" ? ENOSPC : 0; });
  EXPECT_FALSE(CopTools::WriteCfgFile(path, CSettings()));
  SetFileFault({});
  EXPECT_EQ(testing::ReadTestFile(path), "FUTURE x\n");
}

TEST(WriteCfgFile, TwoProgramsKeepEachOthersChanges) {
  const testing::CTempFolder folder;
  const std::string path = folder.Write("Veldra.cfg", "BINDIR old\nARTDIR old\nFRAMERATE 20\nFUTURE x\n");
  CSettings as_read;
  as_read.Take(ReadMap(path));
  CSettings first = as_read;
  CSettings second = as_read;
  first.bin_dir = "first";
  first.trk_dir = "first";
  second.art_dir = "second";
  second.trk_dir = "second";
  ASSERT_TRUE(CopTools::WriteCfgFile(path, first, as_read));
  ASSERT_TRUE(CopTools::WriteCfgFile(path, second, as_read));

  SettingsMap map = ReadMap(path);
  EXPECT_EQ(map["BINDIR"], "first");
  EXPECT_EQ(map["ARTDIR"], "second");
  EXPECT_EQ(map["TRKDIR"], "second") << "who writes last decides what both changed";
  EXPECT_EQ(map["FRAMERATE"], "20");
  EXPECT_EQ(map["FUTURE"], "x");
  EXPECT_EQ(map.size(), SettingRows().size() + 1);
  EXPECT_EQ(ListDirectory(folder.Path()), std::vector<std::string>{"Veldra.cfg"}) << "the lock is gone";
}

TEST(WriteCfgFile, ChangesOfManyAtOnceAllSurvive) {
  const testing::CTempFolder folder;
  const std::string path = folder.File("Veldra.cfg");
  const CSettings as_read;
  std::vector<std::thread> programs;
  std::string CSettings::*const members[] = {&CSettings::bin_dir, &CSettings::art_dir, &CSettings::trk_dir,
                                             &CSettings::pod_dir};
  for (const auto member : members) {
    programs.emplace_back([&, member] {
      CSettings own = as_read;
      for (int turn = 0; turn <= 10; ++turn) {
        own.*member = Format("turn %d", turn);
        EXPECT_TRUE(CopTools::WriteCfgFile(path, own, as_read));
      }
    });
  }
  for (std::thread& program : programs)
    program.join();
  CSettings settings;
  settings.Take(ReadMap(path));
  for (const auto member : members)
    EXPECT_EQ(settings.*member, "turn 10");
}

TEST(WriteCfgFile, AnotherProgramsLockNeverCostsTheSettings) {
  const testing::CTempFolder folder;
  const std::string path = folder.File("Veldra.cfg");
  ASSERT_TRUE(MakeDirectories(path + ".lock"));  // no file can be locked there
  CSettings settings;
  settings.bin_dir = "mine";
  EXPECT_TRUE(CopTools::WriteCfgFile(path, settings, CSettings()));
  EXPECT_EQ(ReadMap(path)["BINDIR"], "mine");
}

}  // namespace
}  // namespace veldra

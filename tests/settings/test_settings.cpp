#include "settings/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/trace.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

TEST(Settings, KeysStandInTheOrderOfReading) {
  std::string keys;
  for (const SSettingRow& row : SettingRows()) {
    EXPECT_THAT(keys, Not(HasSubstr(" " + row.key + " ")));
    keys += " " + row.key + " ";
    EXPECT_FALSE(row.meaning.empty()) << row.key;
  }
  EXPECT_THAT(keys, StartsWith(" DEFPAL  LARGESTWFDIM  OPENINACTIVE  SAVECHILDSTATE  SAVEMAINSTATE  BINDIR  ARTDIR "
                               " TRKDIR  PODDIR "));
  for (const char* together :
       {" FRAMERATE  KBDLGLEFT  KBDLGLTOP  KBDLGLRIGHT  KBDLGLBOTTOM  KBDLGCATWIDTH  KBDLGCMDWIDTH  KBDLGKEYWIDTH ",
        " KBDLGKEYWIDTH  KBDLGDESCWIDTH  PODDESTDIR  PEDLGNAMEWIDTH ", " COLOR15  MOVESTEP ",
        " PCDLGLBOTTOM  CHILDWNDMAX  MAINWNDMAX  MAINWNDTL  MAINWNDBR  VERTSTATX  VERTSTATY  VERTSTATVIS  COLOR0 "})
    EXPECT_THAT(keys, HasSubstr(together));
}

TEST(Settings, EveryDefaultIsAllowedAndEachRowHasItsOwnMember) {
  const CSettings defaults;
  for (const SSettingRow& row : SettingRows()) {
    CSettings settings;
    EXPECT_TRUE(SetFromText(row, row.default_text, settings)) << row.key;
    // Another value of this row must show in this row alone.
    const bool is_text = std::holds_alternative<std::string& (*)(CSettings&)>(row.member);
    const bool is_color = std::holds_alternative<SColor& (*)(CSettings&)>(row.member);
    std::string other = is_text ? "elsewhere" : is_color ? "#010203" : row.default_text == "1" ? "2" : "1";
    if (!row.choices.empty()) {
      other = std::to_string(std::ranges::find_if(row.choices, [&](const SSettingChoice& choice) {
                               return std::to_string(choice.value) != row.default_text;
                             })->value);
    }
    ASSERT_TRUE(SetFromText(row, other, settings)) << row.key;
    for (const SSettingRow& any : SettingRows()) {
      EXPECT_EQ(ToSettingText(any, settings), any.key == row.key ? other : ToSettingText(any, defaults))
          << row.key << " and " << any.key;
    }
  }
}

TEST(Settings, AValueIsTakenOrBecomesTheDefaultWithATrace) {
  const struct {
    const char* key;
    const char* text;
    const char* taken;  ///< as it stands afterwards
  } cases[] = {{"RENDERMODE", "1", "1"},           {"RENDERMODE", " 1 ", "1"},       {"RENDERMODE", "4", "3"},
               {"RENDERMODE", "-1", "3"},          {"RENDERMODE", "", "3"},          {"RENDERMODE", "1x", "3"},
               {"RENDERMODE", "4294967297", "3"},  {"DEFFACETYPE", "51", "51"},      {"DEFFACETYPE", "0x29", "41"},
               {"DEFFACETYPE", "25", "25"},        {"DEFFACETYPE", "26", "24"},      {"NOTCENTEREDMSG", "-7", "-7"},
               {"VIEWANGLEX", "-12.25", "-12.25"}, {"VIEWANGLEX", "12,25", "20"},    {"VIEWANGLEX", "nan", "20"},
               {"VIEWANGLEX", "inf", "20"},        {"VIEWANGLEX", "1e999", "20"},    {"VIEWANGLEX", "361", "20"},
               {"KBDLGLTOP", "-1200", "-1200"},    {"KBDLGLTOP", "2147483647", "0"}, {"MAINWNDTL", "-65536", "-65536"},
               {"COLOR3", "#0a0B0c", "#0A0B0C"},   {"COLOR3", "255", "#FF0000"},     {"COLOR3", "16711680", "#0000FF"},
               {"COLOR3", "16777216", "#FFFFFF"},  {"COLOR3", "#12345", "#FFFFFF"},  {"COLOR3", "#-12345", "#FFFFFF"},
               {"COLOR3", "red", "#FFFFFF"}};
  for (const auto& [key, text, taken] : cases) {
    const SSettingRow& row = *FindSettingRow(key);
    std::string traced;
    TraceSink earlier = SetTraceSink([&](std::string_view line) { traced += line; });
    CSettings settings;
    settings.Take({{key, text}});
    SetTraceSink(std::move(earlier));
    EXPECT_EQ(ToSettingText(row, settings), taken);
    if (row.default_text != taken) {
      EXPECT_EQ(traced, "");
      continue;
    }
    EXPECT_THAT(traced, HasSubstr(key));
    EXPECT_THAT(traced, HasSubstr("'" + std::string(text) + "'"));
  }
}

TEST(Settings, ExtractionFollowsTheArchivesUntilItHasAFolderOfItsOwn) {
  CSettings settings;
  settings.Take({{"PODDIR", "/game"}});
  EXPECT_EQ(settings.pod_dest_dir, "/game");
  settings.Take({{"PODDIR", "/game"}, {"PODDESTDIR", "/out"}});
  EXPECT_EQ(settings.pod_dest_dir, "/out");
}

TEST(Settings, WritingBeginsWithTheStatusAndTheMainWindow) {
  std::vector<std::string> keys;
  for (const auto& [key, text] : CSettings().Texts())
    keys.push_back(key);
  ASSERT_EQ(keys.size(), SettingRows().size());
  EXPECT_THAT(std::vector(keys.begin(), keys.begin() + 8),
              ElementsAre("VERTSTATX", "VERTSTATY", "VERTSTATVIS", "MAINWNDMAX", "MAINWNDTL", "MAINWNDBR", "DEFPAL",
                          "LARGESTWFDIM"));
}

}  // namespace
}  // namespace veldra

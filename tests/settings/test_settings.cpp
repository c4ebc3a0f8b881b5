#include "settings/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "platform/trace.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(Settings, KeysStandInTheOrderOfReading) {
  std::vector<std::string> keys;
  std::set<std::string> once;
  for (const SSettingRow& row : SettingRows()) {
    keys.push_back(row.key);
    EXPECT_TRUE(once.insert(row.key).second) << row.key;
    EXPECT_FALSE(row.meaning.empty()) << row.key;
  }
  const std::vector<std::string> first = {"DEFPAL", "LARGESTWFDIM", "OPENINACTIVE", "SAVECHILDSTATE", "SAVEMAINSTATE",
                                          "BINDIR", "ARTDIR",       "TRKDIR",       "PODDIR"};
  EXPECT_TRUE(std::equal(first.begin(), first.end(), keys.begin()));
  const std::vector<std::string> keyboard = {"FRAMERATE",      "KBDLGLEFT",     "KBDLGLTOP",     "KBDLGLRIGHT",
                                             "KBDLGLBOTTOM",   "KBDLGCATWIDTH", "KBDLGCMDWIDTH", "KBDLGKEYWIDTH",
                                             "KBDLGDESCWIDTH", "PODDESTDIR",    "PEDLGNAMEWIDTH"};
  EXPECT_NE(std::ranges::search(keys, keyboard).begin(), keys.end());
  const std::vector<std::string> last = {"PCDLGLBOTTOM", "CHILDWNDMAX", "MAINWNDMAX",  "MAINWNDTL", "MAINWNDBR",
                                         "VERTSTATX",    "VERTSTATY",   "VERTSTATVIS", "COLOR0"};
  EXPECT_NE(std::ranges::search(keys, last).begin(), keys.end());
  EXPECT_NE(std::ranges::search(keys, std::vector<std::string>{"COLOR15", "MOVESTEP"}).begin(), keys.end());
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

TEST(Settings, FirstStartIsUsable) {
  const CSettings settings;
  EXPECT_EQ(settings.defpal, "C:\\Program Files\\Microsoft Games\\Monster Truck Madness 2\\ART\\METALCR2.ACT");
  EXPECT_EQ(settings.bin_dir, "C:\\Program Files\\Microsoft Games\\Monster Truck Madness 2\\MODELS\\");
  EXPECT_EQ(settings.pod_dest_dir, settings.pod_dir);
  EXPECT_TRUE(settings.not_centered_msg && settings.unused_verts_msg && settings.texture_size_msg);
  EXPECT_EQ(settings.render_mode, 3);
  EXPECT_EQ(settings.def_face_type, 0x18);
  EXPECT_EQ(settings.keyboard_dialog, SRect());
}

struct SValueCase {
  const char* key;
  const char* text;
  const char* taken;  ///< as it stands afterwards
};

class SettingValue : public ::testing::TestWithParam<SValueCase> {};

TEST_P(SettingValue, IsTakenOrBecomesTheDefaultWithATrace) {
  const auto& [key, text, taken] = GetParam();
  const SSettingRow& row = *FindSettingRow(key);
  std::string traced;
  TraceSink earlier = SetTraceSink([&](std::string_view line) { traced += line; });
  CSettings settings;
  settings.Take({{key, text}});
  SetTraceSink(std::move(earlier));
  EXPECT_EQ(ToSettingText(row, settings), taken);
  if (row.default_text == taken) {
    EXPECT_THAT(traced, HasSubstr(key));
    EXPECT_THAT(traced, HasSubstr("'" + std::string(text) + "'"));
  } else {
    EXPECT_EQ(traced, "");
  }
}

INSTANTIATE_TEST_SUITE_P(Values, SettingValue,
                         ::testing::Values(SValueCase{"RENDERMODE", "1", "1"},            //
                                           SValueCase{"RENDERMODE", " 1 ", "1"},          //
                                           SValueCase{"RENDERMODE", "4", "3"},            //
                                           SValueCase{"RENDERMODE", "-1", "3"},           //
                                           SValueCase{"RENDERMODE", "", "3"},             //
                                           SValueCase{"RENDERMODE", "1x", "3"},           //
                                           SValueCase{"RENDERMODE", "4294967297", "3"},   //
                                           SValueCase{"DEFFACETYPE", "51", "51"},         //
                                           SValueCase{"DEFFACETYPE", "0x29", "41"},       //
                                           SValueCase{"DEFFACETYPE", "25", "25"},         //
                                           SValueCase{"DEFFACETYPE", "26", "24"},         //
                                           SValueCase{"NOTCENTEREDMSG", "-7", "-7"},      //
                                           SValueCase{"VIEWANGLEX", "-12.25", "-12.25"},  //
                                           SValueCase{"VIEWANGLEX", "12,25", "20"},       //
                                           SValueCase{"VIEWANGLEX", "nan", "20"},         //
                                           SValueCase{"VIEWANGLEX", "inf", "20"},         //
                                           SValueCase{"VIEWANGLEX", "1e999", "20"},       //
                                           SValueCase{"VIEWANGLEX", "361", "20"},         //
                                           SValueCase{"KBDLGLTOP", "-1200", "-1200"},     //
                                           SValueCase{"KBDLGLTOP", "2147483647", "0"},    //
                                           SValueCase{"MAINWNDTL", "-65536", "-65536"},   //
                                           SValueCase{"COLOR3", "#0a0B0c", "#0A0B0C"},    //
                                           SValueCase{"COLOR3", "255", "#FF0000"},        //
                                           SValueCase{"COLOR3", "16711680", "#0000FF"},   //
                                           SValueCase{"COLOR3", "16777216", "#FFFFFF"},   //
                                           SValueCase{"COLOR3", "#12345", "#FFFFFF"},     //
                                           SValueCase{"COLOR3", "#-12345", "#FFFFFF"},    //
                                           SValueCase{"COLOR3", "red", "#FFFFFF"}));

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

#include "settings/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "platform/trace.h"

namespace veldra {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// Every key with its default, in the order of reading, written down once more: what is in users' files must not change
/// unnoticed. "$" stands for the game's usual folder, "@" for the four edges of a rectangle.
constexpr const char* kKeys =
    "DEFPAL=$ART\\METALCR2.ACT;LARGESTWFDIM=1000;OPENINACTIVE=0;SAVECHILDSTATE=1;SAVEMAINSTATE=1;BINDIR=$MODELS\\;"
    "ARTDIR=$ART\\;TRKDIR=$TRUCK\\;PODDIR=$;NOTCENTEREDMSG=1;UNUSEDVERTSMSG=1;TEXTURESIZEMSG=1;SAVETODEFDIR=0;"
    "RENDERMODE=3;DEFFACETYPE=24;FOLLOWFACE=1;SHOWTRANS=1;3DAXES=0;3DONLY=0;3DQUALITY=1;3DVERTS=0;BACKGRND=#56677A;"
    "VIEWANGLEX=20;VIEWANGLEY=-35;VIEWANGLEZ=0;PREVIEW=1;SHOWGUIDES=0;SNAPTOGUIDES=0;SNAPWITHIN=4;"
    "TEXROTSELVERTSONLY=0;TTPAGE=0;SCALEFACTOR=0;TEXEDITMODE=0;TEXDLGOFFSETX=0;TEXDLGOFFSETY=0;TOOLSOFFSETX=0;"
    "TOOLSOFFSETY=0;FRAMERATE=30;KBDLG@;KBDLGCATWIDTH=100;KBDLGCMDWIDTH=160;KBDLGKEYWIDTH=120;KBDLGDESCWIDTH=280;"
    "PODDESTDIR=$;PEDLGNAMEWIDTH=160;PEDLGDIRWIDTH=100;PEDLGSIZEWIDTH=90;PEDLGDATEWIDTH=140;PEEXTRACTDEPS=1;"
    "PERECREATEDIRSTRUCTURE=1;PCDLGNAMEWIDTH=160;PCDLGDIRWIDTH=100;PCDLGSIZEWIDTH=90;PCDLGDATEWIDTH=140;PCSHOWDEPS=1;"
    "PCINSERTPOD=0;PCPODZIP=1;TRDLG@;FGDLG@;VGDLG@;BWDLG@;PEDLG@;PCDLG@;CHILDWNDMAX=1;MAINWNDMAX=0;MAINWNDTL=0;"
    "MAINWNDBR=0;VERTSTATX=0;VERTSTATY=0;VERTSTATVIS=1;COLOR0=#FFFFFF";

TEST(Settings, KeysDefaultsAndTheirOrderAreWhatTheyHaveAlwaysBeen) {
  std::vector<std::string> expected;
  std::istringstream keys(kKeys);
  for (std::string entry; std::getline(keys, entry, ';');) {
    if (const size_t game = entry.find('$'); game != std::string::npos)
      entry.replace(game, 1, R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\)");
    if (!entry.ends_with('@')) expected.push_back(entry);
    for (const char* edge : {"LEFT=0", "LTOP=0", "LRIGHT=0", "LBOTTOM=0"})
      if (entry.ends_with('@')) expected.push_back(entry.substr(0, entry.size() - 1) + edge);
  }
  std::vector<std::string> rows;
  for (const SSettingRow& row : SettingRows())
    rows.push_back(row.key + '=' + row.default_text);
  ASSERT_GT(rows.size(), expected.size());
  EXPECT_EQ(rows[expected.size()], "COLOR1=#FFFFFF") << "newer keys stand behind these";
  rows.resize(expected.size());
  EXPECT_EQ(rows, expected);

  std::vector<std::string> written;
  for (const auto& [key, text] : CSettings().Texts())
    written.push_back(key);
  ASSERT_EQ(written.size(), SettingRows().size());
  written.resize(8);
  EXPECT_THAT(written, ElementsAre("VERTSTATX", "VERTSTATY", "VERTSTATVIS", "MAINWNDMAX", "MAINWNDTL", "MAINWNDBR",
                                   "DEFPAL", "LARGESTWFDIM"));
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

}  // namespace
}  // namespace veldra

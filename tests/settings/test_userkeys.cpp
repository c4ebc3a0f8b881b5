#include "settings/userkeys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veldra {
namespace {

using ::testing::ElementsAre;

TEST(KeyText, ComesToOneSpelling) {
  const std::pair<const char*, const char*> cases[] = {
      {"ctrl+shift+j", "Ctrl+Shift+J"},
      {"Shift+Alt+Ctrl+Delete", "Ctrl+Alt+Shift+Del"},
      {" f12 ", "F12"},
      {"F36", ""},
      {"+", "+"},
      {"Ctrl+=", "Ctrl++"},
      {"Shift+!", "!"},
      {"Shift+A", "Shift+A"},
      {"5 (Number Pad)", "Num+5"},
      {"Num+Home", "Home"},
      {"Enter", "Return"},
      {"\xC3\xA4", "\xC3\x84"},
      {"Ctrl+", ""},
      {"AB", ""},
      {"\xFF", ""},
      {"\xE2\x80\xAE", ""},
      {"", ""},
  };
  for (const auto& [text, key] : cases)
    EXPECT_EQ(ParseKey(text).value_or(""), key) << text;
  EXPECT_EQ(ShownKeys({"Ctrl+S", "Ctrl+Num+5"}), "Ctrl+S, Ctrl+5 (Number Pad)");
  EXPECT_TRUE(KeyFault("F10").starts_with("F10 "));
  EXPECT_EQ(KeyFault("Ctrl+S") + KeyFault("F2"), "");
}

std::vector<SKeyCommand> Commands() {
  return {{"save", "Main", "File", "Save", {"Ctrl+S"}},       {"reload", "Main", "File", "Reload", {"F5"}},
          {"play", "Main", "View", "Play", {"P", "F6"}},      {"five", "Main", "View", "Five", {"Num+5", "Alt+F"}},
          {"", "Main", "", "the menu File", {"Alt+F"}, true}, {"truck.save", "Truck", "Truck", "Save", {"Ctrl+S"}}};
}

/// The keys of all commands, one after the other.
std::string All(const CUserKeys& keys) {
  std::string text;
  for (size_t i = 0; i < keys.Commands().size(); ++i)
    text += (i > 0 ? "|" : "") + ShownKeys(keys.Keys(i));
  return text;
}

TEST(UserKeys, TheSettingIsReadAndWrittenBack) {
  const struct {
    const char* setting;
    const char* all;
    size_t faults;
    const char* text;
  } cases[] = {
      {"", "Ctrl+S|F5|P, F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S", 0, ""},
      {"save=f2  save=Ctrl+= reload=", "F2, Ctrl++||P, F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S", 0,
       "save=F2 save=Ctrl++ reload="},
      // A key that is given is nobody's default, and that of another window is no matter.
      {"save=F6 truck.save=F5", "F6|F5|P|5 (Number Pad), Alt+F|Alt+F|F5", 0, "save=F6 play=P truck.save=F5"},
      {"save=5", "5|F5|P, F6|Alt+F|Alt+F|Ctrl+S", 0, "save=5 five=Alt+F"},
      // What is not understood stays as it stands.
      {"later=F9 save=Bogus play nonsense==", "Ctrl+S|F5|P, F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S", 4,
       "later=F9 save=Bogus play nonsense=="},
      {"save=F2 reload=F2 play=Alt+F play=Esc =X", "F2|F5|P, F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S", 4,
       "save=F2 reload=F2 play=Alt+F play=Esc =X"},
      {"play=P play=F6", "Ctrl+S|F5|P, F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S", 0, ""},
  };
  for (const auto& row : cases) {
    const CUserKeys keys(Commands(), row.setting);
    EXPECT_EQ(All(keys), row.all) << row.setting;
    EXPECT_EQ(keys.Faults().size(), row.faults) << row.setting;
    EXPECT_EQ(keys.Text(), row.text) << row.setting;
    EXPECT_EQ(All(CUserKeys(Commands(), row.text)), row.all) << row.setting;
  }
}

TEST(UserKeys, ASettingWithoutEndIsKeptAndNotRead) {
  std::string few;
  for (const char* key : {"1", "2", "3", "4", "6", "7", "8", "9", "Ctrl+1"})
    few += std::string(few.empty() ? "" : " ") + "save=" + key;
  EXPECT_EQ(CUserKeys(Commands(), few).Keys(0).size(), kMostKeys);
  EXPECT_EQ(CUserKeys(Commands(), few).Text(), few);
  std::string all = few;
  while (all.size() < 100000)
    all += ' ' + few;
  EXPECT_EQ(CUserKeys(Commands(), all).KeysOf("save"), Commands()[0].defaults);
  EXPECT_EQ(CUserKeys(Commands(), all).Text(), all);
}

TEST(UserKeys, AKeyThatIsGivenIsTakenFromTheOthersOfTheWindow) {
  CUserKeys keys(Commands(), "reload=Bogus later=F9");
  EXPECT_EQ(keys.OtherWith(1, "Ctrl+S"), 0U);
  EXPECT_EQ(keys.OtherWith(0, "Ctrl+S"), std::nullopt);
  EXPECT_EQ(keys.OtherWith(0, "5"), 3U) << "the number pad's is this one, too";
  EXPECT_EQ(keys.OtherWith(5, "F5"), std::nullopt) << "another window";
  keys.Give(1, {"Ctrl+S", "P"});
  EXPECT_EQ(All(keys), "|Ctrl+S, P|F6|5 (Number Pad), Alt+F|Alt+F|Ctrl+S");
  EXPECT_EQ(keys.Text(), "save= reload=Ctrl+S reload=P play=F6 later=F9") << "what was wrong about it is gone";
  keys.Give(0, {"Ctrl+S"});
  EXPECT_THAT(keys.KeysOf("reload"), ElementsAre("P"));
}

}  // namespace
}  // namespace veldra

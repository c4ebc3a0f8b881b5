#include "packing/modeltextures.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "archive/testpod.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra::testing {
namespace {

using ::testing::HasSubstr;

/// Texels whose first byte tells where they came from.
std::string Texels(char first) {
  return std::string(4096, first);
}

/// In one of the spellings that systems have for a path.
std::string Spelled(std::string text) {
  std::ranges::replace(text, '\\', '/');
  return UpperCase(text);
}

TEST(ModelTextures, AreLookedForNearTheModelInTheOrderOfThePlaces) {
  const CTempFolder folder;
  const std::string table(768, '\x50');
  const std::pair<const char*, char> files[] = {{"settings/a.raw", '1'},
                                                {"project/Models/A.RAW", '2'},
                                                {"project/Models/b.Raw", '2'},
                                                {"project/art/B.RAW", '3'},
                                                {"project/art/C.raw", '3'}};
  for (const auto& [name, first] : files)
    folder.Write(name, Texels(first));
  folder.Write(
      "project/Models/near.pod",
      MakePod(
          {{"ART\\C.RAW", Texels('4')}, {"ART\\D.RAW", Texels('4')}, {"ART\\D.ACT", table}, {"ART\\SHORT.RAW", "x"}}));
  folder.Write("game/FAR.POD", MakePod({{"ART\\D.RAW", Texels('5')}, {"ART\\E.RAW", Texels('5')}}));
  CSettings settings;
  settings.art_dir = folder.File("SETTINGS");
  settings.pod_dir = folder.File("Game");
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  CModelTextureFinder finder(store, questions, settings, folder.File("project/Models/m.bin"));
  for (const auto& [name, first] :
       {std::pair{"A.RAW", '1'}, {"B.RAW", '2'}, {"c.raw", '3'}, {"D.RAW", 0x50}, {"E.RAW", '5'}}) {
    SCOPED_TRACE(name);
    const STextureImage* image = finder.Find(name);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->rgba[0], first);
  }
  const std::string note = Spelled(finder.Note());
  EXPECT_EQ(std::ranges::count(note, ','), 3);
  for (const char* place : {"game/FAR.POD", "project/Models", "project/Models/near.pod", "project/art"})
    EXPECT_THAT(note + ",", HasSubstr(Spelled("1 texture from " + folder.File(place) + ",")));
  // What an archive holds is read there again: for an export with its own table, and for other default colours.
  EXPECT_EQ(FilesOf(*finder.Find("D.RAW")).colors.value()[0], 0x50);
  store.SetDefaultColors({});
  EXPECT_EQ(finder.Find("E.RAW")->rgba[0], 0);
  questions.OnTexture("SHORT.RAW", {}).OnTexture("Z.RAW", {}).OnTexture("../A.RAW", {});
  for (const char* name : {"SHORT.RAW", "Z.RAW", "../A.RAW"})
    EXPECT_EQ(finder.Find(name), nullptr);
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{"Error: Unsupported texture size."});
}

}  // namespace
}  // namespace veldra::testing

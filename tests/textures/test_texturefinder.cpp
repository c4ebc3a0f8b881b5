#include "textures/texturefinder.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

using testing::CScriptedQuestions;
using testing::CTempFolder;
using EChoice = STextureAnswer::EChoice;

class TextureFinder : public ::testing::Test {
 protected:
  std::string WriteRaw(const std::string& name, size_t length = 4096) {
    return folder_.Write(name, std::vector<uint8_t>(length, 9));
  }

  CTempFolder folder_;
  CScriptedQuestions questions_;
  CTextureStore store_{questions_, GreyRamp()};
  CTextureFinder finder_{store_, questions_, folder_.File("ART")};
};

TEST_F(TextureFinder, FindsFilesInAnyCaseUnderTheirPathOnDisk) {
  WriteRaw("ART/road.Raw");
  const STextureImage* image = finder_.Find("ROAD.RAW");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(finder_.Find("Road.raw"), image);
  EXPECT_TRUE(EqualNoCase(image->name, "ROAD.RAW"));
  EXPECT_TRUE(IsFile(image->path));
  EXPECT_EQ(store_.GetTexture(image->path), image);
}

TEST_F(TextureFinder, TheFilePickedStandsInUntilOneCanBeLoaded) {
  const std::string other = WriteRaw("elsewhere/OTHER.RAW");
  const std::string broken = WriteRaw("elsewhere/BROKEN.RAW", 4097);
  const std::string text = "Texture ROAD.RAW not found. Please select another texture.";
  questions_.OnTexture(text, {EChoice::kFile, folder_.File("elsewhere/NONE.RAW")})
      .OnTexture(text, {EChoice::kFile, broken})
      .OnTexture(text, {EChoice::kFile, other});
  const STextureImage* image = finder_.Find("ROAD.RAW");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->name, "OTHER.RAW");
  EXPECT_EQ(questions_.TakeMessageTexts(), std::vector<std::string>{"Error: Unsupported texture size."});
  EXPECT_EQ(finder_.Find("road.raw"), image) << "asked once";
}

TEST_F(TextureFinder, GivingUpIsRememberedForThisLoad) {
  questions_.OnTexture("GONE.RAW", {EChoice::kGiveUp}).OnTexture("GONE.RAW", {EChoice::kBlank, "", 256});
  EXPECT_EQ(finder_.Find("GONE.RAW"), nullptr);
  EXPECT_EQ(finder_.Find("GONE.RAW"), nullptr);
  CTextureFinder next_load(store_, questions_, folder_.File("ART"));
  const STextureImage* blank = next_load.Find("GONE.RAW");
  ASSERT_NE(blank, nullptr);
  EXPECT_EQ(blank->size, 256);
  EXPECT_EQ(store_.GetTexture(JoinPath(folder_.File("ART"), "GONE.RAW")), blank);
}

TEST_F(TextureFinder, OneAnswerServesAllThatAreMissing) {
  const std::string found = WriteRaw("found/ONE.RAW");
  const std::string other = WriteRaw("found/two.raw");
  questions_.OnTexture("ONE.RAW", {EChoice::kFolder, folder_.File("found")})
      .OnTexture("GONE.RAW", {EChoice::kBlankForAll, "", 128});
  EXPECT_TRUE(IsSameFile(finder_.Find("ONE.RAW")->path, found));
  EXPECT_TRUE(IsSameFile(finder_.Find("TWO.RAW")->path, other));
  for (const char* name : {"GONE.RAW", "GONE2.RAW"})
    EXPECT_EQ(finder_.Find(name)->size, 128) << name;
}

}  // namespace
}  // namespace veldra

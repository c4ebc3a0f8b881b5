#include "textures/texturestore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "platform/files.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

using testing::CScriptedQuestions;
using testing::CTempFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// Entry k is (k, 255 - k, 7).
std::vector<uint8_t> ActBytes(size_t size = 768) {
  std::vector<uint8_t> bytes(size);
  for (size_t i = 0; i < size; ++i) {
    const auto entry = static_cast<uint8_t>(i / 3);
    bytes[i] = i % 3 == 0 ? entry : i % 3 == 1 ? static_cast<uint8_t>(255 - entry) : uint8_t{7};
  }
  return bytes;
}

/// Texel (row, column) has the index 3 row + column, wrapped.
std::vector<uint8_t> RawBytes(size_t size) {
  std::vector<uint8_t> bytes(size * size);
  for (size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<uint8_t>(3 * (i / size) + i % size);
  return bytes;
}

TEST(TextureStore, LoadsEachSizeInThreeLayouts) {
  const CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  for (const int size : kTextureSizes) {
    const auto width = static_cast<size_t>(size);
    const auto indices = RawBytes(width);
    const std::string path = folder.Write("T" + std::to_string(size) + ".RAW", indices);
    const STextureImage* image = store.GetTexture(path);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size, size);
    EXPECT_EQ(image->path, path);
    EXPECT_EQ(image->name, "T" + std::to_string(size) + ".RAW");

    std::vector<uint8_t> rgba, rgb;
    for (size_t row = 0; row < width; ++row) {
      for (size_t column = 0; column < width; ++column) {
        const uint8_t up = indices[row * width + column];
        rgba.insert(rgba.end(), {up, up, up, static_cast<uint8_t>(up >= 9 ? 255 : 0)});
        const uint8_t down = indices[(width - row - 1) * width + column];
        rgb.insert(rgb.end(), {down, down, down});
      }
    }
    EXPECT_TRUE(image->rgba == rgba) << size;
    EXPECT_TRUE(image->rgb == rgb) << size;
    EXPECT_TRUE(image->bgr == rgb) << size << ": grey";
  }
  EXPECT_TRUE(questions.Messages().empty());
}

TEST(TextureStore, TakesColoursFromTheTableBesideInAnyCase) {
  const CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  struct {
    const char* act;
    size_t length;
    bool is_used;
  } const cases[] = {{"A0.ACT", 768, true},  {"a1.act", 768, true}, {"A2.Act", 772, true},
                     {"A3.ACT", 767, false}, {"A4.ACT", 0, false},  {"A5.ACT", 3 << 20, true}};
  for (size_t i = 0; i < std::size(cases); ++i) {
    const std::string name = "A" + std::to_string(i);
    folder.Write(cases[i].act, ActBytes(cases[i].length));
    const STextureImage* image = store.GetTexture(folder.Write(name + ".RAW", RawBytes(64)));
    ASSERT_NE(image, nullptr);
    const auto texel = [](const std::vector<uint8_t>& bytes, size_t at) {
      return std::vector(&bytes[at], &bytes[at] + 3);
    };
    if (cases[i].is_used) {
      EXPECT_THAT(texel(image->rgba, 4 * 40), ElementsAre(40, 215, 7)) << cases[i].act;
      EXPECT_THAT(texel(image->rgb, 3 * (63 * 64 + 40)), ElementsAre(40, 215, 7));
      EXPECT_THAT(texel(image->bgr, 3 * (63 * 64 + 40)), ElementsAre(7, 215, 40));
    } else {
      EXPECT_THAT(texel(image->rgba, 4 * 40), ElementsAre(40, 40, 40)) << cases[i].act;
    }
  }
  EXPECT_TRUE(questions.Messages().empty());
  // One that is there and cannot be read is said.
  ASSERT_TRUE(MakeDirectories(folder.File("A6.ACT")));
  EXPECT_NE(store.GetTexture(folder.Write("A6.RAW", RawBytes(64))), nullptr);
  EXPECT_EQ(questions.Messages().at(0).details, "is a folder");
}

TEST(DecodeTexture, NearBlackIsTransparent) {
  const std::pair<std::array<uint8_t, 3>, uint8_t> cases[] = {
      {{0, 0, 0}, 0}, {{8, 8, 8}, 0}, {{9, 0, 0}, 255}, {{0, 9, 0}, 255}, {{0, 0, 9}, 255}, {{255, 255, 255}, 255}};
  ColorTable colors = {};
  std::vector<uint8_t> indices(64 * 64);
  for (size_t i = 0; i < std::size(cases); ++i) {
    std::ranges::copy(cases[i].first, &colors[i * 3]);
    indices[i] = static_cast<uint8_t>(i);
  }
  STextureImage image;
  image.size = 64;
  DecodeTexture(indices, colors, image);
  for (size_t i = 0; i < std::size(cases); ++i)
    EXPECT_EQ(image.rgba[i * 4 + 3], cases[i].second) << i;
}

TEST(TextureStore, RefusesOtherLengthsAndSaysWhich) {
  const CTempFolder folder;
  for (const size_t length : {size_t{0}, size_t{4095}, size_t{16385}, size_t{65536 + 768}, size_t{262145}}) {
    CScriptedQuestions questions;
    CTextureStore store(questions, GreyRamp());
    const std::string path = folder.Write("BAD.RAW", std::vector<uint8_t>(length));
    EXPECT_EQ(store.GetTexture(path), nullptr);
    ASSERT_EQ(questions.Messages().size(), 1u) << length;
    const SMessage& message = questions.Messages()[0];
    EXPECT_EQ(message.text, "Error: Unsupported texture size.");
    EXPECT_EQ(message.caption, "Veldra - Error");
    EXPECT_THAT(message.details, HasSubstr(path + " is " + std::to_string(length) + " bytes"));
  }
}

TEST(TextureStore, SaysThatAFileCannotBeReadButNotThatThereIsNone) {
  const CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  EXPECT_EQ(store.GetTexture(folder.File("NONE.RAW")), nullptr);
  EXPECT_TRUE(questions.Messages().empty());
  ASSERT_TRUE(MakeDirectories(folder.File("FOLDER.RAW")));
  EXPECT_EQ(store.GetTexture(folder.File("FOLDER.RAW")), nullptr);
  EXPECT_EQ(questions.Messages().size(), 1u);
}

TEST(TextureStore, ReadsAPathOnceAndTellsLetterCasesApart) {
  const CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  const std::string path = folder.Write("X.RAW", RawBytes(64));
  const STextureImage* first = store.GetTexture(path);
  ASSERT_NE(first, nullptr);
  folder.Write("x.raw", RawBytes(128));
  EXPECT_NE(store.GetTexture(folder.File("x.raw")), first);
  ASSERT_TRUE(RemoveFile(path));
  EXPECT_EQ(store.GetTexture(path), first);
}

TEST(TextureStore, BlankTexturesAreTransparentStoredAndOneAWidth) {
  CScriptedQuestions questions;
  CTextureStore store(questions, GreyRamp());
  const STextureImage* blank = store.GetBlankTexture("/art/NONE.RAW", 128);
  EXPECT_EQ(blank->size, 128);
  EXPECT_EQ(blank->rgba, std::vector<uint8_t>(128 * 128 * 4));
  EXPECT_EQ(blank->bgr.size(), size_t{128 * 128 * 3});
  EXPECT_EQ(store.GetTexture("/art/NONE.RAW"), blank);
  EXPECT_EQ(store.GetBlankTexture("/art/OTHER.RAW", 128), blank) << "thousands of names take no more memory";
  EXPECT_EQ(store.GetBlankTexture("/art/NONE.RAW", 64), blank) << "the stored one";
}

}  // namespace
}  // namespace veldra

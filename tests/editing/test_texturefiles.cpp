#include <gtest/gtest.h>

#include "document/texturewatch.h"
#include "editing/editfixture.h"
#include "editing/pictureedits.h"
#include "platform/files.h"
#include "platform/indexedpng.h"

namespace veldra::testing {

namespace {

using EColors = CPictureEdits::EColors;

/// A texture file of 64 texels, the left half of entry 1 (red), the right half of entry 2 (black).
class CTextureFilesTest : public CEditTest {
 protected:
  CTextureFilesTest() {
    texels.indices.assign(4096, 2);
    for (size_t i = 0; i < 4096; ++i)
      if (i % 64 < 32) texels.indices[i] = 1;
    texels.colors = {};
    texels.colors[3] = 200;
    folder.Write("PAINT.RAW", texels.indices);
    folder.Write("PAINT.ACT", std::vector<uint8_t>(texels.colors.begin(), texels.colors.end()));
    image = document.Services().textures.GetTexture(raw);
  }
  STextureSource Source() const { return SourceOf(*image); }
  /// What a picture program saves at PATH.
  static void Paint(const std::string& path, int size, const std::array<uint8_t, 4>& color) {
    SImage picture = {size, size, {}};
    for (int i = 0; i < size * size; ++i)
      picture.rgba.insert(picture.rgba.end(), color.begin(), color.end());
    ASSERT_TRUE(WritePng(path, picture));
  }

  const std::string raw = folder.File("PAINT.RAW");
  SIndexedTexture texels;
  const STextureImage* image = nullptr;
};

}  // namespace

TEST_F(CTextureFilesTest, AreExportedChangedAndSaved) {
  const std::string png = folder.File("out.png");
  for (const size_t kind : {size_t{0}, size_t{1}}) {
    questions.OnSaveFile("Export Picture", SSavePath{png, kind});
    ASSERT_TRUE(ExportTexture(document, Source()));
    EXPECT_EQ(ReadIndexedPng(png).has_value(), kind == 0);
    EXPECT_EQ(ReadPng(png)->rgba[63 * 4 + 3], 0);
  }
  const SRawTexture opened = *OpenTexture(document, Source());
  ColorTable greys = GreyRamp();
  const SIndexedTexture changed = Changed(opened, {.size = 128, .scaling = EScaling::kNearest, .colors = greys});
  EXPECT_EQ(changed.indices.size(), 128u * 128u);
  EXPECT_EQ(changed.colors, greys);
  questions.OnSaveFile("Save Texture", SSavePath{raw});
  EXPECT_EQ(SaveTexture(document, Source(), changed), raw);
  EXPECT_EQ(image->size, 128) << "shown at once";
}

TEST_F(CTextureFilesTest, ChangesOfOtherProgramsAreShown) {
  CTextureStore& store = document.Services().textures;
  int shown = 0;
  store.SetOnChanged([&shown] { ++shown; });
  CTextureWatch watch(store);
  EXPECT_EQ(watch.Files(), (std::vector<std::string>{raw, folder.File("PAINT.ACT")}));
  EXPECT_EQ(watch.TakeNews(), std::vector<std::string>());
  texels.colors[4] = 90;
  ASSERT_TRUE(WriteTextureFiles(raw, std::vector<uint8_t>(16384, 1), texels.colors, nullptr));
  EXPECT_EQ(watch.TakeNews(), std::vector<std::string>{"PAINT.RAW"});
  EXPECT_EQ(image->size, 128);
  EXPECT_EQ(image->rgba[1], 90);
  folder.Write("PAINT.RAW", "half a file");
  EXPECT_EQ(watch.TakeNews(), std::vector<std::string>());
  EXPECT_EQ(image->size, 128);
  folder.Write("PAINT.RAW", std::vector<uint8_t>(4096, 2));
  EXPECT_EQ(watch.TakeNews(), std::vector<std::string>{"PAINT.RAW"});
  EXPECT_EQ(shown, 2);
  store.SetOnChanged({});
}

TEST_F(CTextureFilesTest, PicturesComeBackFromAnotherProgram) {
  const struct {
    EColors colors;
    int side;
    std::array<uint8_t, 4> painted;
    int size;
    int red;
  } rows[] = {{EColors::kKeep, 64, {180, 0, 0, 255}, 64, 200},
              {EColors::kMake, 128, {180, 0, 0, 255}, 128, 180},
              {EColors::kMake, 100, {70, 0, 0, 255}, 128, 70}};
  CPictureEdits edits(document.Services().textures, questions, folder.File("pictures"));
  for (const auto& row : rows) {
    const auto picture = edits.Begin(document, Source(), row.colors);
    ASSERT_TRUE(picture);
    EXPECT_EQ(ReadIndexedPng(*picture)->indices.size(), static_cast<size_t>(image->size * image->size));
    EXPECT_EQ(edits.TakeNews(), std::vector<std::string>());
    Paint(*picture, row.side, row.painted);
    EXPECT_EQ(edits.TakeNews(), std::vector<std::string>{"PAINT.RAW"});
    EXPECT_EQ(image->size, row.size);
    EXPECT_EQ(image->rgba[0], row.red);
    EXPECT_EQ(ReadTestFile(raw).size(), static_cast<size_t>(row.size * row.size));
  }
  // What cannot be read leaves the texture as it is; one with a table keeps it.
  const std::string picture = edits.Files().front();
  folder.Write("pictures/PAINT.png", "no picture");
  EXPECT_EQ(edits.TakeNews(), std::vector<std::string>());
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1u);
  EXPECT_EQ(image->rgba[0], 70);
  SIndexedImage indexed = {.width = 64, .height = 64, .indices = std::vector<uint8_t>(4096, 7)};
  indexed.table[7 * 4] = 33;
  indexed.table[7 * 4 + 3] = 255;
  ASSERT_TRUE(WriteIndexedPng(picture, indexed));
  EXPECT_EQ(edits.TakeNews().size(), 1u);
  EXPECT_EQ(ReadTestFile(raw), std::string(4096, '\7'));
}

}  // namespace veldra::testing

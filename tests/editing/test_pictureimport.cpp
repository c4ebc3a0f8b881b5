#include <gtest/gtest.h>

#include "editing/editfixture.h"
#include "editing/pictureimport.h"
#include "textures/rawtexture.h"

namespace veldra::testing {

namespace {

using ETransparent = SPictureInput::ETransparent;

/// Left half red, right half black, its lower right quarter transparent.
class CPictureImportTest : public CEditTest {
 protected:
  CPictureImportTest() {
    image = {128, 128, std::vector<uint8_t>(size_t{128} * 128 * 4, 0)};
    for (size_t y = 0; y < 128; ++y) {
      for (size_t x = 0; x < 128; ++x) {
        image.rgba[(y * 128 + x) * 4] = x < 64 ? 200 : 0;
        image.rgba[(y * 128 + x) * 4 + 3] = x >= 64 && y >= 64 ? 0 : 255;
      }
    }
    WritePng(path, image, nullptr);
  }

  const std::string path = folder.File("My picture (2).png");
  SImage image;
};

}  // namespace

TEST_F(CPictureImportTest, TakesAPartAndSaysWhatShowsThrough) {
  const struct {
    SPictureInput input;
    int colors;
    int transparent;
  } rows[] = {{{.size = 128}, 3, 64 * 64},
              {{.size = 64, .scaling = EScaling::kNearest}, 3, 32 * 32},
              {{.size = 128, .transparent = ETransparent::kDark}, 2, 64 * 128},
              {{.size = 128, .transparent = ETransparent::kNothing}, 2, 0},
              {{.size = 128, .transparent = ETransparent::kColor, .key = {190, 0, 0}, .key_reach = 10}, 2, 12288},
              {{.size = 128, .transparent = ETransparent::kColor, .key = {190, 0, 0}, .key_reach = 9}, 3, 4096},
              {{.size = 128, .most_colors = 2}, 2, 64 * 64},
              {{.crop = SPictureCrop{0, 0, 64, 64}, .size = 64}, 1, 0},
              {{.crop = SPictureCrop{32, 64, 64, 64}, .size = 64}, 2, 32 * 64}};
  for (const auto& row : rows) {
    const SIndexedTexture made = TextureFrom(path, image, row.input);
    EXPECT_EQ(made.indices.size(), static_cast<size_t>(row.input.size) * static_cast<size_t>(row.input.size));
    EXPECT_EQ(ColorCount(made), row.colors) << &row - rows;
    EXPECT_EQ(TransparentCount(made), row.transparent) << &row - rows;
  }
}

TEST_F(CPictureImportTest, BecomesATextureOfTheModel) {
  const std::string raw = folder.File("MYPICTUR.RAW");
  questions.OnSaveFile("Save Texture", SSavePath{raw});
  ASSERT_TRUE(SaveTextureOfPicture(document, path, TextureFrom(path, image, {.size = 64})));
  const CBinTexture* const made = model.FindTexture("MYPICTUR.RAW", ETextureKind::kPlain);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->Width(), 64);
  EXPECT_TRUE(made->Image()->has_own_colors);
  EXPECT_EQ(ReadTestFile(raw).size(), 4096u);
}

}  // namespace veldra::testing

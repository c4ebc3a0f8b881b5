#include "textures/picturetexture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/picture.h"
#include "support/testfiles.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace veldra {
namespace {

void Append(void* bytes, void* data, int size) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), static_cast<size_t>(size));
}

/// Orange pictures of 64 x 32 pixels of each kind.
class CPictureTest : public ::testing::Test {
 protected:
  CPictureTest() {
    for (size_t i = 0; i < rgba_.size(); i += 4)
      std::copy_n(kOrange.begin(), 4, rgba_.begin() + static_cast<std::ptrdiff_t>(i));
    stbi_write_jpg_to_func(Append, &jpeg_, 64, 32, 4, rgba_.data(), 95);
    stbi_write_bmp_to_func(Append, &bmp_, 64, 32, 4, rgba_.data());
    stbi_write_tga_with_rle = 0;
    stbi_write_tga_to_func(Append, &tga_, 64, 32, 4, rgba_.data());
    stbi_write_png_to_func(Append, &png_, 64, 32, 4, rgba_.data(), 0);
  }

  static constexpr std::array<uint8_t, 4> kOrange = {240, 120, 8, 255};
  std::vector<uint8_t> rgba_ = std::vector<uint8_t>(size_t{64} * 32 * 4);
  std::string jpeg_;
  std::string bmp_;
  std::string tga_;
  std::string png_;
  testing::CTempFolder folder_;
};

TEST_F(CPictureTest, EachKindIsKnownByWhatIsInIt) {
  // What is transparent throughout does not mean it.
  std::string clear = tga_;
  for (size_t i = 18 + 3; i < clear.size(); i += 4)
    clear[i] = '\0';
  const struct {
    const char* name;
    const std::string& bytes;
  } rows[] = {{"a.gif", jpeg_}, {"b.jpg", bmp_}, {"c.bmp", png_}, {"d.TGA", tga_}, {"e.tga", clear}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    SError error;
    const std::string path = folder_.Write(row.name, row.bytes);
    const auto texture = TextureOfPicture(path, {.size = 64}, &error);
    ASSERT_TRUE(texture) << error.what;
    ASSERT_EQ(texture->indices.size(), 4096U);
    for (size_t c = 0; c < 3; ++c)
      EXPECT_NEAR(texture->colors[texture->indices[100] * size_t{3} + c], kOrange[c], 2);
    EXPECT_FALSE(TextureOfPicture(path, {}, &error));
    EXPECT_EQ(error.what, "is 64 x 32 pixels. A texture is square, 64, 128, 256 or 512 pixels wide.");
  }
}

TEST_F(CPictureTest, DamageIsSaidAndTakesNoMemory) {
  std::string huge = tga_.substr(0, 100);
  huge[13] = huge[15] = '\x3F';
  std::string large = bmp_;
  large[20] = '\x7F';
  const struct {
    const char* name;
    std::string bytes;
    const char* fault;
  } rows[] = {{"a.tga", huge, "is too large: 16192 x 16160 pixels"},
              {"b.bmp", large, "is too large: 8323136 x 32 pixels"},
              {"c.jpg", "\xFF\xD8\xFF", "cannot be read: "},
              {"d.jpg", "GIF89a", "is no PNG, JPEG, BMP or TGA picture"},
              {"e.png", png_.substr(0, 60), "the PNG file is cut short"},
              {"f.tga", "", "cannot be read: "},
              {"g.tga", std::string("\xFF\xFF\xD8\xFF\xC4\x01\x23\0", 8) + std::string(16, '\x11'),
               "cannot be read: a Huffman table is missing or has too many codes"}};
  for (const auto& row : rows) {
    SError error;
    EXPECT_FALSE(ReadPicture(folder_.Write(row.name, row.bytes), &error)) << row.name;
    EXPECT_EQ(error.what.substr(0, std::string_view(row.fault).size()), row.fault) << row.name;
  }
}

TEST(PictureTexture, TheNearerWidthIsTaken) {
  EXPECT_EQ(GameTextureSize(1, 159), 64);
  EXPECT_EQ(GameTextureSize(160, 20), 256);
  EXPECT_EQ(GameTextureSize(16384, 16384), 256);
}

}  // namespace
}  // namespace veldra

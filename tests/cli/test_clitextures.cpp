#include <cerrno>

#include "cli/clifixture.h"
#include "platform/files.h"
#include "platform/indexedpng.h"
#include "platform/png.h"

namespace veldra::testing {
namespace {

class CCliTexturesTest : public CCliTest {
 protected:
  /// A table of 256 different colours of which the first is transparent.
  static std::string Colors() {
    std::string colors;
    for (int i = 0; i < 256; ++i)
      colors += {static_cast<char>(i), static_cast<char>(255 - i), static_cast<char>(i / 2)};
    colors[0] = colors[1] = colors[2] = 0;
    return colors;
  }
  static std::string Indices() {
    std::string indices;
    for (int i = 0; i < 64 * 64; ++i)
      indices += static_cast<char>(i % 256);
    return indices;
  }
  void WritePicture(const std::string& name, int width, int height) const {
    const auto bytes = static_cast<size_t>(width * height * 4);
    ASSERT_TRUE(WritePng(folder.File(name), {width, height, std::vector<uint8_t>(bytes, 200)}));
  }
};

TEST_F(CCliTexturesTest, ExportAndImportGiveTheTextureBack) {
  folder.Write("road.raw", Indices());
  folder.Write("road.act", Colors());
  ASSERT_EQ(Run("texture export $/road.raw $/road.png").status, 0);
  const auto picture = ReadPng(folder.File("road.png"));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 64);
  EXPECT_EQ(picture->rgba[3], 0) << "near-black is transparent";
  EXPECT_EQ(std::vector<uint8_t>(picture->rgba.begin() + 4, picture->rgba.begin() + 8),
            (std::vector<uint8_t>{1, 254, 0, 255}));

  ASSERT_EQ(Run("texture import $/road.png $/copy.raw --palette $/road.act").status, 0);
  EXPECT_EQ(ReadTestFile(folder.File("copy.raw")), Indices());
  EXPECT_EQ(ReadTestFile(folder.File("copy.ACT")), Colors());

  ASSERT_EQ(Run("texture import $/road.png $/road.raw").status, 0);
  ASSERT_EQ(Run("texture export $/road.raw $/again.png").status, 0);
  EXPECT_EQ(ReadPng(folder.File("again.png"))->rgba, picture->rgba) << "256 colours are kept exactly";
}

TEST_F(CCliTexturesTest, DefaultColourTableIsTheOptionElseTheSettingElseGrey) {
  folder.Write("bare.raw", std::string(64 * 64, '\x64'));
  folder.Write("given.act", std::string(768, '\x11'));
  folder.Write("set.act", std::string(768, '\x22'));
  const struct {
    std::string setting;
    const char* option;
    uint8_t red;
  } cases[] = {
      {"none", "", 0x64}, {folder.File("set.act"), "", 0x22}, {folder.File("set.act"), "--palette $/given.act ", 0x11}};
  for (const auto& c : cases) {
    folder.Write("Veldra.cfg", "DEFPAL " + c.setting + "\n");
    const SResult result = Run(std::string(c.option) + "texture export $/bare.raw $/bare.png");
    ASSERT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(ReadPng(folder.File("bare.png"))->rgba[0], c.red) << c.setting << ' ' << c.option;
  }
}

TEST_F(CCliTexturesTest, WhatIsNoTextureIsRefused) {
  WritePicture("small.png", 32, 32);
  WritePicture("oblong.png", 64, 128);
  WritePicture("good.png", 64, 64);
  folder.Write("short.raw", std::string(16385, '\0'));
  const std::pair<const char*, const char*> cases[] = {
      {"texture export $/none.raw $/o.png", "could not be opened"},
      {"texture export $/short.raw $/o.png", "Error: Unsupported texture size."},
      {"texture import $/none.png $/o.raw", "could not be opened"},
      {"texture import $/small.png $/o.raw", "is 32 x 32 pixels"},
      {"texture import $/oblong.png $/o.raw", "is 64 x 128 pixels"},
      {"texture import $/short.raw $/o.raw", "could not be opened"},
      {"texture import $/good.png $/o.raw --palette $/none.act", "is not a colour table"},
      {"texture import $/good.png $/o.act", "is the name of the colour table"}};
  const size_t files = ListDirectory(folder.Path()).size();
  for (const auto& [line, message] : cases)
    Expect({{line, 1, "", message}});
  EXPECT_EQ(ListDirectory(folder.Path()).size(), files);
}

TEST_F(CCliTexturesTest, AnIndexedPngKeepsIndicesAndTable) {
  folder.Write("road.raw", Indices());
  folder.Write("road.act", Colors());
  Expect({{"texture export $/road.raw $/road.png --indexed"}, {"texture import $/road.png $/copy.raw"}});
  EXPECT_EQ(ReadTestFile(folder.File("copy.raw")), Indices());
  EXPECT_EQ(ReadTestFile(folder.File("copy.ACT")), Colors());
  const std::string png = ReadTestFile(folder.File("road.png"));
  EXPECT_EQ(png.substr(24, 2), "\x08\x03") << "8 bits, a table";
  EXPECT_EQ(png.substr(png.find("PLTE") + 4, 768), Colors());

  SIndexedImage small{64, 64, std::vector<uint8_t>(64 * 64, 1)};
  small.table = {9, 0, 0, 127, 200, 100, 50, 255, 3, 4, 5, 0, 2, 2, 2, 255};
  ASSERT_TRUE(WriteIndexedPng(folder.File("small.png"), small));
  Expect({{"texture import $/small.png $/small.raw"}});
  EXPECT_EQ(ReadTestFile(folder.File("small.ACT")).substr(0, 12), std::string("\0\0\0\xC8\x64\x32\3\4\5\2\2\2", 12));
}

TEST_F(CCliTexturesTest, InfoResizeAndRepalette) {
  folder.Write("road.raw", Indices());
  folder.Write("road.act", Colors());
  const auto info = [this](const std::string& name) {
    return nlohmann::json::parse(Run("texture info $/" + name + " --json").out);
  };
  EXPECT_EQ(
      info("road.raw"),
      (nlohmann::json{{"name", "road.raw"}, {"width", 64}, {"palette", "own"}, {"colours", 256}, {"transparent", 16}}));
  folder.Write("grey.raw", std::string(64 * 64, '\5'));
  EXPECT_EQ(info("grey.raw")["palette"], "default");

  Expect({{"texture resize $/road.raw $/large.raw --size 128 --nearest"},
          {"texture resize $/large.raw $/back.raw --size 64 --nearest"},
          {"texture resize $/road.raw $/smooth.raw --size 256"},
          {"texture resize $/road.raw $/o.raw --size 100", 2, "", "--size"},
          {"texture resize $/road.raw $/o.raw", 2, "", "--size"}});
  EXPECT_EQ(ReadTestFile(folder.File("back.raw")), Indices());
  EXPECT_EQ(ReadTestFile(folder.File("smooth.ACT")), Colors());
  EXPECT_EQ(info("smooth.raw")["width"], 256);

  std::string grey;
  for (int i = 0; i < 768; ++i)
    grey += static_cast<char>(i / 3);
  folder.Write("grey.act", grey);
  Expect({{"texture repalette $/road.raw $/new.raw --palette $/grey.act"}});
  EXPECT_EQ(info("new.raw")["transparent"], 16);
  EXPECT_EQ(ReadTestFile(folder.File("new.ACT")), grey);
}

TEST_F(CCliTexturesTest, ImportScalesWhatHasAnotherSize) {
  WritePicture("oblong.png", 100, 40);
  Expect({{"texture import $/oblong.png $/o.raw --size 128"},
          {"texture import $/oblong.png $/p.raw --size 64 --nearest"}});
  EXPECT_EQ(ReadTestFile(folder.File("o.raw")).size(), 128U * 128U);
  EXPECT_EQ(ReadTestFile(folder.File("p.ACT")).substr(0, 3), "\xC8\xC8\xC8");
}

TEST_F(CCliTexturesTest, FailedImportLeavesBothFilesAsTheyWere) {
  WritePicture("good.png", 64, 64);
  folder.Write("t.raw", "old indices");
  folder.Write("t.ACT", "old colours");
  int files = 0;
  SetFileFault([&](std::string_view operation, std::string_view) {
    return operation == "sync" && ++files == 2 ? kDiskFull : 0;
  });
  const SResult result = Run("texture import $/good.png $/t.raw");
  SetFileFault({});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("t.ACT: disk full"), std::string::npos) << result.err;
  EXPECT_EQ(ReadTestFile(folder.File("t.raw")), "old indices");
  EXPECT_EQ(ReadTestFile(folder.File("t.ACT")), "old colours");
}

}  // namespace
}  // namespace veldra::testing

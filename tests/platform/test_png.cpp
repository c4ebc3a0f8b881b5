#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <array>

#include "platform/compress.h"
#include "platform/files.h"
#include "platform/png.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

using testing::CTempFolder;
using testing::ReadTestFile;

std::string BigEndian(size_t value, int width = 4) {
  std::string bytes;
  for (int i = width - 1; i >= 0; --i)
    bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

std::string Chunk(const std::string& type, const std::string& data) {
  const std::string body = type + data;
  return BigEndian(data.size()) + body +
         BigEndian(Checksum({reinterpret_cast<const uint8_t*>(body.data()), body.size()}));
}

std::string Packed(const std::string& data) {
  const auto packed = Compress({reinterpret_cast<const uint8_t*>(data.data()), data.size()});
  return {packed.begin(), packed.end()};
}

struct SPng {
  const char* what;
  uint32_t width, height;
  uint8_t depth, colour_type;
  std::string extra;  ///< chunks before the pixels
  std::string rows;   ///< each with its filter byte
};

std::string PngBytes(const SPng& png) {
  const std::string header = BigEndian(png.width) + BigEndian(png.height) + static_cast<char>(png.depth) +
                             static_cast<char>(png.colour_type) + std::string(3, '\0');
  return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", header) + png.extra + Chunk("IDAT", Packed(png.rows)) + Chunk("IEND", "");
}

std::string Row(const std::vector<int>& samples) {
  std::string row(1, '\0');
  for (const int sample : samples)
    row += static_cast<char>(sample);
  return row;
}

const std::vector<uint8_t> kTwoByTwo = {1, 2, 3, 255, 200, 100, 0, 0, 9, 8, 7, 128, 255, 255, 255, 255};

TEST(Png, ComesBackAsWritten) {
  const CTempFolder folder;
  const std::string path = folder.File("x.png");
  ASSERT_TRUE(WritePng(path, {2, 2, kTwoByTwo}));
  const auto image = ReadPng(path);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->width, 2);
  EXPECT_EQ(image->height, 2);
  EXPECT_EQ(image->rgba, kTwoByTwo);
  EXPECT_FALSE(WritePng(folder.File("none/x.png"), {2, 2, kTwoByTwo}));
}

TEST(Png, OfEveryKindBecomesRgba) {
  const std::string palette = Chunk("PLTE", std::string("\x0A\x14\x1E\xC8\xC9\xCA", 6));
  const struct {
    SPng png;
    std::vector<uint8_t> rgba;
  } kCases[] = {
      {{"grey, one bit", 2, 1, 1, 0, "", Row({0x40})}, {0, 0, 0, 255, 255, 255, 255, 255}},
      {{"palette, four bits, transparent", 2, 1, 4, 3, palette + Chunk("tRNS", std::string(1, '\x80')), Row({0x10})},
       {200, 201, 202, 255, 10, 20, 30, 128}},
      {{"colour, 16 bits", 1, 1, 16, 2, "", Row({128, 128, 64, 64, 255, 255})}, {128, 64, 255, 255}},
      {{"grey and alpha", 2, 1, 8, 4, "", Row({50, 60, 70, 0})}, {50, 50, 50, 60, 70, 70, 70, 0}}};
  const CTempFolder folder;
  for (const auto& each : kCases) {
    SError error;
    const auto image = ReadPng(folder.Write("x.png", PngBytes(each.png)), &error);
    EXPECT_EQ(error.what, "") << each.png.what;
    EXPECT_EQ(image.value_or(SImage{}).rgba, each.rgba) << each.png.what;
  }
}

TEST(Png, CutShortAnywhereIsRefused) {
  const CTempFolder folder;
  ASSERT_TRUE(WritePng(folder.File("whole.png"), {2, 2, kTwoByTwo}));
  const std::string whole = ReadTestFile(folder.File("whole.png"));
  for (size_t length = 0; length < whole.size(); ++length) {
    SError error;
    EXPECT_FALSE(ReadPng(folder.Write("x.png", whole.substr(0, length)), &error)) << length;
    EXPECT_NE(error.what, "");
  }
}

TEST(Png, WithSidesThatCannotBeIsRefused) {
  const SPng kCases[] = {{"no width", 0, 1, 8, 0, "", Row({0})},
                         {"no height", 1, 0, 8, 0, "", Row({0})},
                         {"too large for what it holds", kLargestImageSide, kLargestImageSide, 8, 6, "", Row({0})},
                         {"too wide", kLargestImageSide + 1, 1, 1, 0, "", std::string(3000, '\0')},
                         {"too high", 1, 0xFFFFFFFF, 8, 0, "", Row({0})},
                         {"fewer pixels than the sides say", 10, 10, 8, 0, "", Row({0})},
                         {"no such colour type", 1, 1, 8, 5, "", Row({0})},
                         {"no such depth", 1, 1, 5, 0, "", Row({0})},
                         {"palette colours without a palette", 1, 1, 8, 3, "", Row({0})}};
  const CTempFolder folder;
  for (const SPng& each : kCases) {
    SError error;
    EXPECT_FALSE(ReadPng(folder.Write("x.png", PngBytes(each)), &error)) << each.what;
    EXPECT_NE(error.what, "") << each.what;
  }
}

TEST(Png, IsReadNoFurtherThanItsPicture) {
  const CTempFolder folder;
  const std::string png =
      PngBytes({"", 1, 1, 8, 2, Chunk("zTXt", std::string(5000, 'x')) + Chunk("blAh", ""), Row({1, 2, 3})});
  const std::string path = folder.Write("x.png", png);
  std::filesystem::resize_file(path, uint64_t{3} << 30);
  const auto image = ReadPng(path);
  ASSERT_TRUE(image) << "three gigabytes behind the end mark are not read";
  EXPECT_EQ(image->rgba, (std::vector<uint8_t>{1, 2, 3, 255}));
  SError error;
  folder.Write("x.png", PngBytes({"", 1, 1, 8, 2, Chunk("IDAT", std::string(3 << 20, '\0')), Row({1, 2, 3})}));
  EXPECT_FALSE(ReadPng(path, &error));
  EXPECT_EQ(error.what, "the PNG file holds far more than its picture");
  EXPECT_EQ(ReadPngSize(path)->width, 1);
}

}  // namespace
}  // namespace veldra

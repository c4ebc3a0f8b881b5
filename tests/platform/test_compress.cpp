#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "platform/compress.h"

namespace veldra {

namespace {

std::vector<uint8_t> Noise(size_t size) {
  std::mt19937 random(static_cast<unsigned>(size));
  std::vector<uint8_t> bytes(size);
  for (uint8_t& byte : bytes)
    byte = static_cast<uint8_t>(random());
  return bytes;
}

TEST(Compress, GivesBackWhatItWasGiven) {
  const std::vector<uint8_t> contents[] = {{},           {7},          std::vector<uint8_t>(3'000'000, 9),
                                           Noise(65535), Noise(65536), Noise(300'000)};
  for (const auto& content : contents) {
    const auto packed = Compress(content);
    EXPECT_EQ(Decompress(packed, content.size()), content);
    EXPECT_EQ(Decompress(packed, content.size() + 1), content);
  }
  EXPECT_LT(Compress(contents[2]).size(), 30'000u);
}

TEST(Compress, RefusesMoreThanTheLimitHoweverWellItWasPacked) {
  const auto packed = Compress(std::vector<uint8_t>(100'000'000));
  EXPECT_LT(packed.size(), 1'000'000u);
  for (const size_t limit : {size_t{0}, size_t{1}, size_t{65536}, size_t{99'999'999}})
    EXPECT_FALSE(Decompress(packed, limit)) << limit;
}

TEST(Compress, NeverTakesDamagedBytesForOtherContents) {
  auto content = Noise(300);
  content.resize(2000, 1);
  const auto packed = Compress(content);
  for (size_t length = 0; length < packed.size(); ++length) {
    const auto block = std::make_unique<uint8_t[]>(length);
    std::copy_n(packed.begin(), length, block.get());
    EXPECT_FALSE(Decompress({block.get(), length}, content.size())) << length;
  }
  for (size_t i = 0; i < packed.size(); ++i) {
    auto changed = packed;
    changed[i] ^= 0x55;
    // Some changes mean the same; none may mean something else.
    const auto result = Decompress(changed, content.size() + 2000);
    EXPECT_TRUE(!result || *result == content) << i;
  }
  auto longer = packed;
  longer.push_back(0);
  EXPECT_FALSE(Decompress(longer, content.size()));
}

TEST(Checksum, IsCrc32) {
  const std::string_view text = "123456789";
  EXPECT_EQ(Checksum({reinterpret_cast<const uint8_t*>(text.data()), text.size()}), 0xCBF43926u);
  EXPECT_EQ(Checksum({}), 0u);
}

}  // namespace

}  // namespace veldra

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "model/snapshot.h"
#include "model/snapshotformat.h"
#include "platform/compress.h"
#include "support/richmodel.h"

namespace veldra::testing {

namespace {

std::vector<uint8_t> Snapshot(const CBinModel& model) {
  CByteWriter out;
  WriteSnapshot(model, out);
  return {out.Bytes().begin(), out.Bytes().end()};
}

/// Gives changed bytes the checksum that they should have, so that the reader has to look at them.
void Reseal(std::vector<uint8_t>& bytes) {
  const uint32_t checksum = Checksum(std::span(bytes).subspan(snapshot::kHeaderSize));
  for (size_t i = 0; i < 4; ++i)
    bytes[snapshot::kHeaderSize - 4 + i] = static_cast<uint8_t>(checksum >> (8 * i));
}

/// A blank texture for whatever name.
class CBlankTextures : public CScriptedQuestions {
 public:
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {.choice = STextureAnswer::EChoice::kBlank, .width = 64};
  }
};

class SnapshotTest : public ::testing::Test {
 protected:
  void Make(CBinModel& model, unsigned seed, int32_t vertices, int32_t faces) {
    CRichModelMaker(model, textures_, seed).Make(vertices, faces);
  }
  std::vector<uint8_t> SmallSnapshot(unsigned seed) {
    CBinModel model;
    Make(model, seed, 12, 15);
    return Snapshot(model);
  }
  /// In a block of exactly its size, so that the sanitizer sees one byte too far.
  bool Read(CBinModel& model, std::span<const uint8_t> bytes, SDiagnosis* diagnosis = nullptr) {
    const auto block = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    return ReadSnapshot(model, {block.get(), bytes.size()}, textures_.Finder(), diagnosis);
  }
  void ExpectRefused(std::span<const uint8_t> bytes) {
    CBinModel model;
    SDiagnosis diagnosis;
    EXPECT_FALSE(Read(model, bytes, &diagnosis));
    EXPECT_NE(diagnosis.what, "");
    EXPECT_EQ(model.VertexCount() + model.FaceCount() + model.TextureCount(), 0);
  }

  CTextureSet textures_;
};

TEST_F(SnapshotTest, BringsBackEverythingExactly) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    CBinModel model;
    Make(model, seed, static_cast<int32_t>(seed * 7), static_cast<int32_t>(seed * 11));
    const std::vector<uint8_t> bytes = Snapshot(model);
    CBinModel copy;
    ASSERT_TRUE(Read(copy, bytes));
    ExpectEqualModels(model, copy);
    EXPECT_EQ(Snapshot(copy), bytes);
  }
}

TEST_F(SnapshotTest, NoticesEveryTruncationAnythingBehindItAndEveryChangedBit) {
  std::vector<uint8_t> bytes = SmallSnapshot(3);
  for (size_t length = 0; length < bytes.size(); ++length)
    ExpectRefused(std::span(bytes).first(length));
  bytes.push_back(0);
  ExpectRefused(bytes);
  bytes.pop_back();
  for (size_t bit = 0; bit < bytes.size() * 8; bit += 3) {
    bytes[bit / 8] = static_cast<uint8_t>(bytes[bit / 8] ^ (1u << (bit % 8)));
    ExpectRefused(bytes);
    bytes[bit / 8] = static_cast<uint8_t>(bytes[bit / 8] ^ (1u << (bit % 8)));
  }
}

TEST_F(SnapshotTest, WrongContentsUnderARightChecksumDoNoHarm) {
  const std::vector<uint8_t> good = SmallSnapshot(5);
  std::mt19937 random(17);
  int refused = 0;
  for (int round = 0; round < 2000; ++round) {
    std::vector<uint8_t> bytes = good;
    for (int changes = 1 + static_cast<int>(random() % 3); changes > 0; --changes)
      bytes[snapshot::kHeaderSize + random() % (bytes.size() - snapshot::kHeaderSize)] = static_cast<uint8_t>(random());
    Reseal(bytes);
    CBlankTextures questions;
    CTextureStore store(questions, GreyRamp());
    CTextureFinder finder(store, questions, "nowhere");
    CBinModel model;
    if (ReadSnapshot(model, bytes, finder)) {
      ASSERT_EQ(model.CheckInvariants(), "");
    } else {
      ++refused;
      ASSERT_EQ(model.VertexCount() + model.TextureCount(), 0);
    }
  }
  EXPECT_GT(refused, 100);
  EXPECT_LT(refused, 1900);
}

TEST_F(SnapshotTest, CountsThatTheBytesCannotHoldAreRefusedBeforeMemoryIsTaken) {
  const std::vector<uint8_t> good = SmallSnapshot(6);
  for (size_t count = 0; count < 3; ++count) {
    std::vector<uint8_t> bytes = good;
    // The counts stand behind the scale word; each takes one byte in so small a model.
    const uint8_t most[] = {0xFF, 0xFF, 0xFF, 0xFF, 0x07};
    bytes[snapshot::kHeaderSize + 4 + count] = most[0];
    bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(snapshot::kHeaderSize + 5 + count), most + 1, most + 5);
    const auto length = static_cast<uint8_t>((bytes.size() - snapshot::kHeaderSize) & 0xFF);
    bytes[12] = length;
    bytes[13] = static_cast<uint8_t>((bytes.size() - snapshot::kHeaderSize) >> 8);
    Reseal(bytes);
    CBinModel model;
    SDiagnosis diagnosis;
    EXPECT_FALSE(Read(model, bytes, &diagnosis));
    EXPECT_NE(diagnosis.what.find("than counted"), std::string::npos) << diagnosis.what;
  }
}

TEST_F(SnapshotTest, AMissingTextureThatTheUserGivesUpStopsIt) {
  const std::vector<uint8_t> bytes = SmallSnapshot(7);
  CScriptedQuestions questions;
  questions.OnTexture("Texture T0.RAW not found.", {});
  CTextureStore store(questions, GreyRamp());
  CTextureFinder finder(store, questions, "nowhere");
  CBinModel model;
  SDiagnosis diagnosis;
  EXPECT_FALSE(ReadSnapshot(model, bytes, finder, &diagnosis));
  EXPECT_EQ(diagnosis.what, "no texture was chosen for T0.RAW");
}

}  // namespace

}  // namespace veldra::testing

#include <gtest/gtest.h>

#include <limits>

#include "platform/bytes.h"

namespace veldra {
namespace {

const std::vector<uint8_t> kBytes(16);

TEST(ByteReader, LatchesTheFirstFailureWhereItHappened) {
  CByteReader reader(kBytes);
  reader.Seek(13);
  EXPECT_EQ(reader.ReadU32(), 0U);
  EXPECT_TRUE(reader.Failed());
  EXPECT_EQ(reader.Position(), 13U);
  // One byte would be there, but what it means is unknown by now.
  EXPECT_EQ(reader.ReadU8(), 0);
  EXPECT_TRUE(reader.ReadBytes(1).empty());
  reader.Seek(0);
  EXPECT_EQ(reader.Position(), 13U);
  EXPECT_EQ((SDiagnosis{reader.Position(), "cut short"}.Text()), "at byte 13: cut short");
}

TEST(ByteReader, RefusesSizesThatWouldWrap) {
  constexpr size_t kMost = std::numeric_limits<size_t>::max();
  CByteReader reader(kBytes);
  EXPECT_TRUE(reader.Holds(4, 4));
  EXPECT_FALSE(reader.Holds(5, 4));
  EXPECT_FALSE(reader.Holds(kMost / 4 + 2, 4));
  EXPECT_FALSE(reader.Holds(kMost, kMost));
  reader.ReadU8();
  EXPECT_TRUE(reader.ReadBytes(kMost).empty());
  EXPECT_TRUE(reader.Failed());
  EXPECT_FALSE(reader.Holds(0, 4)) << "nothing can be read behind a failure";

  CByteReader seeker(kBytes);
  seeker.Seek(kBytes.size());
  EXPECT_FALSE(seeker.Failed());
  seeker.Seek(kBytes.size() + 1);
  EXPECT_TRUE(seeker.Failed());
}

}  // namespace
}  // namespace veldra

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "model/seeds.h"
#include "platform/text.h"

namespace veldra::testing {
namespace {

/// The definition, word for word.
std::vector<int32_t> ByAllPairs(const std::vector<WrappedPoint>& points, int32_t threshold) {
  std::vector<int32_t> seeds(points.size());
  for (size_t i = 0; i < points.size(); ++i) {
    seeds[i] = static_cast<int32_t>(i);
    for (size_t j = 0; j < i && seeds[i] == static_cast<int32_t>(i); ++j) {
      if (seeds[j] != static_cast<int32_t>(j)) continue;
      uint32_t sum = 0;
      for (size_t axis = 0; axis < 3; ++axis)
        sum += (points[i][axis] - points[j][axis]) * (points[i][axis] - points[j][axis]);
      const auto square = static_cast<int32_t>(sum);
      if (square >= 0 && static_cast<int32_t>(std::sqrt(static_cast<double>(square))) <= threshold)
        seeds[i] = static_cast<int32_t>(j);
    }
  }
  return seeds;
}

struct SCloud {
  const char* name;
  uint32_t spread;    ///< coordinates are below it
  uint32_t multiple;  ///< and multiples of it
};

TEST(Seeds, AreThoseOfAllPairs) {
  constexpr SCloud kClouds[] = {{"small", 300, 1},
                                {"just not wrapping", 37837, 1},
                                {"just wrapping", 0x10000, 1},
                                {"wide", 0x200000, 1},
                                {"half", 0x80000000, 1},
                                {"whole range", 0, 1},
                                {"even halves", 0, 0x10000},
                                {"largest distances", 0, 0x7FFFFFFF},
                                {"other halves", 0, 0x8001}};
  std::mt19937 random(7);
  for (const SCloud& cloud : kClouds) {
    for (const size_t count : {1, 63, 130, 1500, 3000}) {
      std::vector<WrappedPoint> points(count);
      for (WrappedPoint& p : points)
        for (uint32_t& c : p)
          c = (cloud.spread == 0 ? static_cast<uint32_t>(random()) : static_cast<uint32_t>(random()) % cloud.spread) *
              cloud.multiple;
      for (const int32_t threshold : {0, 1, 40, 900, 20000, 46339, 46340, 0x7FFFFFFF})
        ASSERT_EQ(AssignSeeds(points, threshold), ByAllPairs(points, threshold))
            << cloud.name << ", " << count << " points, " << threshold;
    }
  }
}

TEST(Seeds, OfAHugeCloudCanBeStopped) {
  struct CStop : CProgress {
    bool Step(uint64_t done, uint64_t) override { return done < 1000; }
  } stop;
  std::mt19937 random(1);
  std::vector<WrappedPoint> points(5000);
  for (WrappedPoint& p : points)
    p = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random()), static_cast<uint32_t>(random())};
  EXPECT_TRUE(AssignSeeds(points, 5, &stop).empty());
}

}  // namespace
}  // namespace veldra::testing

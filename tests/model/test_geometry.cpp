#include "model/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "model/modelbuilder.h"

namespace veldra {
namespace {

using testing::CModelBuilder;
using testing::kLeast;
using testing::kMost;
using Indices = std::vector<int32_t>;
using Positions = std::vector<SPoint>;

TEST(Geometry, ResizeTruncatesTowardZero) {
  CModelBuilder b;
  b.Vertices({{-3, 3, 10}, {7, -7, kMost}});
  const Indices first = {0};
  EXPECT_EQ(Resize(b.model, SScope::OfVertices(first), 0.5, 0.5, -1.25), "");
  EXPECT_EQ(b.Positions(), (Positions{{-1, 1, -12}, {7, -7, kMost}}));
  EXPECT_EQ(b.model.Bounds(), (SBounds{{-1, -7, -12}, {7, 1, kMost}}));
  b.TakeReports();

  const std::string fault = Resize(b.model, SScope::All(), 2, 2, 1.5);
  EXPECT_NE(fault.find("Vertex 1"), std::string::npos) << fault;
  EXPECT_NE(fault.find("z = 3221225470"), std::string::npos) << fault;
  EXPECT_NE(Resize(b.model, SScope::All(), std::nan(""), 1, 1), "");
  EXPECT_EQ(b.Positions(), (Positions{{-1, 1, -12}, {7, -7, kMost}}));
  EXPECT_TRUE(b.TakeReports().empty());
}

TEST(Geometry, TranslateWrapsAndZeroDoesNothing) {
  CModelBuilder b;
  b.Vertices({{1, 2, 3}, {kMost, kLeast, 0}});
  b.TakeReports();
  Translate(b.model, SScope::All(), 0, 0, 0);
  const Indices nothing;
  Translate(b.model, SScope::OfVertices(nothing), 1, 1, 1);
  EXPECT_TRUE(b.TakeReports().empty());

  Translate(b.model, SScope::All(), 1, -1, 5);
  EXPECT_EQ(b.Positions(), (Positions{{2, 1, 8}, {kLeast, kMost, 5}}));
  EXPECT_EQ(b.model.Bounds(), (SBounds{{kLeast, 1, 5}, {2, kMost, 8}}));
  const auto reports = b.TakeReports();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_TRUE(reports[0].positions && !reports[0].topology);
}

TEST(Geometry, RotateIsExactWhereSineAndCosineAre) {
  constexpr double kPi = std::numbers::pi;
  struct SCase {
    EAxis axis;
    double angle;
    bool radians;
    SPoint expected;
  };
  const SCase cases[] = {
      {EAxis::kX, 90, false, {10, -300, 20}},      {EAxis::kY, 90, false, {300, 20, -10}},
      {EAxis::kX, -90, false, {10, 300, -20}},     {EAxis::kZ, kPi / 2, true, {-20, 10, 300}},
      {EAxis::kZ, -450, false, {20, -10, 300}},    {EAxis::kX, 50 * kPi, true, {10, 20, 300}},
      {EAxis::kX, 30, false, {10, -132, 269}},      // 20 × 0.866 - 150; 10 + 300 × 0.866
      {EAxis::kZ, 5 * kPi / 3, true, {22, 1, 300}}  // 5 + 17.3; -8.7 + 10
  };
  for (const SCase& c : cases) {
    CModelBuilder b;
    b.Vertices({{10, 20, 300}});
    EXPECT_EQ(Rotate(b.model, SScope::All(), c.axis, c.angle, c.radians), "");
    EXPECT_EQ(b.Positions(), Positions{c.expected}) << static_cast<int>(c.axis) << ' ' << c.angle;
  }
}

TEST(Geometry, RotateRefusesWhatDoesNotFit) {
  CModelBuilder b;
  b.Vertices({{0, 0, 0}, {kLeast, kMost, 0}});
  EXPECT_NE(Rotate(b.model, SScope::All(), EAxis::kZ, 45, false).find("Vertex 1"), std::string::npos);
  EXPECT_NE(Rotate(b.model, SScope::All(), EAxis::kX, std::numeric_limits<double>::infinity(), false), "");
  EXPECT_EQ(b.Positions(), (Positions{{0, 0, 0}, {kLeast, kMost, 0}}));
}

TEST(Geometry, MirrorTurnsRoundTheFacesThatMoveWhole) {
  CModelBuilder b;
  b.Vertices({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, kLeast}, {13, 14, 15}});
  CBinFace& quad = b.Face({0, 1, 2, 3});
  for (int k = 0; k < 4; ++k)
    quad.SetTexCoord(k, {k / 4.0, 1.0});
  b.Face({1, 2, 4});
  const Indices moved = {0, 1, 2, 3};
  Mirror(b.model, SScope::OfVertices(moved), EAxis::kZ);
  EXPECT_EQ(b.Positions(), (Positions{{1, 2, -3}, {4, 5, -6}, {7, 8, -9}, {10, 11, kLeast}, {13, 14, 15}}));
  EXPECT_EQ(b.Corners(0), (Indices{0, 3, 2, 1}));
  EXPECT_EQ(quad.TexCoord(1), (STexCoord{0.75, 1.0}));
  EXPECT_EQ(b.Corners(1), (Indices{1, 2, 4}));
  EXPECT_EQ(b.model.CheckInvariants(), "");
}

TEST(Geometry, CenterMovesByTheTruncatedMiddle) {
  struct SCase {
    int32_t low, high, expected_low;
  };
  const SCase cases[] = {
      {0, 5, -2}, {-5, 0, -3}, {-4, 4, -4}, {kMost - 2, kMost, -1}, {kLeast, kLeast, 0}, {kLeast, kMost, kLeast}};
  for (const SCase& c : cases) {
    CModelBuilder b;
    b.Vertices({{9, c.low, 7}, {9, c.high, 7}});
    Center(b.model, EAxis::kY);
    EXPECT_EQ(b.model.Vertex(0).Position(), (SPoint{9, c.expected_low, 7})) << c.low << ' ' << c.high;
  }
}

TEST(Geometry, DistanceWrapsLikeTheGame) {
  struct SCase {
    SPoint to;
    int32_t expected;
  };
  const SCase cases[] = {{{3, 4, 0}, 5},          {{1, 1, 1}, 1},      {{46340, 0, 0}, 46340},
                         {{46341, 0, 0}, kMost},  {{65536, 0, 0}, 0},  {{65536, 65536, 65541}, 809},
                         {{kLeast, 0, kMost}, 1}, {{92682, 0, 0}, 136}};
  for (const SCase& c : cases) {
    CModelBuilder b;
    b.Vertices({{0, 0, 0}, c.to});
    EXPECT_EQ(Distance(b.model.Vertex(0), b.model.Vertex(1)), c.expected) << c.to.x;
    EXPECT_FALSE(IsSamePosition(b.model.Vertex(0), b.model.Vertex(1)));
  }
}

}  // namespace
}  // namespace veldra

#include <gtest/gtest.h>

#include <cmath>

#include "mapping/guidelist.h"
#include "mapping/texelsnap.h"
#include "mapping/texeltransforms.h"

namespace veldra {

inline void PrintTo(const STexel& at, std::ostream* out) {
  *out << '(' << at.x << ' ' << at.y << ')';
}

namespace testing {

namespace {

Texels Around(const Texels& points) {
  Texels near;
  for (const STexel& at : points)
    near.push_back({std::round(at.x * 1e6) / 1e6 + 0.0, std::round(at.y * 1e6) / 1e6 + 0.0});
  return near;
}

const Texels kBox = {{10, 20}, {30, 20}, {30, 30}, {10, 30}};

}  // namespace

/// Whatever the width, a texel that is shown is the texel that comes back from a saved file.
TEST(CTexelsTest, AreThoseThatAFileKeeps) {
  constexpr double kOne = 0xFFFFFF;
  for (const int width : {64, 128, 256, 512}) {
    for (int texel = 0; texel < width; ++texel) {
      const STexCoord coord = CoordOf({double(texel), double(width - 1 - texel)}, width);
      EXPECT_EQ(TexelOf(coord, width), (STexel{double(texel), double(width - 1 - texel)})) << width;
      const auto saved = static_cast<int64_t>(coord.u * kOne);
      EXPECT_EQ(saved * (width - 1) / 0xFFFFFF, texel) << width;
    }
  }
  EXPECT_EQ(CoordOf({-3, 99}, 64), (STexCoord{0, 1}));
  EXPECT_DOUBLE_EQ(CoordOf({10.5, 0}, 64).u, 10.5 / 63);
}

TEST(CTexelsTest, AreMovedTurnedAndScaled) {
  const struct {
    const char* what;
    Texels is;
    Texels expected;
  } rows[] = {
      {"turned", Turned(kBox, {20, 25}, 90), {{25, 15}, {25, 35}, {15, 35}, {15, 15}}},
      {"four turns", Turned(Turned(Turned(Turned(kBox, {3, 7}, 90), {3, 7}, 90), {3, 7}, 90), {3, 7}, 90), kBox},
      {"half", Turned({{{20, 20}}}, {10, 20}, 45), {{17.071068, 27.071068}}},
      {"scaled", Scaled(kBox, {10, 20}, 2, 0.5), {{10, 20}, {50, 20}, {50, 25}, {10, 25}}},
      {"flipped across", Flipped({{{1, 5}, {4, 6}}}, ETexelAxis::kAcross), {{4, 5}, {1, 6}}},
      {"flipped down", Flipped({{{1, 5}, {4, 6}}}, ETexelAxis::kDown), {{1, 6}, {4, 5}}},
      {"stretched", Stretched(kBox, {{0, 0}, {63, 31}}), {{0, 0}, {63, 0}, {63, 31}, {0, 31}}},
      {"without height", Stretched({{{1, 5}, {4, 5}}}, {{0, 0}, {63, 31}}), {{0, 15.5}, {63, 15.5}}},
      {"level", Straightened({{{1, 5}, {20, 8}}}), {{1, 7}, {20, 7}}},
      {"upright", Straightened({{{1, 5}, {2, 80}}}), {{2, 5}, {2, 80}}},
      {"kept inside", KeptInside({{{-5, 60}, {10, 70}}}, 64), {{0, 53}, {15, 63}}},
      {"made smaller", KeptInside({{{0, 0}, {126, 63}}}, 64), {{0, 0}, {63, 31.5}}},
      {"stopped", {StoppedAtEdge({{10, 20}, {30, 30}}, {-50, 50}, 64)}, {{-10, 33}}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Around(row.is), Around(row.expected)) << row.what;
}

/// Pressing again goes through the parts of an atlas, and comes back.
TEST(CTexelsTest, GoThroughThePartsOfATexture) {
  EXPECT_EQ(PartOf(64, 3, 1, 2), (STexelRect{{21, 42}, {41, 63}}));
  const std::vector<STexturePart> parts = TextureParts(64);
  ASSERT_EQ(parts.size(), 14u);
  EXPECT_EQ(parts[1].name, "quarter 1 of 4");
  EXPECT_EQ(parts[13].area, (STexelRect{{42, 42}, {63, 63}}));

  const struct {
    EJustify side;
    std::vector<double> places;  ///< where the low side of ten texels comes to lie, press by press
  } rows[] = {{EJustify::kLeft, {0, 32, 21, 42, 16, 48, 0}},
              {EJustify::kCenter, {27, 11, 43, 5, 26, 48, 3, 19, 35, 51, 27}},
              {EJustify::kRight, {54, 22, 11, 32, 6, 38, 54}},
              {EJustify::kTop, {0, 32}},
              {EJustify::kMiddle, {27, 11}},
              {EJustify::kBottom, {54, 22}}};
  for (const auto& row : rows) {
    STexelRect box = {{7, 7}, {16, 16}};
    int press = 0;
    for (const double place : row.places) {
      const STexel by = JustifyOffset(box, row.side, 64, press++);
      box = {box.min + by, box.max + by};
      EXPECT_EQ(row.side < EJustify::kTop ? box.min.x : box.min.y, place) << int(row.side);
    }
  }
}

TEST(CTexelsTest, AlignOneEdgeAfterTheOther) {
  for (const bool is_mirrored : {false, true}) {
    Texels face = {{10, 10}, {40, 20}, {30, 50}, {0, 40}};
    if (is_mirrored) face = Flipped(face, ETexelAxis::kAcross);
    std::vector<double> turns;
    for (int press = 0; press < 4; ++press) {
      turns.push_back(AlignAngle(face));
      face = Turned(face, {20, 30}, turns.back());
      int level_below = 0;
      const double lowest = BoundsOf(face).max.y;
      for (const STexel& at : face)
        level_below += std::abs(at.y - lowest) < 1e-9;
      EXPECT_EQ(level_below, 2);
    }
    EXPECT_LT(std::abs(turns[0]), 45.0);
    for (int press = 1; press < 4; ++press)
      EXPECT_NEAR(std::abs(turns[static_cast<size_t>(press)]), 90.0, 1e-6);
  }
}

TEST(CTexelsTest, SnapToWhatIsNear) {
  const STextureGuides guides = {.across = {32}, .down = {10}};
  const STexel corner[] = {{50, 40}};
  const SDragged box = {std::nullopt, {{10, 20}, {20, 30}}};
  const SDragged grabbed = {STexel{10, 20}, {{10, 20}, {20, 30}}};
  const struct {
    const char* what;
    SDragged dragged;
    STexel by;
    STexelSnap snap;
    STexel expected;
  } rows[] = {{"texels", box, {1.4, -2.6}, {}, {1, -3}},
              {"free", box, {1.4, -2.6}, {.to_texels = false}, {1.4, -2.6}},
              {"the right side to a guide", box, {10.7, 0.2}, {.reach = 2, .guides = &guides}, {12, 0}},
              {"the middle to a guide", box, {3, -14.2}, {.reach = 1, .guides = &guides}, {3, -15}},
              {"too far", box, {8.4, 0}, {.reach = 2, .guides = &guides}, {8, 0}},
              {"the corner to a corner", grabbed, {39, 21}, {.reach = 2, .corners = corner}, {40, 20}},
              {"the corner to a guide", grabbed, {21, 3.3}, {.reach = 2, .guides = &guides}, {22, 3}}};
  for (const auto& row : rows)
    EXPECT_EQ(SnappedOffset(row.dragged, row.by, row.snap), row.expected) << row.what;
}

TEST(Guides, ComeBackWithTheirTextures) {
  NamedGuides all;
  KeepGuides(all, "A|B.RAW", {.across = {4, 10.5}, .down = {}});
  KeepGuides(all, "C.RAW", {.across = {}, .down = {511}});
  KeepGuides(all, "D.RAW", {.across = {1}, .down = {2}});
  KeepGuides(all, "D.RAW", {});
  EXPECT_EQ(all.size(), 2u);
  EXPECT_EQ(GuidesOf(GuidesText(all)), all);
  for (const char* nonsense : {"X.RAW|1", "|1|2", "X.RAW|1 x|2", "X.RAW|-1|", "X.RAW|| 512", "X.RAW|nan|"})
    EXPECT_EQ(GuidesOf(nonsense), NamedGuides()) << nonsense;
  for (size_t i = 0; i < kMostGuidedTextures; ++i)
    KeepGuides(all, std::to_string(i), {.across = {1}, .down = {}});
  EXPECT_EQ(all.size(), kMostGuidedTextures);
  EXPECT_EQ(all.front().first, "0") << "the oldest ones went";
}

}  // namespace testing
}  // namespace veldra

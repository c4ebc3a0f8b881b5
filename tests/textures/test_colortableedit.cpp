#include "textures/colortableedit.h"

#include <gtest/gtest.h>

namespace veldra {
namespace {

using Color = CColorTableEdit::Color;

TEST(ColorTableEdit, ExchangesChangesAndStepsBack) {
  SIndexedTexture texture = {std::vector<uint8_t>(4096, 5), GreyRamp()};
  texture.indices[0] = 200;
  CColorTableEdit table(texture);
  EXPECT_EQ(table.UseCount(5), 4095);
  EXPECT_TRUE(table.IsTransparent(8));
  EXPECT_FALSE(table.IsTransparent(9));

  table.Exchange(5, 200, true);
  EXPECT_EQ(table.ColorOf(5), (Color{200, 200, 200}));
  EXPECT_EQ(table.Texture().indices[0], 5);
  EXPECT_EQ(table.UseCount(200), 4095);
  table.Exchange(5, 200, false);
  EXPECT_EQ(table.UseCount(200), 4095);
  EXPECT_EQ(table.ColorOf(200), (Color{200, 200, 200}));
  table.SetTransparent(200, true);
  EXPECT_EQ(table.ColorOf(200), (Color{0, 0, 0}));
  table.SetTransparent(200, false);
  EXPECT_EQ(table.ColorOf(200), (Color{9, 9, 9}));
  table.SetTable(ColorTable{});
  EXPECT_TRUE(table.IsTransparent(255));

  int steps = 0;
  for (; table.CanStepBack(); ++steps)
    table.StepBack();
  EXPECT_EQ(steps, 5);
  EXPECT_EQ(table.Texture().indices, texture.indices);
  EXPECT_EQ(table.Texture().colors, texture.colors);
  EXPECT_EQ(table.UseCount(5), 4095);
  table.StepForward();
  EXPECT_EQ(table.ColorOf(5), (Color{200, 200, 200}));
  table.SetColor(0, {1, 2, 3});
  EXPECT_FALSE(table.CanStepForward());
}

}  // namespace
}  // namespace veldra

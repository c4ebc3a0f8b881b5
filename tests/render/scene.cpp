#include "render/scene.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/text.h"
#include "support/modelparts.h"

namespace veldra {

void PrintTo(const SColor& color, std::ostream* out) {
  *out << Format("(%d, %d, %d)", color.red, color.green, color.blue);
}

namespace testing {

const STextureImage* SScene::Image(const std::vector<SColor>& colors) {
  constexpr size_t kSide = 64;
  STextureImage& image = images.emplace_back();
  image.size = kSide;
  for (size_t k = 0; k < kSide * kSide; ++k) {
    const size_t quarter = (k / kSide < kSide / 2 ? 0U : 2U) + (k % kSide < kSide / 2 ? 0U : 1U);
    const SColor color = colors[colors.size() == 4 ? quarter : 0];
    const uint8_t alpha = color == kBlack ? 0 : 255;
    image.rgba.insert(image.rgba.end(), {color.red, color.green, color.blue, alpha});
  }
  return &image;
}

CBinTexture* SScene::Texture(const std::vector<SColor>& colors) {
  const std::string name = Format("T%d.RAW", model.TextureCount());
  return &model.AddTexture(std::make_unique<CBinTexture>(model, name, Image(colors)));
}

CBinTexture* SScene::Animation(const std::vector<SColor>& frames, double rate) {
  std::vector<CBinTexture::SFrame> list;
  for (const SColor& color : frames)
    list.push_back({Format("F%d.RAW", int(list.size())), Image({color})});
  return &model.AddTexture(std::make_unique<CBinTexture>(model, "ANIMATION", std::move(list), rate));
}

CBinFace& SScene::AddQuad(const std::vector<SPoint>& corners, CBinTexture* texture, uint32_t type) {
  std::vector<int32_t> vertices;
  for (const SPoint& corner : corners)
    vertices.push_back(model.AddVertex(corner).Index());
  CBinFace& face = MakeFace(model, vertices, texture, type);
  constexpr STexCoord kCoords[] = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
  for (int k = 0; k < 4; ++k)
    face.SetTexCoord(k, kCoords[k]);
  return face;
}

CBinFace& SScene::AddWall(CBinTexture* texture, uint32_t type, int32_t half) {
  return AddQuad({{-half, -half, 0}, {half, -half, 0}, {half, half, 0}, {-half, half, 0}}, texture, type);
}

void SScene::AddTiles(int32_t count, int32_t step, CBinTexture* texture, uint32_t type) {
  for (int32_t k = 0; k < count * count; ++k) {
    const int32_t x = k % count * step - count * step / 2;
    const int32_t y = k / count * step - count * step / 2;
    AddQuad({{x, y, 0}, {x + step, y, 0}, {x + step, y + step, 0}, {x, y + step, 0}}, texture, type);
  }
}

void SScene::AddBox(const SPoint& a, const SPoint& b, const std::vector<SColor>& colors) {
  const std::vector<std::vector<SPoint>> sides = {{{a.x, a.y, a.z}, {a.x, a.y, b.z}, {a.x, b.y, b.z}, {a.x, b.y, a.z}},
                                                  {{b.x, a.y, b.z}, {b.x, a.y, a.z}, {b.x, b.y, a.z}, {b.x, b.y, b.z}},
                                                  {{a.x, a.y, a.z}, {b.x, a.y, a.z}, {b.x, a.y, b.z}, {a.x, a.y, b.z}},
                                                  {{a.x, b.y, b.z}, {b.x, b.y, b.z}, {b.x, b.y, a.z}, {a.x, b.y, a.z}},
                                                  {{b.x, a.y, a.z}, {a.x, a.y, a.z}, {a.x, b.y, a.z}, {b.x, b.y, a.z}},
                                                  {{a.x, a.y, b.z}, {b.x, a.y, b.z}, {b.x, b.y, b.z}, {a.x, b.y, b.z}}};
  for (size_t k = 0; k < sides.size(); ++k)
    AddQuad(sides[k], Texture({colors[k % colors.size()]}));
}

SViewState WallState() {
  SViewState state;
  state.extent = 382.5;  // the air around a model that fits makes 400 of it
  state.background = {40, 40, 40};
  return state;
}

SViewState FittedState(const CBinModel& model) {
  SViewState state = WallState();
  state.ZoomToFit(model.Bounds());
  return state;
}

SImage Picture(const SScene& scene, const SViewState& state, int side, double seconds) {
  SError error;
  auto image = DrawModelPicture(scene.model, state, side, side, &error, seconds);
  if (image) return std::move(*image);
  ADD_FAILURE() << error.what;
  return {.width = side, .height = side, .rgba = std::vector<uint8_t>(static_cast<size_t>(side * side * 4))};
}

SColor At(const SImage& image, double across, double down) {
  const auto column = static_cast<size_t>(across * (image.width - 1));
  const auto row = static_cast<size_t>(down * (image.height - 1));
  const uint8_t* pixel = image.rgba.data() + (row * static_cast<size_t>(image.width) + column) * 4;
  EXPECT_EQ(pixel[3], 255) << "a hole in the picture";
  return {pixel[0], pixel[1], pixel[2]};
}

SColor Pure(const SColor& seen) {
  const int brightest = std::max({seen.red, seen.green, seen.blue});
  const auto on = [&](uint8_t channel) {
    return static_cast<uint8_t>(brightest > 30 && channel * 2 > brightest ? 255 : 0);
  };
  return {on(seen.red), on(seen.green), on(seen.blue)};
}

SCovered Covered(const SImage& image, const SColor& background) {
  SCovered box = {image.width, image.height, 0, 0};
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const uint8_t* pixel = image.rgba.data() + static_cast<size_t>(y * image.width + x) * 4;
      if (SColor{pixel[0], pixel[1], pixel[2]} == background) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
    }
  }
  return box.right == 0 ? SCovered{0, 0, 0, 0} : box;
}

}  // namespace testing
}  // namespace veldra

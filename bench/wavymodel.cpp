#include "wavymodel.h"

#include <cmath>

#include "platform/text.h"

namespace veldra::bench {

namespace {

constexpr int kTextures = 8;
constexpr int kStrip = 50;  // quads a strip of one texture is wide

}  // namespace

CWavyModel::CWavyModel(int side, int spacing, bool separate) : spacing_(spacing) {
  const CBinModel::CBusy busy(model);
  for (int i = 0; i < kTextures; ++i) {
    images_.push_back(std::make_unique<STextureImage>());
    images_.back()->size = 64;
    model.AddTexture(std::make_unique<CBinTexture>(model, Format("WAVE%d.RAW", i), images_.back().get()));
  }
  const auto quads = static_cast<size_t>(side) * static_cast<size_t>(side);
  model.Reserve(separate ? quads * 4 : quads + 2 * static_cast<size_t>(side) + 1, quads);
  for (int row = 0; row <= side && !separate; ++row) {
    for (int column = 0; column <= side; ++column)
      model.AddVertex(PointAt(row, column));
  }
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      std::vector<CBinVertex*> corners;
      for (const auto& [down, right] : {std::pair{0, 0}, {0, 1}, {1, 1}, {1, 0}}) {
        const int shared = (row + down) * (side + 1) + column + right;
        corners.push_back(separate ? &model.AddVertex(PointAt(row + down, column + right)) : &model.Vertex(shared));
      }
      AddQuad(corners, row, column);
    }
  }
}

SPoint CWavyModel::PointAt(int row, int column) const {
  const double height = 20 * spacing_ * std::sin(row * 0.05) * std::cos(column * 0.03);
  return {column * spacing_, row * spacing_, static_cast<int32_t>(height)};
}

void CWavyModel::AddQuad(const std::vector<CBinVertex*>& corners, int row, int column) {
  auto face = std::make_unique<CBinFace>(model);
  face->SetCorners(corners);
  face->SetTexture(&model.Texture((row + column / kStrip) % kTextures));
  for (int k = 0; k < 4; ++k)
    face->SetTexCoord(k, {(k + column) % 64 / 63.0, (k * 7 + row) % 64 / 63.0});
  model.AddFace(std::move(face));
}

}  // namespace veldra::bench

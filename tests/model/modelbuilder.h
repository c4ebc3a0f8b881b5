#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "model/binmodel.h"

namespace veldra::testing {

inline constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
inline constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

/// A model under construction with its texture images, and the reports that it gave since the last TakeReports.
class CModelBuilder : public CModelObserver {
 public:
  CModelBuilder() { model.SetObserver(this); }
  ~CModelBuilder() override { model.SetObserver(nullptr); }

  void OnModelChanged(const CBinModel&, const SModelChange& change) override { reports_.push_back(change); }
  std::vector<SModelChange> TakeReports() { return std::exchange(reports_, {}); }

  CModelBuilder& Vertices(std::initializer_list<SPoint> positions) {
    for (const SPoint& position : positions)
      model.AddVertex(position);
    return *this;
  }

  CBinFace& Face(const std::vector<int32_t>& corners, CBinTexture* texture = nullptr, uint32_t type = kFaceTextured) {
    auto face = std::make_unique<CBinFace>(model);
    std::vector<CBinVertex*> vertices;
    for (const int32_t corner : corners)
      vertices.push_back(&model.Vertex(corner));
    face->SetCorners(vertices);
    face->SetTexture(texture);
    face->SetType(texture == nullptr ? kFaceUntextured : type);
    return model.AddFace(std::move(face));
  }

  CBinTexture& Plain(const std::string& name, int32_t size = 64) {
    return model.AddTexture(std::make_unique<CBinTexture>(model, name, Image(size)));
  }

  CBinTexture& Animated(const std::string& name, const std::vector<std::string>& frames, double rate,
                        int32_t size = 64) {
    std::vector<CBinTexture::SFrame> list;
    for (const std::string& frame : frames)
      list.push_back({frame, Image(size)});
    return model.AddTexture(std::make_unique<CBinTexture>(model, name, list, rate));
  }

  std::vector<SPoint> Positions() const {
    std::vector<SPoint> positions;
    for (int32_t i = 0; i < model.VertexCount(); ++i)
      positions.push_back(model.Vertex(i).Position());
    return positions;
  }

  std::vector<int32_t> Corners(int32_t face) const {
    std::vector<int32_t> corners;
    for (const CBinVertex* corner : model.Face(face).Corners())
      corners.push_back(corner->Index());
    return corners;
  }

  std::vector<std::vector<int32_t>> Polygons() const {
    std::vector<std::vector<int32_t>> polygons;
    for (int32_t i = 0; i < model.FaceCount(); ++i)
      polygons.push_back(Corners(i));
    return polygons;
  }

  CBinModel model;

 private:
  const STextureImage* Image(int32_t size) {
    images_.emplace_back();
    images_.back().size = size;
    return &images_.back();
  }

  std::deque<STextureImage> images_;
  std::vector<SModelChange> reports_;
};

}  // namespace veldra::testing

namespace veldra {

inline void PrintTo(const SPoint& p, std::ostream* out) {
  *out << '(' << p.x << ' ' << p.y << ' ' << p.z << ')';
}

}  // namespace veldra

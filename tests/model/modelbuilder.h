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

#include "support/modelparts.h"

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
    return MakeFace(model, corners, texture, texture == nullptr ? kFaceUntextured : type);
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

  std::vector<SPoint> Positions() const { return PositionsOf(model); }
  std::vector<int32_t> Corners(int32_t face) const { return CornersOf(model.Face(face)); }
  std::vector<std::vector<int32_t>> Polygons() const { return PolygonsOf(model); }

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

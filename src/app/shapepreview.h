#pragma once

#include "shapes/shape.h"
#include "view/view3d.h"

namespace veldra {

/// A shape, turning.
class CShapePreview : public C3DView {
  Q_OBJECT

 public:
  explicit CShapePreview(const CSettings& settings, QWidget* parent = nullptr);

  /// IMAGE: null for faces without texture.
  void Show(const SShapeMesh& mesh, uint32_t type, const STextureImage* image);
  const CBinModel& Shown() const { return model_; }

 protected:
  const CBinModel& Model() const override { return model_; }
  void Fit() override;

 private:
  CBinModel model_;
};

}  // namespace veldra

#include "app/shapepreview.h"

namespace veldra {

CShapePreview::CShapePreview(const CSettings& settings, QWidget* parent) : C3DView(settings, parent) {
  setFocusPolicy(Qt::NoFocus);
  MutableState().mode = ERenderMode::kTextured;
  MutableState().grid = false;
}

void CShapePreview::Show(const SShapeMesh& mesh, uint32_t type, const STextureImage* image) {
  model_.Clear();
  CBinTexture* texture = nullptr;
  if (image != nullptr) texture = &model_.AddTexture(std::make_unique<CBinTexture>(model_, "SHAPE.RAW", image));
  AddShape(model_, mesh, type, texture, "shape");
  Fit();
  Redraw();
}

/// From every side, as it turns.
void CShapePreview::Fit() {
  MutableState().ZoomToFit(model_.Bounds());
}

}  // namespace veldra

#pragma once

#include <QRadioButton>
#include <array>

#include "editing/commandinputs.h"
#include "editing/facesurfacefield.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks what a new face is like.
class CAddFaceDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// MODEL has three vertices and a texture at least. Offers the selected vertices as corners when they are three or
  /// four, else those of LAST.
  CAddFaceDialog(const CBinModel& model, const SAddFaceInput& last, QWidget* parent);
  /// Once accepted.
  SAddFaceInput Input() const;

 private:
  QWidget* MakeCorners(const SAddFaceInput& offered);
  QWidget* MakeSurface(const SAddFaceInput& offered);
  void ShowTexture();
  QString Fault() override;

  const CBinModel& model_;
  QRadioButton* quad_ = nullptr;
  std::array<CNumberField*, 4> corners_ = {};
  CFaceSurfaceField* surface_ = nullptr;
  QLabel* picture_ = nullptr;
};

}  // namespace veldra

#pragma once

#include <QRadioButton>
#include <array>

#include "editing/facecommands.h"
#include "editing/facesurfacefield.h"
#include "editing/texturemapwidget.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks all of a face that can be changed, and shows its normal and magic number both as loaded and as they will be
/// saved.
class CEditFaceDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CEditFaceDialog(const CBinFace& face, QWidget* parent);
  /// Once accepted.
  SFaceInput Input() const;

 private:
  struct SCorner {
    CNumberField* vertex;
    CNumberField* u;
    CNumberField* v;
  };
  QWidget* MakeSurface(const SFaceInput& offered);
  QWidget* MakeCorners(const SFaceInput& offered);
  QWidget* MakePlane();
  CNumberField* MakeNumber(const QString& name, const SNumberRule& rule, double value);
  void UseFourth(bool is_used);
  QString Fault() override;
  QString FieldFault() override;

  const CBinFace& face_;
  const CBinModel& model_;
  CFaceSurfaceField* surface_ = nullptr;
  CTextureMapWidget* map_ = nullptr;
  QRadioButton* quad_ = nullptr;
  std::array<SCorner, 4> corners_ = {};
  QLabel* normal_ = nullptr;
  QLabel* magic_ = nullptr;
};

}  // namespace veldra

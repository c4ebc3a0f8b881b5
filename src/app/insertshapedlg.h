#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QListWidget>
#include <QSpinBox>
#include <array>

#include "app/shapepreview.h"
#include "editing/facesurfacefield.h"
#include "editing/shapecommands.h"
#include "ui/anglefield.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks for a shape, its numbers and its surface, and shows it turning while one types.
class CInsertShapeDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// Textures can be loaded into DOCUMENT meanwhile; otherwise it stays as it is. LAST: what was entered last, and
  /// where the shape goes.
  CInsertShapeDialog(CTarnDoc& document, const SInsertShapeInput& last, QWidget* parent);
  /// Once accepted, or while everything is valid.
  SInsertShapeInput Input() const;
  const CShapePreview& Preview() const { return *preview_; }

 private:
  /// X, Y and Z.
  using Fields = std::array<CNumberField*, 3>;
  QWidget* MakeKinds(EShape kind);
  QWidget* MakeNumbers(const SShape& last);
  QWidget* MakeForm(const SShape& last);
  QWidget* MakePicture(const SInsertShapeInput& last);
  Fields AddPoint(QGridLayout& grid, int column, const QString& label, const char* name, double smallest,
                  const SPoint& value);
  QSpinBox* AddCount(QFormLayout* form, const QString& label, const char* name, int fewest, int most);
  static SPoint Point(const Fields& fields);
  const SShapeKind& Kind() const;
  void ShowKind();
  void LoadTexture();
  QString Fault() override;
  QString FieldFault() override;

  CTarnDoc& document_;
  QListWidget* kinds_;
  Fields size_ = {};
  Fields middle_ = {};
  std::array<CAngleField*, 3> tilt_ = {};
  QFormLayout* form_ = nullptr;
  QSpinBox* sides_ = nullptr;
  QSpinBox* rings_ = nullptr;
  QSpinBox* hole_ = nullptr;
  QComboBox* solid_ = nullptr;
  QCheckBox* two_sided_ = nullptr;
  CFaceSurfaceField* surface_ = nullptr;
  CShapePreview* preview_;
};

}  // namespace veldra

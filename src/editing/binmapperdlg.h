#pragma once

#include <QCheckBox>
#include <vector>

#include "editing/editcursor.h"
#include "editing/texturecommands.h"
#include "editing/texturemapwidget.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Maps the current face on its texture: the corners are dragged on the texture or typed as numbers, and the model has
/// them at once. Unless accepted, the dialog puts the old ones back.
class CBinMapperDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// CanMapTexture is true.
  CBinMapperDialog(CEditCursor& cursor, QWidget* parent);

  void done(int result) override;

 private:
  struct SCorner {
    CNumberField* u;
    CNumberField* v;
  };
  QWidget* MakeNumbers();
  CNumberField* MakeNumber(const QString& name);
  double CoordOf(const CNumberField& field, double shown) const;
  QString Fault() override;
  void TakePicture();
  void ShowNumbers(const std::vector<STexCoord>& coords);
  void Apply(const std::vector<STexCoord>& coords);
  void ShowTexel(int x, int y);

  CEditCursor& cursor_;
  const SCornerCoords old_;
  const double texels_;   ///< from 0 to 1
  bool is_kept_ = false;  ///< the state before is among the earlier ones
  bool is_filling_ = false;
  CTextureMapWidget* map_;
  QLabel* texel_;
  std::vector<SCorner> corners_;
};

}  // namespace veldra

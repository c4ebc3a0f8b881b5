#pragma once

#include <QComboBox>
#include <QLabel>
#include <QRubberBand>
#include <QSpinBox>

#include "editing/pictureimport.h"
#include "model/texturepreviewwidget.h"
#include "ui/colorwell.h"
#include "ui/fielddialog.h"
#include "ui/pathfield.h"

namespace veldra {

/// A picture of which a part is chosen by dragging over it; a click takes all of it again.
class CCropView : public QLabel {
  Q_OBJECT

 public:
  static constexpr int kSide = 300;

  explicit CCropView(const SImage& picture);
  const std::optional<SPictureCrop>& Crop() const { return crop_; }
  void SetCrop(const std::optional<SPictureCrop>& crop);

 signals:
  void CropChanged();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowCrop();

  QSize size_;  ///< of the picture
  double scale_ = 1.0;
  std::optional<SPictureCrop> crop_;
  QPoint from_;
  QRubberBand* band_;
};

/// Asks how a picture becomes a texture, and shows what it becomes.
class CImportPictureDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// Both outlive it.
  CImportPictureDialog(const SOpenPicture& picture, const ColorTable& default_colors, QWidget* parent);
  const SIndexedTexture& Texture() const { return texture_; }

 private:
  QLayout* MakeOptions();
  QWidget* MakeKey();
  SPictureInput Input() const;
  QString Fault() override;
  void ShowTexture();

  const SOpenPicture& picture_;
  const ColorTable& default_colors_;
  SIndexedTexture texture_;
  CCropView* original_;
  CTexturePreview* result_;
  QLabel* counts_;
  QComboBox* size_;
  QComboBox* scaling_;
  QComboBox* palette_;
  CPathField* table_;
  QSpinBox* most_colors_;
  QComboBox* transparent_;
  CColorWell* key_;
  QSpinBox* key_reach_;
};

}  // namespace veldra

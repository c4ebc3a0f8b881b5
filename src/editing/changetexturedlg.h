#pragma once

#include <QComboBox>
#include <QLabel>

#include "editing/texturefilecommands.h"
#include "model/texturepreviewwidget.h"
#include "ui/fielddialog.h"
#include "ui/pathfield.h"

namespace veldra {

/// Asks for another width or other colours of a texture, and shows what comes of it beside what is there.
class CChangeTextureDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// DEFAULT_COLORS outlive it.
  CChangeTextureDialog(const QString& name, const SRawTexture& texture, const ColorTable& default_colors,
                       QWidget* parent);
  const SIndexedTexture& Texture() const { return changed_; }

 private:
  enum EColors { kStay, kDefault, kFile };

  QLayout* MakePictures(const QString& name);
  QLayout* MakeOptions();
  QString Fault() override;

  SRawTexture texture_;
  const ColorTable& default_colors_;
  SIndexedTexture changed_;
  CTexturePreview* result_;
  QLabel* counts_;
  QLabel* warning_;
  QComboBox* size_;
  QComboBox* scaling_;
  QComboBox* colors_;
  CPathField* table_;
};

}  // namespace veldra

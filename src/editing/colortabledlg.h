#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include "editing/colortablefield.h"
#include "editing/texturefilecommands.h"
#include "model/texturepreviewwidget.h"
#include "ui/colorwell.h"

namespace veldra {

/// A colour table to be looked at and changed, beside the texture that has it.
class CColorTableDialog : public QDialog {
  Q_OBJECT

 public:
  /// TEXTURE may have no texels: then there is nothing for OK, and the table can be saved by itself. DOCUMENT is who
  /// asks for files; it outlives this.
  CColorTableDialog(const QString& name, const SIndexedTexture& texture, CTarnDoc& document, QWidget* parent);
  const SIndexedTexture& Texture() const { return table_.Texture(); }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* MakeSide();
  QLayout* MakeTools();
  QPushButton* MakeButton(const QString& text, const char* name, const QString& key);
  void Show();
  void Load();
  void Save();

  CColorTableEdit table_;
  CTarnDoc& document_;
  CColorTableField* field_;
  CTexturePreview* preview_;
  QLabel* entry_;
  CColorWell* color_;
  QCheckBox* transparent_;
  QCheckBox* keeps_picture_;
  QPushButton* back_;
  QPushButton* forward_;
  QPushButton* ok_ = nullptr;
};

}  // namespace veldra

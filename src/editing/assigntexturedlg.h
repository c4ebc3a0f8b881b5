#pragma once

#include <QComboBox>

#include "editing/editcursor.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which texture the selected faces, or the current one, get.
class CAssignTextureDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// CanAssignTexture is true. Offers the current face's texture first.
  CAssignTextureDialog(const CEditCursor& cursor, QWidget* parent);
  /// Position among the model's texture entries.
  int32_t Texture() const { return textures_->currentData().toInt(); }

 private:
  QComboBox* textures_;
};

}  // namespace veldra

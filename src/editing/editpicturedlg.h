#pragma once

#include <QComboBox>

#include "editing/pictureedits.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks what becomes of a texture's colours while another program edits it as a picture.
class CEditPictureDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// PROGRAM as the settings name it; "" for the system's own.
  CEditPictureDialog(const STextureSource& source, const std::string& program, CPictureEdits::EColors last,
                     QWidget* parent);
  CPictureEdits::EColors Colors() const { return static_cast<CPictureEdits::EColors>(colors_->currentIndex()); }

 private:
  QComboBox* colors_;
};

}  // namespace veldra

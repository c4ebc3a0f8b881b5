#pragma once

#include <QComboBox>

#include "editing/editcursor.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which texture to normalize, and says what that means for its faces.
class CNormalizeDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// Offers the current face's texture, else the first that a face uses. There is one.
  CNormalizeDialog(const CEditCursor& cursor, QWidget* parent);
  /// Position among the model's texture entries.
  int32_t Texture() const { return textures_->currentData().toInt(); }

 private:
  QString Fault() override;

  const CBinModel& model_;
  QComboBox* textures_;
  QLabel* area_;
};

}  // namespace veldra

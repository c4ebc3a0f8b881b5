#pragma once

#include <QButtonGroup>

#include "editing/axisfield.h"
#include "editing/vertexcommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which plane the selected vertices are to lie in.
class CPlaneDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// Vertices are selected.
  CPlaneDialog(const CEditCursor& cursor, const SPlaneInput& last, QWidget* parent);
  /// Once accepted.
  SPlaneInput Input() const;

 private:
  QWidget* MakePlanes(const SPlaneInput& last);
  QString Fault() override;
  QString FieldFault() override {
    result_->clear();
    return {};
  }

  const CEditCursor& cursor_;
  CAxisField* axis_;
  QButtonGroup* planes_;
  CNumberField* value_;
  QLabel* result_;
};

}  // namespace veldra

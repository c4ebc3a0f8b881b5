#pragma once

#include <QButtonGroup>

#include "editing/axisfield.h"
#include "editing/vertexcommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which plane the selected vertices, or those of the selected faces, are to lie in.
class CPlaneDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// There are vertices to flatten.
  CPlaneDialog(const CEditCursor& cursor, const char* title, const SPlaneInput& last, QWidget* parent);
  /// Once accepted.
  SPlaneInput Input() const;

 private:
  QWidget* MakePlanes(const SPlaneInput& last);
  void FollowPlane();
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

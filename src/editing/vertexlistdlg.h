#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "model/geometry.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Takes vertices as they are typed or pasted, one a line.
class CVertexListDialog : public CFieldDialog {
  Q_OBJECT

 public:
  explicit CVertexListDialog(QWidget* parent);
  /// Once accepted.
  const std::vector<SPoint>& Points() const { return points_; }

 private:
  QString Fault() override;

  QPlainTextEdit* text_;
  QLabel* count_;
  std::vector<SPoint> points_;
};

}  // namespace veldra

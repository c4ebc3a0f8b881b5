#pragma once

#include <QButtonGroup>
#include <QGroupBox>

#include "model/geometry.h"

namespace veldra {

/// The choice of one axis.
class CAxisField : public QGroupBox {
  Q_OBJECT

 public:
  CAxisField(const QString& title, EAxis axis, QWidget* parent = nullptr);
  EAxis Axis() const { return static_cast<EAxis>(axes_->checkedId()); }

 signals:
  void Changed();

 private:
  QButtonGroup* axes_;  ///< ids: EAxis
};

}  // namespace veldra

#pragma once

#include <QButtonGroup>
#include <QGroupBox>

#include "model/binmodel.h"
#include "model/geometry.h"

namespace veldra {

/// Asks which vertices of a model an operation acts on. What is not selected cannot be chosen, and says so.
class CScopeBox : public QGroupBox {
  Q_OBJECT

 public:
  /// Starts with what is selected, where both are with LAST, and with all vertices while nothing is.
  CScopeBox(const CBinModel& model, SScope::EKind last, QWidget* parent = nullptr);
  SScope::EKind Scope() const;

 signals:
  void ScopeChanged();

 private:
  QButtonGroup* group_;  ///< ids: SScope::EKind
};

}  // namespace veldra

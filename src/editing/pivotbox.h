#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <array>

#include "editing/commandinputs.h"
#include "ui/numberfield.h"

namespace veldra {

/// Asks for the point that stays where it is, and shows where that is: the middle of a selection or the origin of a
/// whole model, until the user says otherwise.
class CPivotBox : public QGroupBox {
  Q_OBJECT

 public:
  /// VERTEX: the current one, -1 for none.
  CPivotBox(const CBinModel& model, int32_t vertex, const SPivotInput& last, QWidget* parent = nullptr);
  SPivotInput Pivot() const;
  /// What moves now.
  void SetScope(SScope::EKind scope);
  /// What is wrong with the point that is typed.
  QString Fault() const;
  const std::array<CNumberField*, 3>& Fields() const { return fields_; }

 signals:
  void Changed();

 private:
  SPivotInput::EKind Kind() const;
  void Choose(SPivotInput::EKind kind);
  void ShowPlace();

  const CBinModel& model_;
  int32_t vertex_;
  SScope::EKind scope_ = SScope::EKind::kAll;
  bool is_users_ = false;  ///< the choice, so that the scope does not change it
  QComboBox* kinds_;       ///< data: SPivotInput::EKind
  std::array<CNumberField*, 3> fields_ = {};
};

}  // namespace veldra

#pragma once

#include <QBoxLayout>
#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>

#include "platform/numberrule.h"
#include "ui/faultlabel.h"

namespace veldra {

/// A line to type a number in. While what stands there is no number under the rule, the field says why; the room for
/// that is kept, so that nothing moves. Both "." and the decimal point of the user's locale are one, and a whole number
/// may be typed with separated thousands, as counts are shown. A disabled field has no fault. The line inside has the
/// field's object name and takes its focus. Up, Down, the page keys and the wheel change the number, by one or by what
/// its last digit means.
class CNumberField : public QWidget {
  Q_OBJECT

 public:
  /// kElsewhere: whoever holds the field says what is wrong.
  enum class EFaultPlace { kBeside, kBelow, kElsewhere };
  explicit CNumberField(const SNumberRule& rule, EFaultPlace place = EFaultPlace::kBeside, QWidget* parent = nullptr);

  void SetRule(const SNumberRule& rule);
  /// What else may be wrong with a number under the rule; the function gives "" for a good one.
  void SetFurtherRule(std::function<std::string(double)> fault);
  /// A word behind the line: a unit.
  void SetSuffix(const QString& suffix);

  void SetValue(double value);
  /// Nothing while there is a fault.
  std::optional<double> Value() const;
  QString Fault() const { return fault_->text(); }
  bool IsValid() const { return fault_->text().isEmpty(); }
  QLineEdit* Edit() const { return edit_; }

 signals:
  void TextChanged();
  void ValidityChanged(bool is_valid);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  /// As the rule reads it, whatever the user's locale writes.
  std::string Text() const;
  std::string TextFault() const;
  void Step(int steps);
  void Check();
  void ReserveFaultRoom();

  SNumberRule rule_;
  std::function<std::string(double)> further_fault_;
  QLineEdit* edit_;
  QBoxLayout* line_;  ///< the line and what stands behind it
  CFaultLabel* fault_;
  EFaultPlace place_;
};

/// TYPED as a number field under RULE reads it: a number in the user's locale as NumberText would write it, anything
/// else without the blanks around it.
std::string PlainNumber(const QString& typed, const SNumberRule& rule);

}  // namespace veldra

#pragma once

#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "platform/numberrule.h"
#include "truckeditor/truckdocument.h"
#include "ui/faultlabel.h"

namespace veldra {

/// One number of a truck: where it is, or null when there is no such number now (a light that does not exist).
using NumberPlace = std::function<double*(CTruck&)>;
using IntegerPlace = std::function<int32_t*(CTruck&)>;

/// Numbers of a truck that belong together, in a row, with what is wrong with them behind it. A number goes into the
/// truck as soon as it is one; what is none stays in its line and the truck keeps the old one.
class CNumbersField : public QWidget {
  Q_OBJECT

 public:
  /// NAME: object name; the lines are called NAME0, NAME1, ...
  CNumbersField(CTruckDocument& document, const QString& name, QWidget* parent = nullptr);
  void Add(const QString& label, const NumberPlace& place, const QString& tip = {});
  void AddInteger(const QString& label, const IntegerPlace& place, const QString& tip = {});
  /// To call when the places lead elsewhere.
  void Refresh();
  /// Behind the numbers.
  void AddUnit(const QString& unit);
  /// No fault is shown beside the row, but handed to SHOW.
  void ShowFaultsBy(std::function<void(const QString&)> show);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct SNumber {
    QLineEdit* edit;
    SNumberRule rule;
    std::function<std::optional<double>()> get;
    std::function<void(CTruck& truck, double value)> set;
    double shown = 0;  ///< what the line was set to, or what was taken from it
    bool is_there = false;
  };
  void AddNumber(const QString& label, SNumber number, const QString& tip);
  void Take(size_t index);
  void ShowFault();

  CTruckDocument& document_;
  QString name_;
  std::vector<SNumber> numbers_;
  CFaultLabel* fault_;
  std::function<void(const QString&)> show_fault_;
};

}  // namespace veldra

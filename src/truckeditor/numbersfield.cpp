#include "truckeditor/numbersfield.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <cmath>

#include "ui/numberfield.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr double kFarthest = 1e9;  ///< more is a slip of the finger
constexpr int kDigits = 11;

}  // namespace

CNumbersField::CNumbersField(CTruckDocument& document, const QString& name, QWidget* parent)
    : QWidget(parent), document_(document), name_(name), fault_(new CFaultLabel) {
  setObjectName(name);
  fault_->setObjectName(name + "Fault");
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(fault_, 1);
  connect(&document, &CTruckDocument::Changed, this, &CNumbersField::Refresh);
}

void CNumbersField::Add(const QString& label, const NumberPlace& place, const QString& tip) {
  SNumber number = {
      .edit = new QLineEdit, .rule = {.smallest = -kFarthest, .largest = kFarthest}, .get = {}, .set = {}};
  number.get = [this, place] {
    const double* const at = document_.Look(place);
    return at != nullptr ? std::optional<double>(*at) : std::nullopt;
  };
  number.set = [place](CTruck& truck, double value) {
    if (double* const at = place(truck)) *at = value;
  };
  AddNumber(label, std::move(number), tip);
}

void CNumbersField::AddInteger(const QString& label, const IntegerPlace& place, const QString& tip) {
  SNumber number = {.edit = new QLineEdit, .rule = SNumberRule::Integer(), .get = {}, .set = {}};
  number.get = [this, place] {
    const int32_t* const at = document_.Look(place);
    return at != nullptr ? std::optional<double>(*at) : std::nullopt;
  };
  number.set = [place](CTruck& truck, double value) {
    if (int32_t* const at = place(truck)) *at = static_cast<int32_t>(value);
  };
  AddNumber(label, std::move(number), tip);
}

void CNumbersField::AddNumber(const QString& label, SNumber number, const QString& tip) {
  const size_t index = numbers_.size();
  QLineEdit* const edit = number.edit;
  edit->setObjectName(name_ + QString::number(index));
  edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QString(kDigits, '0')));
  edit->setToolTip(tip);
  edit->installEventFilter(this);
  connect(edit, &QLineEdit::textEdited, this, [this, index] { Take(index); });
  connect(edit, &QLineEdit::editingFinished, &document_, &CTruckDocument::EndStep);
  auto* const line = static_cast<QHBoxLayout*>(layout());
  if (!label.isEmpty()) {
    auto* text = new QLabel(label);
    text->setBuddy(edit);
    line->insertWidget(line->count() - 1, text);
  }
  line->insertWidget(line->count() - 1, edit);
  numbers_.push_back(std::move(number));
  Refresh();
}

void CNumbersField::AddUnit(const QString& unit) {
  auto* const line = static_cast<QHBoxLayout*>(layout());
  line->insertWidget(line->count() - 1, new QLabel(unit));
}

void CNumbersField::ShowFaultsBy(std::function<void(const QString&)> show) {
  show_fault_ = std::move(show);
  fault_->hide();
}

/// A line that has no number in it gets the truck's number back when it is left.
bool CNumbersField::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) {
    for (SNumber& number : numbers_)
      if (number.edit == watched && !FieldNumber(PlainNumber(number.edit->text(), number.rule), number.rule))
        number.is_there = false;
    Refresh();
  }
  return QWidget::eventFilter(watched, event);
}

/// What the user is typing stays as it is; what has changed elsewhere is shown.
void CNumbersField::Refresh() {
  for (SNumber& number : numbers_) {
    const std::optional<double> value = number.get();
    if (value && (!number.is_there || *value != number.shown))
      number.edit->setText(ToQString(NumberText(*value + 0.0)));
    if (!value) number.edit->clear();
    number.edit->setEnabled(value.has_value());
    number.is_there = value.has_value();
    number.shown = value.value_or(0);
  }
  ShowFault();
}

void CNumbersField::Take(size_t index) {
  SNumber& number = numbers_[index];
  const auto value = FieldNumber(PlainNumber(number.edit->text(), number.rule), number.rule);
  if (value) {
    number.shown = *value;
    document_.Change(number.edit->objectName(), [&](CTruck& truck) { number.set(truck, *value); });
  }
  ShowFault();
}

void CNumbersField::ShowFault() {
  QString fault;
  for (const SNumber& number : numbers_) {
    if (!number.is_there || !fault.isEmpty()) continue;
    const std::string text = NumberFault(PlainNumber(number.edit->text(), number.rule), number.rule);
    fault = ToQString(text);
    number.edit->setAccessibleDescription(fault);
  }
  fault_->setText(fault);
  if (show_fault_) show_fault_(fault);
}

}  // namespace veldra

#include "ui/numberfield.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kEditDigits = 14;    ///< "-2147483648" and some air
constexpr int kWidestFault = 240;  ///< pixels; longer texts wrap
constexpr int kPageSteps = 10;

/// A line whose number the arrow keys, the page keys and, while it has the keys, the wheel take up and down.
class CNumberLine : public QLineEdit {
 public:
  explicit CNumberLine(std::function<void(int steps)> step) : step_(std::move(step)) {}

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Up:
        return step_(1);
      case Qt::Key_Down:
        return step_(-1);
      case Qt::Key_PageUp:
        return step_(kPageSteps);
      case Qt::Key_PageDown:
        return step_(-kPageSteps);
      default:
        QLineEdit::keyPressEvent(event);
    }
  }

  /// Not when it is only scrolled past.
  void wheelEvent(QWheelEvent* event) override {
    constexpr int kNotch = 120;
    if (!hasFocus()) return event->ignore();
    turned_ += event->angleDelta().y();
    if (const int steps = turned_ / kNotch; steps != 0) step_(steps);
    turned_ %= kNotch;
    event->accept();
  }

 private:
  std::function<void(int)> step_;
  int turned_ = 0;
};

/// How many digits stand behind the point of TEXT.
int DecimalsOf(const std::string& text) {
  constexpr int kMost = 4;
  const size_t point = text.find('.');
  return point == std::string::npos ? 0 : std::min(kMost, static_cast<int>(text.size() - point - 1));
}

/// TEXT, a number under RULE, so many steps on: of one, or of what its last digit means, within the range.
double SteppedNumber(const std::string& text, double number, int steps, const SNumberRule& rule) {
  const bool is_fraction = !rule.integer && rule.largest - rule.smallest <= 1;
  const double unit = std::pow(10.0, std::max(DecimalsOf(text), is_fraction ? 2 : 0));
  return std::clamp(std::round(number * unit + steps) / unit, rule.smallest, rule.largest);
}

}  // namespace

/// QString knows more blanks than ASCII's.
std::string PlainNumber(const QString& typed, const SNumberRule& rule) {
  const QString text = typed.trimmed();
  const QLocale locale;
  bool is_number = false;
  if (rule.integer) {
    // First, since "1.000" is a thousand where thousands are separated so, and never a one.
    const qlonglong whole = locale.toLongLong(text, &is_number);
    if (is_number) return std::to_string(whole);
  }
  // What the fields show has "." everywhere.
  if (!ParseNumber(text.toStdString())) {
    const double number = locale.toDouble(text, &is_number);
    if (is_number) return NumberText(number);
  }
  return text.toStdString();
}

CNumberField::CNumberField(const SNumberRule& rule, EFaultPlace place, QWidget* parent)
    : QWidget(parent),
      rule_(rule),
      edit_(new CNumberLine([this](int steps) { Step(steps); })),
      line_(new QHBoxLayout),
      fault_(new CFaultLabel),
      place_(place) {
  fault_->setObjectName("fault");
  edit_->setFixedWidth(edit_->fontMetrics().horizontalAdvance(QString(kEditDigits, '0')));
  setFocusProxy(edit_);
  setFocusPolicy(edit_->focusPolicy());  // else the label's "&" would not lead to it
  connect(this, &QObject::objectNameChanged, edit_, [this](const QString& name) { edit_->setObjectName(name); });
  connect(edit_, &QLineEdit::textChanged, this, [this] {
    Check();
    emit TextChanged();
  });
  // Blanks come along when numbers are pasted.
  connect(edit_, &QLineEdit::editingFinished, this, [this] { edit_->setText(ToQString(Text())); });

  constexpr int kGap = 8;
  line_->setSpacing(kGap);
  line_->addWidget(edit_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addLayout(line_);
  if (place == EFaultPlace::kElsewhere) {
    fault_->setParent(this);
    fault_->hide();
  } else if (place == EFaultPlace::kBelow) {
    line_->addStretch();
    layout->addWidget(fault_);
  } else {
    line_->addWidget(fault_, 1);
  }
  ReserveFaultRoom();
  Check();
}

void CNumberField::SetRule(const SNumberRule& rule) {
  rule_ = rule;
  ReserveFaultRoom();
  Check();
}

void CNumberField::SetFurtherRule(std::function<std::string(double)> fault) {
  further_fault_ = std::move(fault);
  Check();
}

void CNumberField::SetSuffix(const QString& suffix) {
  line_->insertWidget(1, new QLabel(suffix));
}

void CNumberField::SetValue(double value) {
  edit_->setText(ToQString(NumberText(value + 0.0)));  // -0 is nothing that one types
}

/// Stays where a further rule, as of another field, does not take the number.
void CNumberField::Step(int steps) {
  const std::optional<double> number = FieldNumber(Text(), rule_);
  if (!number || edit_->isReadOnly()) return;
  const double next = SteppedNumber(Text(), *number, steps, rule_);
  if (!further_fault_ || further_fault_(next).empty()) SetValue(next);
}

std::optional<double> CNumberField::Value() const {
  return IsValid() ? FieldNumber(Text(), rule_) : std::nullopt;
}

void CNumberField::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::EnabledChange) Check();
}

std::string CNumberField::Text() const {
  return PlainNumber(edit_->text(), rule_);
}

std::string CNumberField::TextFault() const {
  if (!isEnabled()) return "";
  std::string fault = NumberFault(Text(), rule_);
  if (fault.empty() && further_fault_) fault = further_fault_(*FieldNumber(Text(), rule_));
  return fault;
}

void CNumberField::Check() {
  const bool was_valid = IsValid();
  fault_->setText(ToQString(TextFault()));
  edit_->setAccessibleDescription(fault_->text());
  if (IsValid() != was_valid) emit ValidityChanged(IsValid());
}

/// For the longest text that the rule can lead to.
void CNumberField::ReserveFaultRoom() {
  if (place_ == EFaultPlace::kElsewhere) return;
  const std::string beyond = NumberText(rule_.largest * 2 + 1);
  const QString longest = ToQString(NumberFault(beyond, rule_));
  const QFontMetrics metrics(fault_->font());
  const int wide = metrics.horizontalAdvance(longest) + metrics.averageCharWidth();
  if (place_ == EFaultPlace::kBelow) {
    fault_->setMinimumHeight(metrics.height());
    fault_->setMinimumWidth(wide);
    return;
  }
  fault_->setMinimumWidth(std::min(wide, kWidestFault));
  if (wide > kWidestFault) setMinimumHeight(std::max(edit_->sizeHint().height(), 2 * metrics.lineSpacing()));
}

}  // namespace veldra

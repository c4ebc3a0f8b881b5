#include "ui/fielddialog.h"

#include <QPushButton>
#include <algorithm>

#include "ui/screenplace.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr QSize kAroundFields(24, 104);  ///< margins, the fault, the buttons

}  // namespace

CFieldDialog::CFieldDialog(const char* name, const QString& title, QWidget* parent)
    : QDialog(parent),
      fault_(new CFaultLabel),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setObjectName(name);
  setWindowTitle(title);
  fault_->setObjectName("dialogFault");
  fault_->setMinimumHeight(fault_->fontMetrics().height());
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* content = new QWidget;
  content_ = new QVBoxLayout(content);
  content_->setContentsMargins(0, 0, 0, 0);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new CScrolled(content, kAroundFields), 1);
  layout->addWidget(fault_);
  layout->addWidget(buttons_);
}

/// The toolkit leaves a third of the screen free, where what does not fit then has to be scrolled.
void CFieldDialog::setVisible(bool visible) {
  if (visible && !testAttribute(Qt::WA_Resized)) ResizeToFit(*this, sizeHint());
  QDialog::setVisible(visible);
}

bool CFieldDialog::IsValid() const {
  return buttons_->button(QDialogButtonBox::Ok)->isEnabled();
}

CNumberField* CFieldDialog::AddNumber(QFormLayout* form, const QString& label, const char* name,
                                      const SNumberRule& rule, double value, CNumberField::EFaultPlace place) {
  auto* field = new CNumberField(rule, place);
  field->setObjectName(name);
  field->SetValue(value);
  form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  form->addRow(label, field);
  Watch(field);
  return field;
}

/// The buttons were there before the content, but Tab comes to them after it.
void CFieldDialog::showEvent(QShowEvent* event) {
  QWidget* last = this;
  for (QWidget* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain())
    if (!buttons_->isAncestorOf(widget)) last = widget;
  for (QAbstractButton* button : buttons_->buttons()) {
    setTabOrder(last, button);
    last = button;
  }
  // As if Tab had led there, which selects what stands in it.
  if (start_ != nullptr) start_->setFocus(Qt::TabFocusReason);
  QDialog::showEvent(event);
}

void CFieldDialog::Watch(CNumberField* field) {
  fields_.push_back(field);
  connect(field, &CNumberField::TextChanged, this, &CFieldDialog::Refresh);
}

void CFieldDialog::Refresh() {
  const bool are_valid =
      std::all_of(fields_.begin(), fields_.end(), [](const CNumberField* field) { return field->IsValid(); });
  fault_->setText(are_valid ? Fault() : FieldFault());
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(are_valid && fault_->text().isEmpty());
}

}  // namespace veldra

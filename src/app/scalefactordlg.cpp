#include "app/scalefactordlg.h"

#include <QFormLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/scalefactor.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr int kDigits = 10;
constexpr int kWidth = 340;

}  // namespace

CScaleFactorDialog::CScaleFactorDialog(double offered, QWidget* parent)
    : QDialog(parent),
      factor_(new QLineEdit(QString::number(offered, 'g', kDigits))),
      fault_(new QLabel),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setObjectName("scaleFactor");
  setWindowTitle("Enter Hellbender Scale Factor");
  setMinimumWidth(kWidth);
  factor_->setObjectName("factor");
  factor_->selectAll();
  fault_->setObjectName("fault");
  fault_->setWordWrap(true);
  connect(factor_, &QLineEdit::textChanged, this, [this] { Check(); });
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* form = new QFormLayout;
  form->addRow(tr("&Scale factor:"), factor_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(fault_);
  layout->addStretch();
  layout->addWidget(buttons_);
  Check();
}

void CScaleFactorDialog::Check() {
  const std::string fault = ScaleFactorFault(factor_->text().toStdString());
  fault_->setText(QString::fromStdString(fault));
  buttons_->button(QDialogButtonBox::Ok)->setEnabled(fault.empty());
}

double CScaleFactorDialog::Factor() const {
  return ParseNumber(Trim(factor_->text().toStdString())).value_or(1.0);
}

}  // namespace veldra

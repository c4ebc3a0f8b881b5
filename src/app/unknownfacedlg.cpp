#include "app/unknownfacedlg.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "model/helperclasses.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CUnknownFaceDialog::CUnknownFaceDialog(uint32_t type, QWidget* parent)
    : QDialog(parent),
      ignore_(new QRadioButton(tr("&Ignore face"))),
      abort_(new QRadioButton(tr("&Abort model"))),
      change_(new QRadioButton(tr("&Change face type to:"))),
      types_(new QComboBox) {
  setObjectName("unknownFace");
  setWindowTitle("Veldra - Unknown Face");
  ignore_->setObjectName("ignore");
  abort_->setObjectName("abort");
  change_->setObjectName("change");
  types_->setObjectName("types");
  for (const uint32_t known : kFaceTypes)
    types_->addItem(FaceTypeLabel(known), known);
  types_->setCurrentIndex(types_->findData(static_cast<uint32_t>(kFaceTextured)));
  types_->setEnabled(false);
  ignore_->setChecked(true);
  connect(change_, &QRadioButton::toggled, types_, &QWidget::setEnabled);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* choice = new QHBoxLayout;
  choice->addWidget(change_);
  choice->addWidget(types_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("This model contains the unknown face\n" +
                               ToQString(Format("type (0x%x). What would you like to do?", type))));
  layout->addSpacing(6);
  layout->addWidget(ignore_);
  layout->addWidget(abort_);
  layout->addLayout(choice);
  layout->addSpacing(10);
  layout->addWidget(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

SUnknownFaceAnswer CUnknownFaceDialog::Answer() const {
  using EChoice = SUnknownFaceAnswer::EChoice;
  if (result() != QDialog::Accepted || abort_->isChecked()) return {.choice = EChoice::kAbort};
  if (ignore_->isChecked()) return {.choice = EChoice::kIgnore};
  return {.choice = EChoice::kChange, .type = types_->currentData().toUInt()};
}

}  // namespace veldra

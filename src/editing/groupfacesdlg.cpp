#include "editing/groupfacesdlg.h"

#include <QGroupBox>
#include <QRadioButton>
#include <algorithm>
#include <numeric>

#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

using EMagic = SGroupFacesInput::EMagic;

CGroupFacesDialog::CGroupFacesDialog(const CEditCursor& cursor, QWidget* parent)
    : CFieldDialog("groupFaces", tr("Group Face Type and Magic Number"), parent),
      model_(cursor.Model()),
      faces_(new QComboBox),
      change_type_(new QCheckBox(tr("Face &type:"))),
      types_(new QComboBox),
      magic_(new QButtonGroup(this)) {
  faces_->setObjectName("faces");
  change_type_->setObjectName("changeType");
  types_->setObjectName("types");
  FillFaces(cursor);
  for (const uint32_t type : kFaceTypes)
    types_->addItem(FaceTypeLabel(type), type);
  types_->setCurrentIndex(std::max(0, types_->findData(model_.Face(choices_.front().front()).Type())));
  types_->setEnabled(false);
  auto* form = new QFormLayout;
  form->addRow(tr("&Faces:"), faces_);
  form->addRow(change_type_, types_);
  Content()->addLayout(form);
  Content()->addWidget(MakeMagic());
  connect(change_type_, &QCheckBox::toggled, types_, &QWidget::setEnabled);
  connect(change_type_, &QCheckBox::toggled, this, &CFieldDialog::Refresh);
  for (QComboBox* box : {faces_, types_})
    connect(box, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  Refresh();
}

void CGroupFacesDialog::FillFaces(const CEditCursor& cursor) {
  const auto add = [this](const QString& label, std::vector<int32_t> faces) {
    faces_->addItem(tr("%1 (%L2)").arg(label).arg(faces.size()));
    choices_.push_back(std::move(faces));
  };
  if (HasSelectedFaces(cursor)) add(tr("Selected faces"), model_.Selected(EGroupKind::kFaces));
  if (HasCurrentFace(cursor)) add(tr("Current face"), {cursor.Face()});
  for (const CBinGroup& group : model_.FaceGroups())
    add(tr("Group %1").arg(NameToQString(group.Name())), group.Members());
  std::vector<int32_t> all(static_cast<size_t>(model_.FaceCount()));
  std::iota(all.begin(), all.end(), 0);
  std::erase_if(all, [&](int32_t index) { return model_.Face(index).IsHidden(); });
  add(tr("All faces"), std::move(all));
}

QWidget* CGroupFacesDialog::MakeMagic() {
  auto* box = new QGroupBox(tr("Magic number as loaded"));
  auto* form = new QFormLayout(box);
  const auto add = [&](EMagic magic, const char* name, const QString& label) {
    auto* button = new QRadioButton(label);
    button->setObjectName(name);
    magic_->addButton(button, static_cast<int>(magic));
    form->addRow(button);
  };
  add(EMagic::kKeep, "keep", tr("&Leave as it is"));
  add(EMagic::kComputed, "computed", tr("Take the &computed one, and the computed normal"));
  add(EMagic::kValue, "value", tr("This &number:"));
  value_ = AddNumber(form, QString(), "number", SNumberRule::Integer(), 0, CNumberField::EFaultPlace::kBelow);
  auto* note = new QLabel(tr("Saving computes normals and magic numbers anew."));
  form->addRow(note);
  magic_->button(static_cast<int>(EMagic::kKeep))->setChecked(true);
  value_->setEnabled(false);
  connect(magic_, &QButtonGroup::idToggled, this, [this] {
    value_->setEnabled(magic_->checkedId() == static_cast<int>(EMagic::kValue));
    Refresh();
  });
  return box;
}

SGroupFacesInput CGroupFacesDialog::Input() const {
  SGroupFacesInput input;
  input.faces = choices_[static_cast<size_t>(faces_->currentIndex())];
  if (change_type_->isChecked()) input.type = types_->currentData().toUInt();
  input.magic = static_cast<EMagic>(magic_->checkedId());
  input.value = static_cast<int32_t>(value_->Value().value_or(0.0));
  return input;
}

QString CGroupFacesDialog::Fault() {
  return ToQString(InputFault(model_, Input()));
}

}  // namespace veldra

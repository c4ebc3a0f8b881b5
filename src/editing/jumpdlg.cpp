#include "editing/jumpdlg.h"

#include <QHBoxLayout>

namespace veldra {

CJumpDialog::CJumpDialog(const CEditCursor& cursor, EGroupKind last, QWidget* parent)
    : CFieldDialog("jumpTo", tr("Jump To Face/Vertex"), parent),
      cursor_(cursor),
      faces_(new QRadioButton(tr("&Face"))),
      vertices_(new QRadioButton(tr("&Vertex"))),
      range_(new QLabel) {
  faces_->setObjectName("face");
  vertices_->setObjectName("vertex");
  auto* kinds = new QHBoxLayout;
  kinds->addWidget(faces_);
  kinds->addWidget(vertices_);
  kinds->addStretch();
  auto* form = new QFormLayout;
  form->addRow(tr("Jump to:"), kinds);
  number_ = AddNumber(form, tr("&Number:"), "number", {}, 0, CNumberField::EFaultPlace::kBelow);
  form->addRow(QString(), range_);
  Content()->addLayout(form);
  (last == EGroupKind::kFaces ? faces_ : vertices_)->setChecked(true);
  connect(faces_, &QRadioButton::toggled, this, &CJumpDialog::ShowKind);
  ShowKind();
}

EGroupKind CJumpDialog::Kind() const {
  return faces_->isChecked() ? EGroupKind::kFaces : EGroupKind::kVertices;
}

int32_t CJumpDialog::Index() const {
  return static_cast<int32_t>(number_->Value().value_or(-1.0));
}

void CJumpDialog::ShowKind() {
  const bool is_face = Kind() == EGroupKind::kFaces;
  const int32_t count = is_face ? cursor_.Model().FaceCount() : cursor_.Model().VertexCount();
  number_->SetRule(SNumberRule::Integer(-1, count - 1));
  number_->SetValue(is_face ? cursor_.Face() : cursor_.Vertex());
  const QString text =
      is_face ? tr("%L1 faces, counted from 0; -1 is none") : tr("%L1 vertices, counted from 0; -1 is none");
  range_->setText(text.arg(count));
  StartWith(number_);
  Refresh();
}

}  // namespace veldra

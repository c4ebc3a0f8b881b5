#include "editing/groupdlg.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QVBoxLayout>

#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CGroupDialog::CGroupDialog(CTarnDoc& document, EGroupKind kind, QWidget* parent)
    : QDialog(parent), document_(document), kind_(kind), list_(new QListWidget) {
  const bool is_faces = kind == EGroupKind::kFaces;
  setObjectName(is_faces ? "faceGroups" : "vertexGroups");
  setWindowTitle(is_faces ? tr("Face Groups") : tr("Vertex Groups"));
  list_->setObjectName("groups");
  list_->setMinimumSize(240, 200);
  auto* buttons = new QVBoxLayout;
  create_ = MakeButton("create", tr("&New from Selection..."), &CGroupDialog::Create);
  changing_ = {MakeButton("rename", tr("&Rename..."), &CGroupDialog::Rename),
               MakeButton("delete", tr("&Delete"), &CGroupDialog::Delete)};
  selecting_ = {MakeButton("select", tr("&Select"), &CGroupDialog::Select),
                MakeButton("add", tr("&Add to Selection"), &CGroupDialog::AddToSelection)};
  for (QPushButton* button : {create_, changing_[0], changing_[1], selecting_[0], selecting_[1]})
    buttons->addWidget(button);
  buttons->addStretch();
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* line = new QHBoxLayout;
  line->addWidget(list_, 1);
  line->addLayout(buttons);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(line, 1);
  layout->addWidget(close);
  connect(list_, &QListWidget::currentRowChanged, this, &CGroupDialog::Refresh);
  connect(list_, &QListWidget::itemDoubleClicked, this, &CGroupDialog::Select);
  CSettings& settings = document.Services().settings;
  new CDialogPlace(*this, is_faces ? settings.face_group_dialog : settings.vertex_group_dialog);
  Fill("");
}

QPushButton* CGroupDialog::MakeButton(const char* name, const QString& text, void (CGroupDialog::*action)()) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

void CGroupDialog::Fill(const std::string& current) {
  list_->clear();
  for (const CBinGroup& group : document_.Model().GroupsOf(kind_)) {
    auto* item = new QListWidgetItem(tr("%1 (%L2)").arg(NameToQString(group.Name())).arg(group.Members().size()));
    item->setData(Qt::UserRole, QByteArray::fromStdString(group.Name()));
    list_->addItem(item);
    if (group.Name() == current) list_->setCurrentItem(item);
  }
  if (list_->currentRow() < 0 && list_->count() > 0) list_->setCurrentRow(0);
  Refresh();
}

void CGroupDialog::Refresh() {
  const bool has_current = list_->currentRow() >= 0;
  create_->setEnabled(!document_.IsReadOnly());
  for (QPushButton* button : selecting_)
    button->setEnabled(has_current);
  for (QPushButton* button : changing_)
    button->setEnabled(has_current && !document_.IsReadOnly());
}

std::string CGroupDialog::CurrentName() const {
  const QListWidgetItem* const item = list_->currentItem();
  return item == nullptr ? "" : item->data(Qt::UserRole).toByteArray().toStdString();
}

void CGroupDialog::ShowFault(const std::string& fault) {
  document_.Services().questions.Message({.text = fault, .icon = EIcon::kWarning});
}

std::optional<std::string> CGroupDialog::AskName(const QString& title, const std::string& offered) {
  QInputDialog dialog(this);
  dialog.setObjectName("groupName");
  dialog.setWindowTitle(title);
  dialog.setLabelText(tr("Name of the group:"));
  dialog.setTextValue(GameToField(offered));
  if (dialog.exec() != Accepted) return std::nullopt;
  return dialog.textValue().trimmed().toStdString();
}

void CGroupDialog::Create() {
  if (document_.Model().SelectedCount(kind_) == 0) {
    ShowFault(CreateGroup(document_, kind_, "group"));
    return;
  }
  std::string offered;
  while (const std::optional<std::string> name = AskName(tr("New Group"), offered)) {
    const std::string fault = CreateGroup(document_, kind_, *name);
    if (fault.empty()) return Fill(*name);
    ShowFault(fault);
    offered = *name;
  }
}

void CGroupDialog::Rename() {
  const std::string old = CurrentName();
  std::string offered = old;
  while (const std::optional<std::string> name = AskName(tr("Rename Group"), offered)) {
    const std::string fault = RenameGroup(document_, kind_, old, *name);
    if (fault.empty()) return Fill(*name);
    ShowFault(fault);
    offered = *name;
  }
}

void CGroupDialog::Delete() {
  const int row = list_->currentRow();
  DeleteGroup(document_, kind_, CurrentName());
  Fill("");
  if (list_->count() > 0) list_->setCurrentRow(std::min(row, list_->count() - 1));
}

}  // namespace veldra

#include "app/recoverydlg.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EColumn { kTitle, kTime, kVertices, kFaces, kFolder, kColumnCount };
constexpr int kSoundRole = Qt::UserRole;
constexpr QSize kUsualSize(760, 320);

QString When(int64_t time) {
  return QLocale().toString(QDateTime::fromSecsSinceEpoch(time), QLocale::ShortFormat);
}

}  // namespace

CRecoveryDialog::CRecoveryDialog(const std::vector<SLeftover>& leftovers, QWidget* parent)
    : QDialog(parent), list_(new QTreeWidget) {
  setObjectName("recovery");
  setWindowTitle(tr("Recover Documents"));
  auto* text =
      new QLabel(tr("Veldra ended before these documents were saved. What they held then was kept.\n"
                    "Tick the ones to recover. Those that you leave are offered again at the next start."));
  text->setWordWrap(true);
  list_->setObjectName("leftovers");
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setHeaderLabels({tr("Document"), tr("Last change kept"), tr("Vertices"), tr("Faces"), tr("Folder")});
  for (const SLeftover& leftover : leftovers)
    AddLeftover(leftover);
  for (int column = 0; column < kColumnCount; ++column)
    list_->resizeColumnToContents(column);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addWidget(list_, 1);
  MakeButtons();
  connect(list_, &QTreeWidget::itemChanged, this, &CRecoveryDialog::UpdateButtons);
  UpdateButtons();
  resize(kUsualSize);
}

void CRecoveryDialog::AddLeftover(const SLeftover& leftover) {
  const bool is_sound = leftover.fault.empty();
  auto* item = new QTreeWidgetItem(list_);
  item->setData(kTitle, kSoundRole, is_sound);
  item->setCheckState(kTitle, is_sound ? Qt::Checked : Qt::Unchecked);
  if (!is_sound) {
    item->setText(kTitle, tr("Damaged copy"));
    item->setText(kTime, tr("unknown"));
    item->setText(kFolder, NameToQString(leftover.fault));
    item->setToolTip(kFolder, ToolTipText(NameToQString(leftover.file)));
    return;
  }
  const std::string& path = leftover.label.path;
  item->setText(kTitle, NameToQString(leftover.label.title));
  item->setText(kTime, When(leftover.label.time));
  if (leftover.label.kind == ECopyKind::kModel) {
    item->setText(kVertices, QLocale().toString(leftover.label.vertices));
    item->setText(kFaces, QLocale().toString(leftover.label.faces));
  }
  item->setText(kFolder, path.empty() ? tr("never saved") : NameToQString(DirectoryPart(path)));
  item->setToolTip(kFolder, ToolTipText(NameToQString(path)));
  item->setTextAlignment(kVertices, Qt::AlignRight | Qt::AlignVCenter);
  item->setTextAlignment(kFaces, Qt::AlignRight | Qt::AlignVCenter);
}

void CRecoveryDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox;
  recover_ = buttons->addButton(tr("&Recover"), QDialogButtonBox::AcceptRole);
  discard_ = buttons->addButton(tr("&Discard"), QDialogButtonBox::DestructiveRole);
  auto* later = buttons->addButton(tr("Ask &Later"), QDialogButtonBox::RejectRole);
  recover_->setDefault(true);
  connect(recover_, &QPushButton::clicked, this, [this] { Choose(EChoice::kRecover); });
  connect(discard_, &QPushButton::clicked, this, [this] { Choose(EChoice::kDiscard); });
  connect(later, &QPushButton::clicked, this, &QDialog::reject);
  layout()->addWidget(buttons);
}

void CRecoveryDialog::Choose(EChoice choice) {
  choice_ = choice;
  accept();
}

void CRecoveryDialog::UpdateButtons() {
  bool any = false;
  bool any_sound = false;
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    const QTreeWidgetItem* item = list_->topLevelItem(i);
    const bool is_ticked = item->checkState(kTitle) == Qt::Checked;
    any = any || is_ticked;
    any_sound = any_sound || (is_ticked && item->data(kTitle, kSoundRole).toBool());
  }
  recover_->setEnabled(any_sound);
  discard_->setEnabled(any);
}

std::vector<size_t> CRecoveryDialog::Chosen() const {
  std::vector<size_t> chosen;
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    const QTreeWidgetItem* item = list_->topLevelItem(i);
    const bool fits = choice_ != EChoice::kRecover || item->data(kTitle, kSoundRole).toBool();
    if (item->checkState(kTitle) == Qt::Checked && fits) chosen.push_back(static_cast<size_t>(i));
  }
  return chosen;
}

}  // namespace veldra

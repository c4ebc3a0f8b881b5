#include "truckeditor/truckpackdlg.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLocale>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "platform/text.h"
#include "ui/faultlabel.h"
#include "ui/notelabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EColumn { kName, kSize, kWhere, kNeededBy, kColumnCount };

QString LeftOutText(const STruckPackRow& row) {
  return row.is_stock ? CTruckPackDialog::tr("left out: every installation has it")
                      : CTruckPackDialog::tr("left out: only such a file needs it");
}

}  // namespace

CTruckPackDialog::CTruckPackDialog(STruckPackPlan& plan, bool leave_out_stock, CQuestions& questions, QWidget* parent)
    : QDialog(parent),
      plan_(plan),
      questions_(questions),
      list_(new QTreeWidget),
      missing_(new CFaultLabel),
      total_(new QLabel),
      leave_out_(new QCheckBox(tr("&Leave out files that every installation of the game has"))) {
  setObjectName("packTruck");
  setWindowTitle(tr("Pack Truck"));
  list_->setObjectName("packList");
  list_->setRootIsDecorated(false);
  list_->setHeaderLabels({tr("File"), tr("Size"), tr("Where"), tr("Needed by")});
  missing_->setObjectName("packMissing");
  total_->setObjectName("packTotal");
  leave_out_->setObjectName("leaveOutStock");
  leave_out_->setChecked(leave_out_stock);
  connect(leave_out_, &QCheckBox::toggled, this, &CTruckPackDialog::Refresh);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  auto* write = buttons->addButton(tr("&Write archive..."), QDialogButtonBox::AcceptRole);
  write->setObjectName("writeArchive");
  auto* add = buttons->addButton(tr("&Add Files..."), QDialogButtonBox::ActionRole);
  add->setObjectName("addFiles");
  add->setAutoDefault(false);
  connect(add, &QPushButton::clicked, this, &CTruckPackDialog::AskAndAdd);
  connect(new QShortcut(QKeySequence::Delete, list_), &QShortcut::activated, this, &CTruckPackDialog::Remove);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(missing_);
  layout->addWidget(list_, 1);
  layout->addWidget(leave_out_);
  if (!plan.stock_note.empty()) layout->addWidget(new CNoteLabel(ToQString(plan.stock_note), *leave_out_));
  layout->addWidget(total_);
  layout->addWidget(buttons);
  constexpr QSize kUsualSize(760, 460);
  resize(kUsualSize);
  FillList();
  Refresh();
}

void CTruckPackDialog::AskAndAdd() {
  const std::string folder = plan_.rows.empty() ? "" : plan_.rows.front().where;
  const auto files = questions_.AskOpenFiles({.title = "Add Files to the Archive",
                                              .filters = {{"All Files *.*", "*.*"}},
                                              .directory = folder,
                                              .name = {},
                                              .default_extension = {}});
  if (!files) return;
  plan_.AddFiles(files->paths);
  FillList();
  Refresh();
}

void CTruckPackDialog::Remove() {
  std::vector<qlonglong> rows;
  for (const QTreeWidgetItem* item : list_->selectedItems())
    rows.push_back(item->data(kName, Qt::UserRole).toLongLong());
  std::ranges::sort(rows, std::greater());
  for (const qlonglong row : rows)
    if (plan_.rows[static_cast<size_t>(row)].is_extra) plan_.rows.erase(plan_.rows.begin() + row);
  FillList();
  Refresh();
}

void CTruckPackDialog::FillList() {
  list_->clear();
  // What was not found comes first.
  for (const bool is_missing : {true, false}) {
    for (const STruckPackRow& row : plan_.rows) {
      if (row.is_missing != is_missing) continue;
      auto* item = new QTreeWidgetItem(list_);
      item->setText(kName, NameToQString(row.name));
      item->setText(kSize, row.length ? QLocale::c().toString(static_cast<qulonglong>(*row.length)) : QString());
      item->setTextAlignment(kSize, Qt::AlignRight | Qt::AlignVCenter);
      item->setText(kNeededBy, row.is_extra ? tr("added by you (Del removes it)") : NameToQString(row.needed_by));
      item->setToolTip(kWhere, ToolTipText(NameToQString(row.where)));
      item->setData(kName, Qt::UserRole, QVariant::fromValue(static_cast<qlonglong>(&row - plan_.rows.data())));
    }
  }
  constexpr int kAir = 14;
  for (int column = 0; column < kNeededBy; ++column) {
    list_->resizeColumnToContents(column);
    list_->setColumnWidth(column, list_->columnWidth(column) + kAir);
  }
  constexpr int kWhereWidth = 300;
  list_->setColumnWidth(kWhere, kWhereWidth);
}

void CTruckPackDialog::Refresh() {
  const bool leaves_out = leave_out_->isChecked();
  uint64_t bytes = 0;
  int files = 0;
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const item = list_->topLevelItem(i);
    const STruckPackRow& row = plan_.rows[static_cast<size_t>(item->data(kName, Qt::UserRole).toLongLong())];
    const bool is_left_out = STruckPackPlan::IsLeftOut(row, leaves_out);
    const bool is_fault = row.is_missing && !is_left_out;
    item->setText(kWhere, is_left_out ? LeftOutText(row) : is_fault ? tr("not found") : NameToQString(row.where));
    const QColor color = is_fault
                             ? FaultColor(palette())
                             : palette().color(is_left_out ? QPalette::Disabled : QPalette::Active, QPalette::Text);
    for (int column = 0; column < kColumnCount; ++column)
      item->setForeground(column, color);
    if (row.is_missing || is_left_out) continue;
    ++files;
    bytes += row.length.value_or(0);
  }
  total_->setText(tr("%1 files, %2 bytes").arg(files).arg(QLocale::c().toString(static_cast<qulonglong>(bytes))));
  const auto lacking = static_cast<int>(plan_.Lacking(leaves_out).size());
  missing_->setVisible(lacking > 0);
  missing_->setText(lacking == 1 ? tr("One file was not found. The archive will lack it.")
                                 : tr("%1 files were not found. The archive will lack them.").arg(lacking));
}

}  // namespace veldra

#include "document/earlierstatesdlg.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

#include "model/texturepicture.h"
#include "ui/faultlabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EColumn { kTime, kCommand, kVertices, kFaces, kSize };

constexpr int kPictureSide = 64;
constexpr QSize kUsualSize(760, 460);
constexpr int kIdRole = Qt::UserRole;

bool IsSound(const QTreeWidgetItem* item) {
  return item != nullptr && item->flags().testFlag(Qt::ItemIsEnabled);
}

}  // namespace

CEarlierStatesDialog::CEarlierStatesDialog(const QString& title, const std::vector<SEarlierState>& states,
                                           ECopyKind kind, QWidget* parent)
    : QDialog(parent), list_(new QTreeWidget), buttons_(new QDialogButtonBox(QDialogButtonBox::Cancel)) {
  setObjectName("earlierStates");
  setWindowTitle(tr("Earlier States"));
  list_->setObjectName("states");
  list_->setHeaderLabels({tr("Time"), tr("Command"), tr("Vertices"), tr("Faces"), tr("Size")});
  list_->setRootIsDecorated(false);
  list_->setAllColumnsShowFocus(true);
  list_->setIconSize({kPictureSide, kPictureSide});
  for (const SEarlierState& state : states)
    AddState(state);
  list_->setCurrentItem(list_->topLevelItem(0));
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(kCommand, QHeaderView::Stretch);
  for (const EColumn column : {kVertices, kFaces, kSize})
    list_->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  for (const EColumn column : {kVertices, kFaces})
    list_->setColumnHidden(column, kind != ECopyKind::kModel);

  back_ = MakeChoice(tr("&Go back to this state"), "goBack", true);
  open_ = kind == ECopyKind::kModel ? MakeChoice(tr("&Open as a new document"), "open", false) : nullptr;
  back_->setDefault(true);
  const auto refresh = [this] {
    for (QPushButton* button : {back_, open_})
      if (button != nullptr) button->setEnabled(IsSound(list_->currentItem()) && (button == open_ || !is_read_only_));
  };
  connect(list_, &QTreeWidget::currentItemChanged, this, refresh);
  connect(list_, &QTreeWidget::itemActivated, this, [this] { (is_read_only_ ? open_ : back_)->click(); });
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* text = new QLabel(states.empty() ? tr("No earlier state of %1 is kept yet.").arg(title)
                                         : tr("States that %1 had, the newest first:").arg(title));
  text->setTextFormat(Qt::PlainText);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addWidget(list_, 1);
  layout->addWidget(buttons_);
  list_->setFocus();
  resize(kUsualSize);
  refresh();
}

QPushButton* CEarlierStatesDialog::MakeChoice(const QString& text, const QString& name, bool goes_back) {
  QPushButton* const button = buttons_->addButton(text, QDialogButtonBox::ActionRole);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, [this, goes_back] {
    goes_back_ = goes_back;
    accept();
  });
  return button;
}

void CEarlierStatesDialog::SetReadOnly(bool is_read_only) {
  is_read_only_ = is_read_only;
  back_->setEnabled(!is_read_only && IsSound(list_->currentItem()));
}

void CEarlierStatesDialog::AddState(const SEarlierState& state) {
  const QLocale locale;
  auto* item = new QTreeWidgetItem(list_);
  item->setData(kTime, kIdRole, QVariant::fromValue(state.id));
  item->setText(kSize, tr("%1 bytes").arg(locale.toString(static_cast<qulonglong>(state.size))));
  item->setTextAlignment(kSize, Qt::AlignRight | Qt::AlignVCenter);
  if (!state.fault.empty()) {
    item->setText(kCommand, tr("Damaged: %1").arg(NameToQString(state.fault)));
    item->setToolTip(kCommand, ToolTipText(item->text(kCommand)));
    item->setForeground(kCommand, FaultColor(palette()));
    item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
    return;
  }
  const QDateTime time = QDateTime::fromSecsSinceEpoch(state.time);
  item->setText(kTime, locale.toString(time, QLocale::ShortFormat));
  item->setToolTip(kTime, locale.toString(time, QLocale::LongFormat));
  item->setIcon(kTime, PictureOf(state.picture, kPictureSide, *this));
  item->setText(kCommand, NameToQString(state.command));
  item->setText(kVertices, locale.toString(state.vertices));
  item->setText(kFaces, locale.toString(state.faces));
  item->setTextAlignment(kVertices, Qt::AlignRight | Qt::AlignVCenter);
  item->setTextAlignment(kFaces, Qt::AlignRight | Qt::AlignVCenter);
}

std::optional<uint64_t> CEarlierStatesDialog::Chosen() const {
  if (result() != Accepted || !IsSound(list_->currentItem())) return std::nullopt;
  return list_->currentItem()->data(kTime, kIdRole).value<uint64_t>();
}

}  // namespace veldra

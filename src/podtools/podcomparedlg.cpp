#include "podtools/podcomparedlg.h"

#include <QHeaderView>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "platform/paths.h"
#include "platform/text.h"
#include "ui/dialogplace.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum ECompareColumn { kEntry, kHereSize, kThereSize, kState, kCompareColumns };

constexpr QSize kUsualCompareSize(720, 480);
constexpr int kEntryWidth = 240;
constexpr int kPairRole = Qt::UserRole;

QString MatchText(EPodMatch match) {
  switch (match) {
    case EPodMatch::kSame:
      return QObject::tr("the same");
    case EPodMatch::kDiffers:
      return QObject::tr("differs");
    case EPodMatch::kOnlyHere:
      return QObject::tr("only here");
    case EPodMatch::kOnlyThere:
      return QObject::tr("only there");
    case EPodMatch::kUnknown:
      break;
  }
  return QObject::tr("cannot be read");
}

QString SizeText(const CPodDocument& archive, std::optional<size_t> entry) {
  return entry ? QLocale().toString(archive.Entries()[*entry].length) : QStringLiteral("-");
}

}  // namespace

CPodCompareDlg::CPodCompareDlg(const SToolServices& services, const CPodDocument& here, Taker take, QWidget* parent)
    : QDialog(parent, kToolWindow),
      services_(services),
      here_(here),
      take_(std::move(take)),
      summary_(new QLabel),
      shown_(new QComboBox),
      rows_(new QTreeWidget),
      take_button_(new QPushButton(tr("&Take Over From There"))) {
  setObjectName("podCompare");
  summary_->setObjectName("compareSummary");
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  shown_->setObjectName("comparedShown");
  shown_->addItems({tr("What is not the same"), tr("Everything")});
  rows_->setObjectName("compared");
  rows_->setHeaderLabels({tr("File"), tr("Size here"), tr("Size there"), tr("State")});
  rows_->setRootIsDecorated(false);
  rows_->setUniformRowHeights(true);
  rows_->setAllColumnsShowFocus(true);
  rows_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  rows_->setColumnWidth(kEntry, kEntryWidth);
  take_button_->setObjectName("takeOver");
  take_button_->setToolTip(tr("Puts the selected files of the other archive into this one. Saving comes later."));
  auto* const close = new QPushButton(tr("Close"));
  auto* const top = new QHBoxLayout;
  top->addWidget(summary_, 1);
  top->addWidget(shown_);
  auto* const bottom = new QHBoxLayout;
  bottom->addStretch();
  bottom->addWidget(take_button_);
  bottom->addWidget(close);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(rows_, 1);
  layout->addLayout(bottom);
  connect(shown_, &QComboBox::currentIndexChanged, this, &CPodCompareDlg::ShowPairs);
  connect(rows_, &QTreeWidget::itemSelectionChanged, this, &CPodCompareDlg::Refresh);
  connect(take_button_, &QPushButton::clicked, this, &CPodCompareDlg::Take);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  resize(kUsualCompareSize);
}

bool CPodCompareDlg::CompareWith(const std::string& path) {
  SError error;
  if (!there_.Load(path, &error)) return services_.questions.Fail(kFailedToLoadPod, error.what);
  setWindowTitle(tr("%1 and %2").arg(NameToQString(FileNamePart(here_.Path())), NameToQString(FileNamePart(path))));
  return Compare();
}

bool CPodCompareDlg::Compare() {
  auto pairs = ComparePods(services_.questions, here_, there_);
  if (!pairs) return false;
  pairs_ = std::move(*pairs);
  std::array<int, 5> counts = {};
  for (const SPodPair& pair : pairs_)
    ++counts[static_cast<size_t>(pair.match)];
  const auto count = [&](EPodMatch match) { return QLocale().toString(counts[static_cast<size_t>(match)]); };
  summary_->setText(tr("Here: %1\nThere: %2\n%3 differ, %4 only here, %5 only there, %6 the same")
                        .arg(NameToQString(here_.Path()), NameToQString(there_.Path()), count(EPodMatch::kDiffers),
                             count(EPodMatch::kOnlyHere), count(EPodMatch::kOnlyThere), count(EPodMatch::kSame)));
  ShowPairs();
  return true;
}

void CPodCompareDlg::ShowPairs() {
  rows_->clear();
  const bool shows_all = shown_->currentIndex() > 0;
  for (size_t i = 0; i < pairs_.size(); ++i)
    if (shows_all || pairs_[i].match != EPodMatch::kSame) AddRow(i);
  Refresh();
}

void CPodCompareDlg::AddRow(size_t index) {
  const SPodPair& pair = pairs_[index];
  const CPodDocument& holder = pair.here ? here_ : there_;
  auto* const row = new QTreeWidgetItem(rows_);
  row->setText(kEntry, NameToQString(holder.Entries()[pair.here ? *pair.here : *pair.there].Name()));
  row->setText(kHereSize, SizeText(here_, pair.here));
  row->setText(kThereSize, SizeText(there_, pair.there));
  row->setText(kState, MatchText(pair.match));
  for (const int column : {kHereSize, kThereSize})
    row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  row->setData(kEntry, kPairRole, static_cast<qulonglong>(index));
}

void CPodCompareDlg::Refresh() {
  const auto selected = rows_->selectedItems();
  take_button_->setEnabled(std::ranges::any_of(selected, [&](const QTreeWidgetItem* row) {
    const SPodPair& pair = pairs_[row->data(kEntry, kPairRole).toULongLong()];
    return pair.match == EPodMatch::kDiffers || pair.match == EPodMatch::kOnlyThere;
  }));
}

void CPodCompareDlg::Take() {
  std::vector<SPodSource> sources;
  for (const QTreeWidgetItem* row : rows_->selectedItems()) {
    const SPodPair& pair = pairs_[row->data(kEntry, kPairRole).toULongLong()];
    if (!pair.there || pair.match == EPodMatch::kSame) continue;
    const SPodEntry& entry = there_.Entries()[*pair.there];
    sources.push_back({std::string(entry.Name()), there_.PartOf(entry)});
  }
  if (!sources.empty() && take_(sources)) Compare();
}

}  // namespace veldra

#include "podtools/podcomparedlg.h"

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

enum ECompareColumn { kEntry, kHereSize, kThereSize, kState };

constexpr QSize kUsualCompareSize(720, 480);
constexpr int kEntryWidth = 240;

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

bool IsWorthTaking(const SPodPair& pair) {
  return pair.match == EPodMatch::kDiffers || pair.match == EPodMatch::kOnlyThere;
}

}  // namespace

int64_t CPodPairRows::SizeOf(const SPodPair& pair, int column) const {
  const auto& entry = column == kHereSize ? pair.here : pair.there;
  return entry ? int64_t{(column == kHereSize ? here_ : there_).Entries()[*entry].length} : -1;
}

QString CPodPairRows::Text(int row, int column) const {
  const SPodPair& pair = Pair(row);
  if (column == kState) return MatchText(pair.match);
  if (column == kEntry)
    return NameToQString((pair.here ? here_ : there_).Entries()[pair.here ? *pair.here : *pair.there].Name());
  const int64_t size = SizeOf(pair, column);
  return size < 0 ? QStringLiteral("-") : QLocale().toString(qlonglong{size});
}

bool CPodPairRows::IsBefore(int row, int other, int column) const {
  if (column == kState || column == kEntry) return CGridRows::IsBefore(row, other, column);
  return SizeOf(Pair(row), column) < SizeOf(Pair(other), column);
}

CPodCompareDlg::CPodCompareDlg(const SToolServices& services, const CPodDocument& here, Taker take, QWidget* parent)
    : QDialog(parent, kToolWindow),
      services_(services),
      here_(here),
      take_(std::move(take)),
      summary_(new QLabel),
      shown_(new QComboBox),
      grid_(
          new CDataGrid("compared", {{tr("File")}, {tr("Size here"), true}, {tr("Size there"), true}, {tr("State")}})),
      take_button_(new QPushButton(tr("&Take Over From There"))) {
  setObjectName("podCompare");
  summary_->setObjectName("compareSummary");
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  shown_->setObjectName("comparedShown");
  shown_->addItems({tr("What is not the same"), tr("Everything")});
  grid_->setColumnWidth(kEntry, kEntryWidth);
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
  layout->addWidget(grid_, 1);
  layout->addLayout(bottom);
  connect(shown_, &QComboBox::currentIndexChanged, this, &CPodCompareDlg::ShowPairs);
  connect(grid_, &CDataGrid::SelectedRowsChanged, this, &CPodCompareDlg::Refresh);
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
  std::vector<SPodPair> shown = pairs_;
  if (shown_->currentIndex() == 0)
    std::erase_if(shown, [](const auto& pair) { return pair.match == EPodMatch::kSame; });
  rows_.Show(std::move(shown));
  grid_->Show(rows_);
}

void CPodCompareDlg::Refresh() {
  take_button_->setEnabled(
      std::ranges::any_of(grid_->SelectedRows(), [this](int row) { return IsWorthTaking(rows_.Pair(row)); }));
}

void CPodCompareDlg::Take() {
  std::vector<SPodSource> sources;
  for (const int row : grid_->SelectedRows()) {
    const SPodPair& pair = rows_.Pair(row);
    if (!pair.there || pair.match == EPodMatch::kSame) continue;
    const SPodEntry& entry = there_.Entries()[*pair.there];
    sources.push_back({std::string(entry.Name()), there_.PartOf(entry)});
  }
  if (!sources.empty() && take_(sources)) Compare();
}

}  // namespace veldra

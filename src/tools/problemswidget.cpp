#include "tools/problemswidget.h"

#include <QElapsedTimer>
#include <QMenu>
#include <QSignalBlocker>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "editing/problemcommands.h"
#include "model/modelmends.h"
#include "platform/text.h"
#include "ui/linklabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// A drag brings changes faster than this.
constexpr int kQuietMs = 250;
/// At a time, so that a frame is not missed.
constexpr int kCheckSliceMs = 6;
constexpr size_t kItemsALook = 1024;
/// More of a kind nobody reads; mending all of them mends the others as well.
constexpr size_t kMostOfAKind = 10000;
constexpr int kWideFoot = 560;

int FirstOf(const std::vector<int32_t>& numbers) {
  return numbers.empty() ? INT32_MAX : numbers.front();
}

QString TitleOf(EFinding kind) {
  return QString::fromUtf8(KindOfProblem(kind).title);
}

QString FirstUpper(QString text) {
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

}  // namespace

// --- Rows ------------------------------------------------------------------------------------------------------------

void CProblemRows::Take(std::vector<SFinding> findings) {
  findings_ = std::move(findings);
  ShowOnly(kind_);
}

void CProblemRows::ShowOnly(std::optional<EFinding> kind) {
  kind_ = kind;
  shown_.clear();
  for (size_t i = 0; i < findings_.size(); ++i)
    if (!kind || findings_[i].kind == *kind) shown_.push_back(i);
}

QString CProblemRows::Text(int row, int column) const {
  const SFinding& finding = Finding(row);
  if (column == kKind) return TitleOf(finding.kind);
  return column == kPlace ? ToQString(PlaceText(finding)) : FirstUpper(ToQString(finding.text));
}

bool CProblemRows::IsBefore(int row, int other, int column) const {
  const SFinding& a = Finding(row);
  const SFinding& b = Finding(other);
  const auto place = [](const SFinding& finding) {
    return std::pair(FirstOf(finding.faces), FirstOf(finding.vertices));
  };
  if (column == kPlace || a.kind == b.kind) return place(a) < place(b);
  return a.kind < b.kind;
}

QVariant CProblemRows::Data(int row, int, Qt::ItemDataRole role) const {
  if (role != Qt::ToolTipRole) return {};
  const SFinding& finding = Finding(row);
  return ToolTipText(FirstUpper(ToQString(finding.text)) + ".\n" +
                     QString::fromUtf8(KindOfProblem(finding.kind).advice));
}

// --- The window ------------------------------------------------------------------------------------------------------

CProblemsWidget::CProblemsWidget()
    : CToolWidget("problemsTool"),
      kinds_(new QComboBox),
      summary_(new QLabel),
      grid_(new CDataGrid("problemList", {{tr("Problem")}, {tr("Where")}, {tr("What")}})),
      advice_(new QLabel),
      mend_(new QPushButton),
      mend_all_(new QPushButton) {
  kinds_->setObjectName("problemKinds");
  kinds_->setToolTip(tr("Which kinds of problems are listed"));
  kinds_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  summary_->setObjectName("problemSummary");
  grid_->setContextMenuPolicy(Qt::CustomContextMenu);
  grid_->setMinimumHeight(3 * fontMetrics().height());
  auto* top = new QHBoxLayout;
  top->addWidget(kinds_);
  top->addWidget(summary_, 1);
  auto* help = new CLinkLabel("problemsLink", tr("About problems"));
  connect(help, &CLinkLabel::Followed, this, &CProblemsWidget::HelpWanted);
  top->addWidget(help);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addLayout(top);
  layout->addWidget(grid_, 1);
  layout->addLayout(MakeFoot());
  grid_->Show(rows_);
  connect(kinds_, &QComboBox::currentIndexChanged, this, &CProblemsWidget::ShowKind);
  connect(grid_, &CDataGrid::RowActivated, this, &CProblemsWidget::Jump);
  connect(grid_, &CDataGrid::SelectedRowsChanged, this, &CProblemsWidget::UpdateFoot);
  connect(grid_, &QWidget::customContextMenuRequested, this, &CProblemsWidget::ShowMenu);
  FillKinds();
  UpdateFoot();
}

QLayout* CProblemsWidget::MakeFoot() {
  advice_->setObjectName("problemAdvice");
  advice_->setWordWrap(true);
  advice_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  mend_->setObjectName("mend");
  mend_all_->setObjectName("mendAll");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(mend_);
  buttons->addWidget(mend_all_);
  foot_ = new QBoxLayout(QBoxLayout::TopToBottom);
  foot_->addWidget(advice_, 1);
  foot_->addLayout(buttons);
  connect(mend_, &QPushButton::clicked, this, &CProblemsWidget::MendChosen);
  connect(mend_all_, &QPushButton::clicked, this, &CProblemsWidget::MendAll);
  return foot_;
}

/// Below the views, a few rows high.
QSize CProblemsWidget::sizeHint() const {
  constexpr int kLines = 13;
  return {CToolWidget::sizeHint().width(), kLines * fontMetrics().lineSpacing()};
}

void CProblemsWidget::resizeEvent(QResizeEvent* event) {
  CToolWidget::resizeEvent(event);
  foot_->setDirection(width() >= kWideFoot ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

size_t CProblemsWidget::Count() const {
  return std::accumulate(counts_.begin(), counts_.end(), size_t{0});
}

// --- Checking --------------------------------------------------------------------------------------------------------

bool CProblemsWidget::IsUpToDate() const {
  if (View() == nullptr || !is_shown_) return false;
  const CBinModel& model = View()->Document().Model();
  return !model.IsBusy() && model.Identity() == identity_ && model.Revision() == revision_;
}

void CProblemsWidget::Refresh(const SNews& news) {
  if (View() == nullptr) {
    wait_.stop();
    check_.reset();
    counts_ = {};
    identity_ = 0;
    TakeResult();
  } else if (news.view || !IsUpToDate()) {
    is_shown_ = is_shown_ && !news.view;
    CheckSoon(news.view ? 0 : kQuietMs);
  }
  UpdateFoot();
}

void CProblemsWidget::CheckSoon(int delay_ms) {
  work_.stop();
  check_.reset();
  wait_.start(delay_ms, this);
}

void CProblemsWidget::timerEvent(QTimerEvent* event) {
  if (event->timerId() == wait_.timerId()) return BeginCheck();
  if (event->timerId() == work_.timerId()) return GoOn();
  CToolWidget::timerEvent(event);
}

void CProblemsWidget::BeginCheck() {
  wait_.stop();
  if (View() == nullptr) return;
  if (View()->Document().Model().IsBusy()) return CheckSoon(kQuietMs);
  const CBinModel& model = View()->Document().Model();
  is_shown_ = false;
  identity_ = model.Identity();
  revision_ = model.Revision();
  check_ = std::make_unique<CModelChecker>(CheckedOf(model), kMostOfAKind);
  work_.start(0, this);
  GoOn();
}

void CProblemsWidget::GoOn() {
  const CBinModel* model = View() == nullptr ? nullptr : &View()->Document().Model();
  if (model != nullptr && model->IsBusy()) return;  // half a model
  const bool is_same =
      model != nullptr && check_ != nullptr && model->Identity() == identity_ && model->Revision() == revision_;
  if (!is_same) {
    // What has come instead is reported, or has been.
    work_.stop();
    check_.reset();
    return;
  }
  QElapsedTimer time;
  time.start();
  bool is_done = false;
  while (!is_done && time.elapsed() < kCheckSliceMs)
    is_done = check_->Go(kItemsALook);
  if (is_done) TakeResult();
}

/// Of the check, where there is one; else there is nothing to be shown.
void CProblemsWidget::TakeResult() {
  work_.stop();
  for (size_t i = 0; i < kFindingCount && check_ != nullptr; ++i)
    counts_[i] = check_->Count(static_cast<EFinding>(i));
  rows_.Take(check_ == nullptr ? std::vector<SFinding>() : check_->TakeFindings());
  is_shown_ = check_ != nullptr;
  check_.reset();
  FillKinds();
  grid_->Renew();
  grid_->FitColumnsOnce();
  UpdateFoot();
  emit CountChanged();
}

// --- What is shown ---------------------------------------------------------------------------------------------------

void CProblemsWidget::FillKinds() {
  const QSignalBlocker quiet(kinds_);
  const QVariant chosen = kinds_->currentData();
  kinds_->clear();
  kinds_->addItem(tr("All problems (%L1)").arg(Count()));
  for (size_t i = 0; i < kFindingCount; ++i)
    if (counts_[i] > 0)
      kinds_->addItem(QStringLiteral("%1 (%L2)").arg(TitleOf(static_cast<EFinding>(i))).arg(counts_[i]),
                      static_cast<int>(i));
  const int at = chosen.isValid() ? kinds_->findData(chosen) : 0;
  kinds_->setCurrentIndex(std::max(0, at));
  kinds_->setEnabled(Count() > 0);
  if (at < 0) rows_.ShowOnly(std::nullopt);
  const bool is_cut = std::ranges::any_of(counts_, [](size_t count) { return count > kMostOfAKind; });
  summary_->setText(View() == nullptr ? tr("No model is open.")
                    : Count() == 0    ? tr("No problems found.")
                    : is_cut          ? tr("The first %L1 of each kind are listed.").arg(kMostOfAKind)
                                      : QString());
}

void CProblemsWidget::ShowKind() {
  const QVariant kind = kinds_->currentData();
  rows_.ShowOnly(kind.isValid() ? std::optional(static_cast<EFinding>(kind.toInt())) : std::nullopt);
  grid_->Renew();
}

/// Of what is selected, what can be mended.
std::vector<int> CProblemsWidget::Mendable() const {
  std::vector<int> rows = grid_->SelectedRows();
  std::erase_if(rows, [this](int row) { return !CanMend(rows_.Finding(row).kind); });
  return rows;
}

QString CProblemsWidget::MendText() const {
  const std::vector<int> rows = Mendable();
  const int current = grid_->CurrentRow();
  if (rows.empty()) return current < 0 ? QString() : QString::fromUtf8(KindOfProblem(rows_.Finding(current).kind).mend);
  const EFinding kind = rows_.Finding(rows.front()).kind;
  const bool is_one_kind = std::ranges::all_of(rows, [&](int row) { return rows_.Finding(row).kind == kind; });
  const QString text = is_one_kind ? QString::fromUtf8(KindOfProblem(kind).mend) : tr("Mend Selected");
  return rows.size() == 1 ? text : tr("%1 (%L2)").arg(text).arg(rows.size());
}

QString CProblemsWidget::MendAllText() const {
  const int row = grid_->CurrentRow();
  if (row < 0 || !CanMend(rows_.Finding(row).kind)) return {};
  const EFinding kind = rows_.Finding(row).kind;
  const size_t count = counts_[static_cast<size_t>(kind)];
  return count < 2 ? QString() : tr("%1 (%L2)").arg(QString::fromUtf8(KindOfProblem(kind).mend_all)).arg(count);
}

void CProblemsWidget::UpdateFoot() {
  const int row = grid_->CurrentRow();
  const SProblemKind* kind = row < 0 ? nullptr : &KindOfProblem(rows_.Finding(row).kind);
  const bool can_change = View() != nullptr && !View()->Document().IsReadOnly();
  advice_->setText(kind != nullptr ? QString::fromUtf8(kind->advice)
                   : Count() > 0   ? tr("Enter, or a double click, shows where a problem is.")
                                   : QString());
  mend_->setText(MendText());
  mend_all_->setText(MendAllText());
  for (QPushButton* button : {mend_, mend_all_}) {
    button->setVisible(!button->text().isEmpty());
    button->setEnabled(can_change && !grid_->SelectedRows().empty());
    button->setToolTip(can_change ? QString() : tr("The model is read-only."));
  }
}

void CProblemsWidget::Jump(int row) {
  if (row < 0 || !IsUpToDate()) return;
  if (SelectProblem(View()->Cursor(), rows_.Finding(row))) View()->BringSelectionIntoSight();
}

void CProblemsWidget::MendChosen() {
  const int row = grid_->CurrentRow();
  if (row < 0 || !IsUpToDate()) return;
  std::vector<SFinding> findings;
  for (const int mendable : Mendable())
    findings.push_back(rows_.Finding(mendable));
  if (MendProblems(View()->Document(), findings) > 0) return BeginCheck();
  const SProblemKind& kind = KindOfProblem(rows_.Finding(row).kind);
  if (*kind.command == '\0') return;
  Jump(row);  // the command is about what is current
  emit CommandWanted(kind.command);
}

void CProblemsWidget::MendAll() {
  const int row = grid_->CurrentRow();
  if (row < 0 || !IsUpToDate()) return;
  if (MendAllProblems(View()->Document(), rows_.Finding(row).kind) > 0) BeginCheck();
}

void CProblemsWidget::ShowMenu(const QPoint& at) {
  if (!IsUpToDate() || grid_->CurrentRow() < 0) return;
  QMenu menu;
  menu.setObjectName("problemMenu");
  menu.addAction(tr("&Show in the Model"), this, [this] { Jump(grid_->CurrentRow()); });
  menu.addSeparator();
  for (QPushButton* button : {mend_, mend_all_}) {
    if (button->text().isEmpty()) continue;
    menu.addAction(button->text(), button, &QPushButton::click)->setEnabled(button->isEnabled());
  }
  menu.addSeparator();
  menu.addAction(tr("&Copy"), grid_, &CDataGrid::Copy)->setShortcut(QKeySequence::Copy);
  menu.addAction(tr("Select &All"), grid_, &QTreeView::selectAll)->setShortcut(QKeySequence::SelectAll);
  menu.exec(grid_->viewport()->mapToGlobal(at));
}

}  // namespace veldra

#include "podtools/podproblemswidget.h"

#include <algorithm>
#include <map>
#include <span>
#include <string_view>

#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kKindWidth = 130;
/// More nobody reads, and a damaged archive can have a million.
constexpr size_t kMostShown = 1000;

QString KindText(std::string_view kind) {
  static const std::map<std::string_view, QString> texts = {{"beyond-end", QObject::tr("Outside")},
                                                            {"overlap", QObject::tr("Shared bytes")},
                                                            {"twice", QObject::tr("Name twice")},
                                                            {"unsafe-name", QObject::tr("Name leads out")},
                                                            {"unusable-name", QObject::tr("Not for the game")}};
  const auto text = texts.find(kind);
  return text != texts.end() ? text->second : ToQString(kind);
}

}  // namespace

CPodProblemsWidget::CPodProblemsWidget(QWidget* parent)
    : CDataGrid("problems", {{tr("Problem")}, {tr("What it is about")}}, parent) {
  CDataGrid::Show(rows_);
  setColumnWidth(0, kKindWidth);
  connect(this, &CDataGrid::SelectedRowsChanged, this, [this] {
    std::vector<size_t> entries;
    for (const int row : SelectedRows())
      if (const auto at = static_cast<size_t>(row); at < findings_.size())
        entries.insert(entries.end(), findings_[at].entries.begin(), findings_[at].entries.end());
    if (!entries.empty()) emit EntriesWanted(entries);
  });
}

void CPodProblemsWidget::ShowProblemsOf(const CPodDocument& archive) {
  archive_ = &archive;
  is_due_ = true;
  if (isVisible()) Test();
}

void CPodProblemsWidget::showEvent(QShowEvent* event) {
  CDataGrid::showEvent(event);
  if (is_due_) Test();
}

void CPodProblemsWidget::Test() {
  is_due_ = false;
  rows_.rows.clear();
  findings_ = archive_->Path().empty() ? std::vector<SPodFinding>() : TestPod(*archive_);
  for (const SPodFinding& finding : std::span(findings_).first(std::min(findings_.size(), kMostShown)))
    rows_.rows.push_back({{KindText(finding.kind), ToQString(finding.text)}});
  if (findings_.size() > kMostShown)
    rows_.rows.push_back({{QString(), tr("and %1 more").arg(findings_.size() - kMostShown)}});
  if (findings_.empty()) rows_.rows.push_back({{QString(), tr("Nothing is wrong with the archive.")}});
  CDataGrid::Show(rows_);
}

}  // namespace veldra

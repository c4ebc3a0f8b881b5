#include "podtools/podproblemswidget.h"

#include <algorithm>
#include <map>
#include <span>
#include <string_view>

#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EProblemColumn { kKind, kText, kProblemColumns };
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

CPodProblemsWidget::CPodProblemsWidget(QWidget* parent) : QTreeWidget(parent) {
  setObjectName("problems");
  setColumnCount(kProblemColumns);
  setHeaderLabels({tr("Problem"), tr("What it is about")});
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setColumnWidth(kKind, kKindWidth);
  connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
    const int row = selectedItems().isEmpty() ? -1 : indexOfTopLevelItem(selectedItems().first());
    if (row >= 0 && static_cast<size_t>(row) < findings_.size())
      emit EntriesWanted(findings_[static_cast<size_t>(row)].entries);
  });
}

void CPodProblemsWidget::Show(const CPodDocument& archive) {
  archive_ = &archive;
  is_due_ = true;
  if (isVisible()) Test();
}

void CPodProblemsWidget::showEvent(QShowEvent* event) {
  QTreeWidget::showEvent(event);
  if (is_due_) Test();
}

void CPodProblemsWidget::Test() {
  is_due_ = false;
  clear();
  findings_ = archive_->Path().empty() ? std::vector<SPodFinding>() : TestPod(*archive_);
  for (const SPodFinding& finding : std::span(findings_).first(std::min(findings_.size(), kMostShown)))
    addTopLevelItem(new QTreeWidgetItem({KindText(finding.kind), ToQString(finding.text)}));
  if (findings_.size() > kMostShown)
    addTopLevelItem(new QTreeWidgetItem({QString(), tr("and %1 more").arg(findings_.size() - kMostShown)}));
  if (findings_.empty()) addTopLevelItem(new QTreeWidgetItem({QString(), tr("Nothing is wrong with the archive.")}));
}

}  // namespace veldra

#include "ui/sizepreview.h"

#include <QGridLayout>

namespace veldra {

namespace {

constexpr const char* kAxes[] = {"X", "Y", "Z"};
/// As wide as what is usual, so that the dialog keeps its width.
constexpr const char* kWidestSize = "10000000";
constexpr const char* kWidestPlace = "-1000000 to 1000000";
constexpr int kLastRow = 7;

QLabel* MakeCell(const QString& name, const char* widest) {
  auto* cell = new QLabel;
  cell->setObjectName(name);
  cell->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  cell->setMinimumWidth(cell->fontMetrics().horizontalAdvance(widest));
  cell->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return cell;
}

QLabel* MakeHead(const QString& text) {
  auto* head = new QLabel(text);
  head->setAlignment(Qt::AlignRight);
  return head;
}

QString SizeText(const SExtent& extent) {
  return QString::number(int64_t{extent.largest} - extent.smallest);
}

}  // namespace

CSizePreview::CSizePreview(QWidget* parent) : QGroupBox(tr("Size of the model"), parent) {
  auto* grid = new QGridLayout(this);
  grid->setHorizontalSpacing(16);
  grid->addWidget(MakeHead(tr("Now")), 0, 1);
  grid->addWidget(MakeHead(tr("Afterwards")), 0, 2);
  grid->addWidget(MakeHead(tr("Range")), 0, 3);
  for (int axis = 0; axis < 3; ++axis) {
    const QString name = kAxes[axis];
    SRow& row = rows_[static_cast<size_t>(axis)];
    row = {MakeCell("present" + name, kWidestSize), MakeCell("result" + name, kWidestSize),
           MakeCell("place" + name, kWidestPlace)};
    grid->addWidget(new QLabel(name), axis + 1, 0);
    grid->addWidget(row.present, axis + 1, 1);
    grid->addWidget(row.result, axis + 1, 2);
    grid->addWidget(row.place, axis + 1, 3);
  }
  grid->setRowStretch(kLastRow, 1);
  grid->setColumnStretch(3, 1);
  SetResult(std::nullopt);
}

void CSizePreview::MakeNarrow() {
  constexpr int kNarrowSpacing = 8;
  auto* grid = static_cast<QGridLayout*>(layout());
  grid->setHorizontalSpacing(kNarrowSpacing);
  delete grid->itemAtPosition(0, 3)->widget();
  grid->setColumnStretch(3, 0);
  // From below, as each takes the place of one that has gone.
  for (int axis = 2; axis >= 0; --axis) {
    const SRow& row = rows_[static_cast<size_t>(axis)];
    const int line = 2 * axis + 1;
    grid->addWidget(grid->itemAtPosition(axis + 1, 0)->widget(), line, 0);
    grid->addWidget(row.present, line, 1);
    grid->addWidget(row.result, line, 2);
    grid->addWidget(row.place, line + 1, 0, 1, 3);
    row.place->setMinimumWidth(0);
  }
}

void CSizePreview::SetPresent(const Extents& extents) {
  for (size_t axis = 0; axis < 3; ++axis)
    rows_[axis].present->setText(SizeText(extents[axis]));
}

void CSizePreview::SetResult(const std::optional<Extents>& extents) {
  const QString none = QString(QChar(0x2013));
  for (size_t axis = 0; axis < 3; ++axis) {
    const SRow& row = rows_[axis];
    row.result->setText(extents ? SizeText((*extents)[axis]) : none);
    row.place->setText(extents ? tr("%1 to %2").arg((*extents)[axis].smallest).arg((*extents)[axis].largest) : none);
  }
}

}  // namespace veldra

#include "interchange/importoptionsdlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>

#include "platform/paths.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr const char* kAxes[] = {"X", "Y", "Z"};
constexpr const char* kNothing = "–";

QLabel* NumberLabel(const char* name) {
  auto* const label = new QLabel;
  label->setObjectName(name);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return label;
}

QString Counts(const SWaveMesh& mesh, const std::string& path) {
  return ToQString(Format("%s (vertices: %zu, faces: %zu)", DisplayName(FileNamePart(path)).c_str(),
                          mesh.vertices.size(), mesh.FaceCount()));
}

}  // namespace

CImportOptionsDialog::CImportOptionsDialog(const SWaveMesh& mesh, const std::string& path, const SWaveOptions& last,
                                           QWidget* parent)
    : CFieldDialog("importOptions", tr("Import WaveFront Model"), parent), mesh_(mesh) {
  auto* const counts = new QLabel(Counts(mesh, path));
  counts->setTextFormat(Qt::PlainText);
  counts->setWordWrap(true);
  Content()->addWidget(counts);
  auto* const line = new QHBoxLayout;
  line->addWidget(MakeOptions(last), 1);
  line->addWidget(MakePreview());
  Content()->addLayout(line);
  StartWith(scale_);
  Refresh();
}

QWidget* CImportOptionsDialog::MakeOptions(const SWaveOptions& last) {
  auto* const box = new QGroupBox(tr("Coordinates"));
  auto* const form = new QFormLayout(box);
  scale_ = AddNumber(form, tr("&Scale:"), "scale", {}, last.scale, CNumberField::EFaultPlace::kBelow);
  scale_->SetFurtherRule(WaveScaleFault);
  swap_yz_ = new QCheckBox(tr("&Exchange Y and Z"));
  swap_yz_->setObjectName("swapYz");
  swap_yz_->setChecked(last.swap_yz);
  center_ = new QCheckBox(tr("&Center on all axes"));
  center_->setObjectName("center");
  center_->setChecked(last.center);
  for (QCheckBox* option : {swap_yz_, center_}) {
    form->addRow(option);
    connect(option, &QCheckBox::toggled, this, &CFieldDialog::Refresh);
  }
  return box;
}

QWidget* CImportOptionsDialog::MakePreview() {
  constexpr const char* kSizeNames[] = {"sizeX", "sizeY", "sizeZ"};
  constexpr const char* kPlaceNames[] = {"placeX", "placeY", "placeZ"};
  auto* const box = new QGroupBox(tr("Size"));
  auto* const grid = new QGridLayout(box);
  grid->setHorizontalSpacing(2 * grid->horizontalSpacing());
  const QString headers[] = {tr("In the file"), tr("In the model"), tr("From, to")};
  for (int column = 0; column < 3; ++column)
    grid->addWidget(new QLabel(headers[column]), 0, column + 1, Qt::AlignRight);
  for (int row = 0; row < 3; ++row) {
    const auto axis = static_cast<size_t>(row);
    rows_[axis] = {NumberLabel(kSizeNames[axis]), NumberLabel(kPlaceNames[axis])};
    auto* const size_in_file = NumberLabel("");
    size_in_file->setText(ToQString(Format("%.6g", mesh_.max[axis] - mesh_.min[axis])));
    grid->addWidget(new QLabel(kAxes[axis]), row + 1, 0);
    grid->addWidget(size_in_file, row + 1, 1);
    grid->addWidget(rows_[axis].size, row + 1, 2);
    grid->addWidget(rows_[axis].place, row + 1, 3);
    // Room for the widest, so that the dialog does not jump while one types.
    rows_[axis].place->setMinimumWidth(fontMetrics().horizontalAdvance("-2147483648 to 2147483647"));
    rows_[axis].size->setMinimumWidth(fontMetrics().horizontalAdvance("4294967295"));
  }
  grid->setRowStretch(4, 1);
  return box;
}

SWaveOptions CImportOptionsDialog::Options() const {
  return {.scale = scale_->Value().value_or(1.0), .swap_yz = swap_yz_->isChecked(), .center = center_->isChecked()};
}

void CImportOptionsDialog::ShowBounds(const std::optional<SBounds>& bounds) {
  if (!bounds) {
    for (const SRow& row : rows_) {
      row.size->setText(kNothing);
      row.place->setText(kNothing);
    }
    return;
  }
  const int32_t min[] = {bounds->min.x, bounds->min.y, bounds->min.z};
  const int32_t max[] = {bounds->max.x, bounds->max.y, bounds->max.z};
  for (size_t axis = 0; axis < rows_.size(); ++axis) {
    rows_[axis].size->setText(QString::number(int64_t{max[axis]} - min[axis]));
    rows_[axis].place->setText(QString("%1 to %2").arg(min[axis]).arg(max[axis]));
  }
}

QString CImportOptionsDialog::Fault() {
  const std::optional<SBounds> bounds = WaveBounds(mesh_, Options());
  ShowBounds(bounds);
  return bounds ? QString() : tr("At this scale the model does not fit in 32 bits.");
}

QString CImportOptionsDialog::FieldFault() {
  ShowBounds(std::nullopt);
  return {};
}

std::optional<SWaveOptions> AskImportOptions(const SWaveMesh& mesh, const std::string& path, SWaveOptions& options,
                                             QWidget* parent) {
  CImportOptionsDialog dialog(mesh, path, options, parent);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  options = dialog.Options();
  return options;
}

}  // namespace veldra

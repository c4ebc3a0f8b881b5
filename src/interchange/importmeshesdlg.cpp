#include "interchange/importmeshesdlg.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QSignalBlocker>

#include "model/texturenames.h"
#include "model/texturepicture.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/rawtexture.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EFileColumn { kFile, kFaces, kSizeInFile, kSizeInModel, kCutFaces };
enum EMaterialColumn { kMaterial, kMaterialFaces, kType, kBecomes, kPicture };
constexpr int kThumbnail = 32;
/// More rows than anybody looks at would take long to be made; the others become what is planned for them.
constexpr size_t kMostRows = 200;
const char* const kAnother = "?";

QString SizeText(const SWavePoint& low, const SWavePoint& high) {
  return ToQString(Format("%.5g × %.5g × %.5g", high[0] - low[0], high[1] - low[1], high[2] - low[2]));
}

QString SizeText(const SBounds& bounds) {
  const auto& [low, high] = bounds;
  return QString("%1 × %2 × %3").arg(int64_t{high.x} - low.x).arg(int64_t{high.y} - low.y).arg(int64_t{high.z} - low.z);
}

/// Of each material how many faces it has, and at the end how many have none.
std::vector<size_t> FacesOfMaterials(const SWaveMesh& mesh) {
  std::vector<size_t> counts(mesh.material_names.size() + 1);
  const size_t first = mesh.sections.empty() ? mesh.FaceCount() : mesh.sections.front().first_face;
  counts.back() += first;
  for (size_t i = 0; i < mesh.sections.size(); ++i) {
    const auto& section = mesh.sections[i];
    const size_t end = i + 1 < mesh.sections.size() ? mesh.sections[i + 1].first_face : mesh.FaceCount();
    counts[section.material < 0 ? counts.size() - 1 : static_cast<size_t>(section.material)] +=
        end - section.first_face;
  }
  return counts;
}

void FitColumns(QTreeWidget& table) {
  constexpr int kAir = 14;
  for (int column = 0; column + 1 < table.columnCount(); ++column) {
    table.resizeColumnToContents(column);
    table.setColumnWidth(column, table.columnWidth(column) + kAir);
  }
}

QTreeWidget* MakeTable(const char* name, const QStringList& headers, int lines) {
  auto* const table = new QTreeWidget;
  table->setObjectName(name);
  table->setRootIsDecorated(false);
  table->setHeaderLabels(headers);
  table->header()->setStretchLastSection(true);
  const int line = table->fontMetrics().height();
  table->setMinimumSize(44 * line, lines * line);
  return table;
}

}  // namespace

CImportMeshesDialog::CImportMeshesDialog(std::vector<SMeshJob>& jobs, CTextureStore& textures, CQuestions& questions,
                                         QWidget* parent)
    : CFieldDialog("importMeshes", tr("Import Meshes"), parent),
      jobs_(jobs),
      textures_(textures),
      questions_(questions),
      files_(MakeTable(
          "files", {tr("File"), tr("Faces"), tr("Size in the file"), tr("Size in the model"), tr("Faces cut off")}, 5)),
      materials_(MakeTable("materials", {tr("Material"), tr("Faces"), tr("Type"), tr("Becomes"), tr("Picture")}, 7)),
      note_(new QLabel) {
  files_->headerItem()->setToolTip(kCutFaces, tr("Faces that show more than the whole texture, which the game cannot"));
  materials_->setIconSize({kThumbnail, kThumbnail});
  note_->setObjectName("note");
  note_->setWordWrap(true);
  // A few files, and what is left of the window for the materials.
  files_->setMaximumHeight(8 * files_->fontMetrics().height());
  FillFiles();
  Content()->addWidget(files_);
  Content()->addWidget(MakeOptions());
  Content()->addWidget(materials_, 1);
  Content()->addWidget(note_);
  connect(files_, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { ShowJob(static_cast<size_t>(files_->indexOfTopLevelItem(item))); });
  connect(files_, &QTreeWidget::itemChanged, this, [this] {
    if (!is_filling_) Refresh();
  });
  files_->setCurrentItem(files_->topLevelItem(0));
  StartWith(fit_);
}

// --- Files -----------------------------------------------------------------------------------------------------------

void CImportMeshesDialog::FillFiles() {
  for (const SMeshJob& job : jobs_) {
    auto* const row = new QTreeWidgetItem(files_);
    const size_t cut = CountCutFaces(job.mesh);
    row->setText(kFile, ToQString(DisplayFileName(job.path)));
    row->setToolTip(kFile, ToolTipText(NameToQString(job.path)));
    row->setCheckState(kFile, job.is_wanted ? Qt::Checked : Qt::Unchecked);
    row->setText(kFaces, QString::number(job.mesh.FaceCount()));
    row->setText(kSizeInFile, SizeText(job.mesh.min, job.mesh.max));
    row->setText(kCutFaces, cut > 0 ? QString::number(cut) : QString());
    for (const int column : {kFaces, kSizeInFile, kSizeInModel, kCutFaces})
      row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  }
}

QGroupBox* CImportMeshesDialog::MakeOptions() {
  auto* const box = new QGroupBox(tr("Coordinates of this file"));
  auto* const line = new QHBoxLayout(box);
  auto* const sizes = new QFormLayout;
  fits_ = new QCheckBox(tr("&Fit into a size"));
  fits_->setObjectName("fits");
  fits_->setToolTip(tr("Scales evenly. A truck is about %1 units long.").arg(kTruckSize));
  sizes->addRow(fits_);
  fit_ = AddNumber(sizes, tr("&Largest dimension:"), "fit", {}, kTruckSize, CNumberField::EFaultPlace::kBelow);
  scale_ = AddNumber(sizes, tr("&Scale:"), "scale", {}, 1, CNumberField::EFaultPlace::kBelow);
  for (CNumberField* field : {fit_, scale_})
    field->SetFurtherRule(WaveScaleFault);
  auto* const axes = new QFormLayout;
  up_ = new QComboBox;
  up_->setObjectName("upAxis");
  up_->addItems({tr("Y, as in the game"), tr("Z, exchanged with Y")});
  axes->addRow(tr("&Up in the file:"), up_);
  center_ = new QCheckBox(tr("&Center on all axes"));
  center_->setObjectName("center");
  axes->addRow(center_);
  line->addLayout(sizes);
  line->addSpacing(24);
  line->addLayout(axes, 1);
  connect(fits_, &QCheckBox::toggled, this, [this](bool fits) {
    fit_->setEnabled(fits);
    scale_->setEnabled(!fits);
    Refresh();
  });
  connect(center_, &QCheckBox::toggled, this, &CFieldDialog::Refresh);
  connect(up_, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  return box;
}

void CImportMeshesDialog::ShowJob(size_t job) {
  if (job >= jobs_.size()) return;
  is_filling_ = true;
  current_ = job;
  const SWaveOptions options = Current().options;
  const bool fits = options.fit > 0;
  fit_->SetValue(fits ? options.fit : kTruckSize);
  const bool is_scaled_back = options.scale == 1 && Current().mesh.own_scale != 1;
  scale_->SetValue(is_scaled_back ? 1 / Current().mesh.own_scale : options.scale);
  fits_->setChecked(fits);
  fit_->setEnabled(fits);
  scale_->setEnabled(!fits);
  up_->setCurrentIndex(options.swap_yz ? 1 : 0);
  center_->setChecked(options.center);
  FillMaterials();
  is_filling_ = false;
  Refresh();
}

void CImportMeshesDialog::TakeOptions() {
  SWaveOptions& options = Current().options;
  const double own = Current().mesh.own_scale;
  const double scale = scale_->Value().value_or(options.scale);
  options.fit = fits_->isChecked() ? fit_->Value().value_or(options.fit) : 0;
  // Left as it is offered, what this program scaled comes back exactly.
  const bool is_offered = own != 1 && std::abs(scale * own - 1) < 1e-9;
  options.scale = is_offered ? 1 : scale;
  options.undo_own_scale = is_offered;
  options.swap_yz = up_->currentIndex() == 1;
  options.center = center_->isChecked();
}

QString CImportMeshesDialog::Fault() {
  if (is_filling_) return {};
  TakeOptions();
  bool is_any_wanted = false;
  for (size_t i = 0; i < jobs_.size(); ++i) {
    jobs_[i].is_wanted = files_->topLevelItem(static_cast<int>(i))->checkState(kFile) == Qt::Checked;
    is_any_wanted = is_any_wanted || jobs_[i].is_wanted;
  }
  ShowSizes();
  for (const SMeshJob& job : jobs_)
    if (job.is_wanted && !WaveBounds(job.mesh, job.options))
      return tr("%1 does not fit in 32 bits at this size.").arg(ToQString(DisplayFileName(job.path)));
  return is_any_wanted ? QString() : tr("Choose at least one file.");
}

void CImportMeshesDialog::ShowSizes() {
  is_filling_ = true;
  for (size_t i = 0; i < jobs_.size(); ++i) {
    const auto bounds = WaveBounds(jobs_[i].mesh, jobs_[i].options);
    files_->topLevelItem(static_cast<int>(i))->setText(kSizeInModel, bounds ? SizeText(*bounds) : QString("–"));
  }
  const SWaveMesh& mesh = Current().mesh;
  const auto bounds = WaveBounds(mesh, Current().options);
  SWavePoint size = {mesh.max[0] - mesh.min[0], mesh.max[1] - mesh.min[1], mesh.max[2] - mesh.min[2]};
  if (Current().options.swap_yz) std::swap(size[1], size[2]);
  note_->setText(bounds ? ToQString(VanishedText(size, *bounds)) : QString());
  FitColumns(*files_);
  is_filling_ = false;
}

// --- Materials -------------------------------------------------------------------------------------------------------

void CImportMeshesDialog::FillMaterials() {
  materials_->clear();
  const std::vector<size_t> faces = FacesOfMaterials(Current().mesh);
  AddMaterialRow(tr("(none)"), {}, faces.back(), -1);
  const auto& uses = Current().plan.uses;
  for (size_t i = 0; i < std::min(uses.size(), kMostRows); ++i) {
    const QString type = uses[i].type ? ToQString(Format("0x%02X", *uses[i].type)) : QString();
    AddMaterialRow(ToQString(DisplayName(uses[i].material)), type, faces[i], static_cast<int32_t>(i));
  }
  if (uses.size() > kMostRows)
    new QTreeWidgetItem(materials_, {tr("and %1 more, as their names say").arg(uses.size() - kMostRows)});
  FitColumns(*materials_);
}

void CImportMeshesDialog::AddMaterialRow(const QString& name, const QString& type, size_t faces, int32_t material) {
  auto* const row = new QTreeWidgetItem(materials_);
  const SMaterialUse* const use = material < 0 ? nullptr : &Current().plan.uses[static_cast<size_t>(material)];
  const std::string raw = use == nullptr ? Current().texture : use->raw;
  row->setText(kMaterial, name);
  row->setText(kMaterialFaces, QString::number(faces));
  row->setTextAlignment(kMaterialFaces, Qt::AlignRight | Qt::AlignVCenter);
  row->setText(kType, type);
  if (use != nullptr)
    row->setText(kPicture, ToQString(DisplayName(use->picture.empty() ? use->fault : FileNamePart(use->picture))));
  QComboBox* const choice = MakeChoice(material, raw);
  materials_->setItemWidget(row, kBecomes, choice);
  ShowPicture(*row, raw);
  connect(choice, &QComboBox::activated, this, [this, choice, row, material] { Choose(*choice, *row, material); });
}

QComboBox* CImportMeshesDialog::MakeChoice(int32_t material, const std::string& raw) {
  auto* const choice = new QComboBox;
  choice->setObjectName(material < 0 ? QString("becomesNone") : QString("becomes%1").arg(material));
  if (!raw.empty()) choice->addItem(ToQString(TextureNameOf(raw)) + MadeOf(raw), ToQString(raw));
  const bool is_untextured = material >= 0 && Current().plan.uses[static_cast<size_t>(material)].is_untextured;
  choice->addItem(material < 0 || is_untextured ? tr("No texture, type 0x19") : tr("As faces without a material"),
                  QString());
  if (!is_untextured) choice->addItem(tr("Another texture..."), QString(kAnother));
  return choice;
}

QString CImportMeshesDialog::MadeOf(const std::string& raw) const {
  const auto& made = jobs_[current_].plan.made;
  const auto found = std::ranges::find(made, raw, &SNewTexture::path);
  return found == made.end() ? QString() : tr(", made of the picture");
}

void CImportMeshesDialog::Choose(QComboBox& choice, QTreeWidgetItem& row, int32_t material) {
  std::string& raw = material < 0 ? Current().texture : Current().plan.uses[static_cast<size_t>(material)].raw;
  if (choice.currentData().toString() == kAnother && !AskTexture(choice))
    choice.setCurrentIndex(std::max(0, choice.findData(ToQString(raw))));
  raw = choice.currentData().toString().toStdString();
  ShowPicture(row, raw);
}

/// Puts the texture that the user picks in front; false when there is none.
bool CImportMeshesDialog::AskTexture(QComboBox& choice) {
  const SFilePrompt prompt = {.title = "Select Texture",
                              .filters = {{"MTM Texture *.raw", "*.raw"}},
                              .directory = DirectoryPart(Current().texture),
                              .name = "",
                              .default_extension = "raw",
                              .make_picture = [this](const std::string& path) { return textures_.Picture(path); }};
  const auto path = questions_.AskOpenFile(prompt);
  if (!path) return false;
  const std::string name = TextureNameOf(*path);
  if (const std::string fault = TextureNameFault(name); !fault.empty()) return questions_.Fail(fault);
  choice.insertItem(0, ToQString(DisplayName(name)), ToQString(*path));
  choice.setCurrentIndex(0);
  return true;
}

void CImportMeshesDialog::ShowPicture(QTreeWidgetItem& row, const std::string& raw) {
  const auto& made = Current().plan.made;
  const auto found = std::ranges::find(made, raw, &SNewTexture::path);
  SImage picture;
  if (found != made.end()) {
    const int size = TextureSizeOfLength(found->texels.indices.size());
    picture = PictureOf(SRawTexture{.size = size, .texels = found->texels});
  } else if (!raw.empty()) {
    picture = textures_.Picture(raw);
  }
  row.setIcon(kMaterial, picture.rgba.empty() ? QIcon() : QIcon(PictureOf(picture, kThumbnail, *this)));
}

bool AskMeshJobs(std::vector<SMeshJob>& jobs, SWaveOptions& last, CTextureStore& textures, CQuestions& questions,
                 QWidget* parent) {
  for (SMeshJob& job : jobs) {
    if (job.mesh.is_own_export) continue;
    const SWaveOptions own = std::exchange(job.options, last);
    if (own.scale != 1) job.options.scale = own.scale;
    if (job.has_own_axes) job.options.swap_yz = own.swap_yz;
  }
  CImportMeshesDialog dialog(jobs, textures, questions, parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  for (const SMeshJob& job : jobs)
    if (!job.mesh.is_own_export && job.is_wanted && !job.has_own_axes) last = job.options;
  return true;
}

}  // namespace veldra

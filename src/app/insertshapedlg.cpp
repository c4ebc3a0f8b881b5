#include "app/insertshapedlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <cmath>

#include "editing/texturecommands.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kPictureSide = 280;
constexpr double kMostUnits = 2147483647;
constexpr const char* kAxes[] = {"X", "Y", "Z"};

}  // namespace

CInsertShapeDialog::CInsertShapeDialog(CTarnDoc& document, const SInsertShapeInput& last, QWidget* parent)
    : CFieldDialog("insertShape", tr("Insert Shape"), parent),
      document_(document),
      kinds_(new QListWidget),
      preview_(new CShapePreview(document.Settings())) {
  auto* columns = new QHBoxLayout;
  columns->addWidget(MakeKinds(last.shape.kind));
  columns->addWidget(MakeNumbers(last.shape), 1);
  columns->addWidget(MakePicture(last), 1);
  Content()->addLayout(columns, 1);
  connect(kinds_, &QListWidget::currentRowChanged, this, [this] {
    if (Kind().usual_sides > 0) sides_->setValue(Kind().usual_sides);
    if (Kind().usual_rings > 0) rings_->setValue(Kind().usual_rings);
    ShowKind();
  });
  connect(kinds_, &QListWidget::itemActivated, this, [this] {
    if (IsValid()) accept();
  });
  StartWith(kinds_);
  ShowKind();
  preview_->TogglePlay();
}

QWidget* CInsertShapeDialog::MakeKinds(EShape kind) {
  kinds_->setObjectName("kinds");
  for (const SShapeKind& row : ShapeKinds())
    kinds_->addItem(row.title);
  kinds_->setCurrentRow(static_cast<int>(kind));
  kinds_->setFixedWidth(kinds_->sizeHintForColumn(0) + 2 * kinds_->frameWidth() + fontMetrics().averageCharWidth() * 6);
  return kinds_;
}

CInsertShapeDialog::Fields CInsertShapeDialog::AddPoint(QGridLayout& grid, int column, const QString& label,
                                                        const char* name, double smallest, const SPoint& value) {
  Fields fields;
  const int32_t values[] = {value.x, value.y, value.z};
  auto* title = new QLabel(label);
  grid.addWidget(title, 0, column);
  for (size_t i = 0; i < fields.size(); ++i) {
    auto* field = new CNumberField(SNumberRule::Integer(smallest, kMostUnits), CNumberField::EFaultPlace::kElsewhere);
    field->setObjectName(QString(name) + kAxes[i]);
    field->SetValue(values[i]);
    field->Edit()->setAccessibleName(QString(label).remove('&') + " " + kAxes[i]);
    grid.addWidget(field, static_cast<int>(i) + 1, column);
    Watch(field);
    fields[i] = field;
  }
  title->setBuddy(fields[0]);
  return fields;
}

QSpinBox* CInsertShapeDialog::AddCount(QFormLayout* form, const QString& label, const char* name, int fewest,
                                       int most) {
  auto* box = new QSpinBox;
  box->setObjectName(name);
  box->setRange(fewest, most);
  form->addRow(label, box);
  connect(box, &QSpinBox::valueChanged, this, &CFieldDialog::Refresh);
  return box;
}

QWidget* CInsertShapeDialog::MakeNumbers(const SShape& last) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins({});
  auto* place = new QGroupBox(tr("Size and place in units, tilt in degrees"));
  auto* grid = new QGridLayout(place);
  size_ = AddPoint(*grid, 1, tr("Si&ze"), "size", 0, last.size);
  middle_ = AddPoint(*grid, 2, tr("&Middle"), "middle", -kMostUnits - 1, last.middle);
  grid->addWidget(new QLabel(tr("Tilt about")), 0, 3);
  for (size_t i = 0; i < tilt_.size(); ++i) {
    const int row = static_cast<int>(i) + 1;
    tilt_[i] = new CAngleField(QString("tilt") + kAxes[i]);
    tilt_[i]->SetAngle(last.tilt[i]);
    tilt_[i]->Number()->Edit()->setAccessibleName(tr("Tilt about %1").arg(kAxes[i]));
    auto* label = new QLabel(kAxes[i]);
    grid->addWidget(label, row, 0);
    grid->addWidget(tilt_[i], row, 3);
    Watch(tilt_[i]->Number());
  }
  layout->addWidget(place);
  layout->addWidget(MakeForm(last));
  layout->addStretch();
  return column;
}

QWidget* CInsertShapeDialog::MakeForm(const SShape& last) {
  auto* box = new QGroupBox(tr("Form"));
  form_ = new QFormLayout(box);
  sides_ = AddCount(form_, tr("&Sides around:"), "sides", kFewestSides, kMostSides);
  rings_ = AddCount(form_, tr("&Rings:"), "rings", kFewestRings, kMostRings);
  hole_ = AddCount(form_, tr("&Hole:"), "hole", static_cast<int>(kSmallestHole * 100),
                   static_cast<int>(kLargestHole * 100));
  hole_->setSuffix(tr(" %"));
  hole_->setValue(static_cast<int>(std::lround(last.hole * 100)));
  solid_ = new QComboBox;
  solid_->setObjectName("solid");
  for (const int sides : kPolyhedronSides)
    solid_->addItem(tr("%1 flat sides").arg(sides), sides);
  solid_->setCurrentIndex(solid_->findData(last.solid));
  form_->addRow(tr("So&lid:"), solid_);
  connect(solid_, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  two_sided_ = new QCheckBox(tr("Can be seen from &below, too"));
  two_sided_->setObjectName("twoSided");
  two_sided_->setChecked(last.two_sided);
  form_->addRow(two_sided_);
  connect(two_sided_, &QCheckBox::toggled, this, &CFieldDialog::Refresh);
  sides_->setValue(last.sides.value_or(KindOf(last.kind).usual_sides));
  rings_->setValue(last.rings.value_or(KindOf(last.kind).usual_rings));
  return box;
}

QWidget* CInsertShapeDialog::MakePicture(const SInsertShapeInput& last) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins({});
  preview_->setObjectName("preview");
  preview_->setMinimumSize(kPictureSide, kPictureSide);
  layout->addWidget(preview_, 1);
  auto* load = new QPushButton(tr("Loa&d Texture..."));
  load->setObjectName("load");
  load->setAutoDefault(false);
  connect(load, &QPushButton::clicked, this, &CInsertShapeDialog::LoadTexture);
  surface_ = new CFaceSurfaceField(document_.Model(), last.type, last.texture, load);
  connect(surface_, &CFaceSurfaceField::Changed, this, &CFieldDialog::Refresh);
  layout->addWidget(surface_);
  return column;
}

/// What the user picks is loaded into the model, and the last of it chosen.
void CInsertShapeDialog::LoadTexture() {
  const int32_t before = document_.Model().TextureCount();
  LoadTextures(document_);
  if (document_.Model().TextureCount() == before) return;
  surface_->ShowTextures(document_.Model(), document_.Model().TextureCount() - 1);
  Refresh();
}

const SShapeKind& CInsertShapeDialog::Kind() const {
  return ShapeKinds()[static_cast<size_t>(std::max(0, kinds_->currentRow()))];
}

/// Only the numbers that the kind goes by.
void CInsertShapeDialog::ShowKind() {
  const SShapeKind& kind = Kind();
  const auto show = [this](QWidget* field, bool is_shown) {
    field->setVisible(is_shown);
    if (QWidget* label = form_->labelForField(field)) label->setVisible(is_shown);
  };
  show(sides_, kind.usual_sides > 0);
  show(rings_, kind.usual_rings > 0);
  show(hole_, kind.has_hole);
  show(solid_, kind.shape == EShape::kPolyhedron);
  show(two_sided_, kind.is_flat);
  const bool has_form = kind.usual_sides > 0 || kind.has_hole || kind.is_flat || kind.shape == EShape::kPolyhedron;
  sides_->parentWidget()->setVisible(has_form);
  size_[1]->setEnabled(!kind.is_flat);
  Refresh();
}

SPoint CInsertShapeDialog::Point(const Fields& fields) {
  const auto number = [](const CNumberField* field) { return static_cast<int32_t>(field->Value().value_or(0.0)); };
  return {number(fields[0]), number(fields[1]), number(fields[2])};
}

SInsertShapeInput CInsertShapeDialog::Input() const {
  const SShapeKind& kind = Kind();
  SInsertShapeInput input;
  SShape& shape = input.shape;
  shape.kind = kind.shape;
  shape.size = Point(size_);
  shape.middle = Point(middle_);
  if (kind.usual_sides > 0) shape.sides = sides_->value();
  if (kind.usual_rings > 0) shape.rings = rings_->value();
  shape.hole = hole_->value() / 100.0;
  shape.solid = solid_->currentData().toInt();
  shape.two_sided = two_sided_->isChecked();
  for (size_t i = 0; i < tilt_.size(); ++i)
    shape.tilt[i] = tilt_[i]->Angle();
  input.type = surface_->Type();
  input.texture = surface_->Texture();
  return input;
}

/// The fields stand too close for it.
QString CInsertShapeDialog::FieldFault() {
  for (const CNumberField* field : findChildren<CNumberField*>())
    if (!field->IsValid()) return field->Edit()->accessibleName() + ": " + field->Fault();
  return {};
}

QString CInsertShapeDialog::Fault() {
  if (surface_ == nullptr) return {};  // still being made
  const SInsertShapeInput input = Input();
  SShapeMesh mesh;
  if (const std::string fault = MakeShape(input.shape, mesh); !fault.empty()) return ToQString(fault);
  const bool is_textured = input.texture >= 0;
  preview_->Show(mesh, is_textured ? input.type : uint32_t{kFaceUntextured},
                 is_textured ? document_.Model().Texture(input.texture).Image() : nullptr);
  return {};
}

}  // namespace veldra

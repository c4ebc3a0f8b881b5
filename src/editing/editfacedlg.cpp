#include "editing/editfacedlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <algorithm>

#include "editing/roundedvalue.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kDecimals = 6;  ///< of texture coordinates: far less than a texel
constexpr int kMapSide = 168;

QString PointText(const SPoint& point) {
  return QString("%1, %2, %3").arg(point.x).arg(point.y).arg(point.z);
}

QLabel* Selectable(const QString& text, const char* name) {
  auto* label = new QLabel(text);
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

CEditFaceDialog::CEditFaceDialog(const CBinFace& face, QWidget* parent)
    : CFieldDialog("editFace", tr("Edit Face %1").arg(face.Index()), parent), face_(face), model_(face.Owner()) {
  const SFaceInput offered = InputOf(face);
  Content()->addWidget(MakeSurface(offered));
  Content()->addWidget(MakeCorners(offered));
  Content()->addWidget(MakePlane());
  Refresh();
}

QWidget* CEditFaceDialog::MakeSurface(const SFaceInput& offered) {
  map_ = new CTextureMapWidget;
  map_->setFixedSize(kMapSide, kMapSide);
  map_->SetReadOnly(true);
  surface_ = new CFaceSurfaceField(model_, offered.type, offered.texture, map_);
  connect(surface_, &CFaceSurfaceField::Changed, this, &CFieldDialog::Refresh);
  return surface_;
}

QWidget* CEditFaceDialog::MakeCorners(const SFaceInput& offered) {
  auto* box = new QGroupBox(tr("Corners"));
  auto* grid = new QGridLayout(box);
  auto* triangle = new QRadioButton(tr("T&riangle"));
  triangle->setObjectName("triangle");
  quad_ = new QRadioButton(tr("&Quad"));
  quad_->setObjectName("quad");
  auto* shape = new QHBoxLayout;
  shape->addWidget(triangle);
  shape->addWidget(quad_);
  shape->addStretch();
  grid->addLayout(shape, 0, 0, 1, 4);
  const QString titles[] = {tr("Vertex"), "u", "v"};
  for (int i = 0; i < 3; ++i)
    grid->addWidget(new QLabel(titles[i]), 1, i + 1);
  const SNumberRule vertices = SNumberRule::Integer(0, model_.VertexCount() - 1);
  for (size_t k = 0; k < corners_.size(); ++k) {
    const int number = static_cast<int>(k) + 1;
    const STexCoord& coord = offered.coords[k];
    const SNumberRule unit = {.smallest = 0, .largest = 1};
    corners_[k] = {MakeNumber(QString("vertex%1").arg(number), vertices, std::max(0, offered.corners[k])),
                   MakeNumber(QString("u%1").arg(number), unit, coord.u),
                   MakeNumber(QString("v%1").arg(number), unit, coord.v)};
    auto* label = new QLabel(tr("Corner &%1:").arg(number));
    label->setBuddy(corners_[k].vertex);
    label->setMinimumHeight(corners_[k].vertex->Edit()->sizeHint().height());
    const int row = number + 1;
    grid->addWidget(label, row, 0, Qt::AlignTop);
    grid->addWidget(corners_[k].vertex, row, 1);
    grid->addWidget(corners_[k].u, row, 2);
    grid->addWidget(corners_[k].v, row, 3);
  }
  const bool is_quad = offered.corners[3] >= 0;
  (is_quad ? quad_ : triangle)->setChecked(true);
  UseFourth(is_quad);
  connect(quad_, &QRadioButton::toggled, this, [this](bool is_used) {
    UseFourth(is_used);
    Refresh();
  });
  return box;
}

CNumberField* CEditFaceDialog::MakeNumber(const QString& name, const SNumberRule& rule, double value) {
  auto* field = new CNumberField(rule, CNumberField::EFaultPlace::kBelow);
  field->setObjectName(name);
  ShowRounded(*field, value, kDecimals);
  Watch(field);
  return field;
}

void CEditFaceDialog::UseFourth(bool is_used) {
  for (CNumberField* field : {corners_[3].vertex, corners_[3].u, corners_[3].v})
    field->setEnabled(is_used);
}

QWidget* CEditFaceDialog::MakePlane() {
  auto* box = new QGroupBox(tr("Normal and magic number"));
  auto* grid = new QGridLayout(box);
  normal_ = Selectable({}, "normal");
  magic_ = Selectable({}, "magic");
  QWidget* const cells[3][3] = {
      {new QLabel, new QLabel(tr("Normal")), new QLabel(tr("Magic number"))},
      {new QLabel(tr("As loaded:")), Selectable(PointText(face_.StoredNormal()), "storedNormal"),
       Selectable(QString::number(face_.StoredMagic()), "storedMagic")},
      {new QLabel(tr("As computed:")), normal_, magic_}};
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column)
      grid->addWidget(cells[row][column], row, column);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);
  return box;
}

SFaceInput CEditFaceDialog::Input() const {
  SFaceInput input = InputOf(face_);
  input.type = surface_->Type();
  input.texture = surface_->Texture();
  for (size_t k = 0; k < corners_.size(); ++k) {
    if (!corners_[k].vertex->isEnabled()) {
      input.corners[k] = -1;
      continue;
    }
    input.corners[k] = static_cast<int32_t>(corners_[k].vertex->Value().value_or(-1.0));
    const STexCoord shown = input.coords[k];
    input.coords[k] = {RoundedValue(*corners_[k].u, shown.u, kDecimals),
                       RoundedValue(*corners_[k].v, shown.v, kDecimals)};
  }
  return input;
}

QString CEditFaceDialog::Fault() {
  const SFaceInput input = Input();
  const size_t count = input.corners[3] < 0 ? 3 : 4;
  map_->setVisible(input.texture >= 0);
  if (input.texture >= 0) map_->SetTexture(*model_.Texture(input.texture).Image());
  map_->SetCoords({input.coords.begin(), input.coords.begin() + static_cast<std::ptrdiff_t>(count)});
  const std::string fault = InputFault(model_, input);
  if (!fault.empty()) {
    FieldFault();
    return ToQString(fault);
  }
  const SFacePlane plane = ComputedPlane(model_, input);
  normal_->setText(PointText(plane.normal));
  magic_->setText(QString::number(plane.magic));
  return {};
}

QString CEditFaceDialog::FieldFault() {
  normal_->clear();
  magic_->clear();
  return {};
}

}  // namespace veldra

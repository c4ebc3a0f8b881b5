#include "editing/binmapperdlg.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>

#include "editing/roundedvalue.h"
#include "model/texturepicture.h"

namespace veldra {

namespace {

constexpr int kTexelDecimals = 3;

}  // namespace

CBinMapperDialog::CBinMapperDialog(CEditCursor& cursor, QWidget* parent)
    : CFieldDialog("binMapper", tr("Texture Mapping"), parent),
      cursor_(cursor),
      old_(CornerCoordsOf(cursor)),
      texels_(cursor.FaceObject()->Texture()->Width() - 1),
      map_(new CTextureMapWidget),
      texel_(new QLabel) {
  map_->setObjectName("map");
  map_->SetTexture(*cursor.FaceObject()->Texture()->Image());
  map_->SetCoords(old_.coords);
  auto* picture = new QVBoxLayout;
  picture->addWidget(map_, 1);
  picture->addWidget(texel_);
  ShowTexel(-1, -1);
  auto* line = new QHBoxLayout;
  line->addLayout(picture, 1);
  line->addWidget(MakeNumbers());
  Content()->addLayout(line, 1);
  connect(map_, &CTextureMapWidget::CoordsChanged, this, &CBinMapperDialog::TakePicture);
  connect(map_, &CTextureMapWidget::PointedAt, this, &CBinMapperDialog::ShowTexel);
  Refresh();
}

QWidget* CBinMapperDialog::MakeNumbers() {
  auto* box = new QGroupBox(tr("Face %1, in texels").arg(cursor_.Face()));
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(tr("Across (u)")), 0, 1);
  grid->addWidget(new QLabel(tr("Down (v)")), 0, 2);
  for (size_t k = 0; k < old_.coords.size(); ++k) {
    const int row = static_cast<int>(k) + 1;
    corners_.push_back({MakeNumber(QString("u%1").arg(row)), MakeNumber(QString("v%1").arg(row))});
    auto* label = new QLabel(tr("Corner &%1:").arg(row));
    label->setBuddy(corners_[k].u);
    label->setMinimumHeight(corners_[k].u->Edit()->sizeHint().height());
    grid->addWidget(label, row, 0, Qt::AlignTop);
    grid->addWidget(corners_[k].u, row, 1);
    grid->addWidget(corners_[k].v, row, 2);
  }
  ShowNumbers(old_.coords);
  auto* snap = new QCheckBox(tr("Dragging &snaps to texels"));
  snap->setObjectName("snap");
  snap->setChecked(true);
  connect(snap, &QCheckBox::toggled, map_, &CTextureMapWidget::SetSnapping);
  const CBinTexture& texture = *cursor_.FaceObject()->Texture();
  auto* column = new QVBoxLayout(box);
  auto* name = new QLabel(TextureText(texture));
  name->setTextFormat(Qt::PlainText);
  name->setWordWrap(true);
  column->addWidget(name);
  column->addLayout(grid);
  column->addWidget(snap);
  column->addStretch();
  return box;
}

CNumberField* CBinMapperDialog::MakeNumber(const QString& name) {
  auto* field = new CNumberField({.smallest = 0, .largest = texels_}, CNumberField::EFaultPlace::kBelow);
  field->setObjectName(name);
  Watch(field);
  return field;
}

/// SHOWN itself while the field's text stands for it.
double CBinMapperDialog::CoordOf(const CNumberField& field, double shown) const {
  const double texels = RoundedValue(field, shown * texels_, kTexelDecimals);
  return texels == shown * texels_ ? shown : texels / texels_;
}

/// All numbers are valid: what the user typed counts.
QString CBinMapperDialog::Fault() {
  if (is_filling_ || corners_.size() != old_.coords.size()) return {};
  std::vector<STexCoord> coords;
  for (size_t k = 0; k < corners_.size(); ++k) {
    const STexCoord shown = map_->Coords()[k];
    coords.push_back({CoordOf(*corners_[k].u, shown.u), CoordOf(*corners_[k].v, shown.v)});
  }
  if (coords == map_->Coords()) return {};
  map_->SetCoords(coords);
  Apply(coords);
  return {};
}

void CBinMapperDialog::TakePicture() {
  ShowNumbers(map_->Coords());
  Apply(map_->Coords());
}

void CBinMapperDialog::ShowNumbers(const std::vector<STexCoord>& coords) {
  is_filling_ = true;
  for (size_t k = 0; k < coords.size(); ++k) {
    ShowRounded(*corners_[k].u, coords[k].u * texels_, kTexelDecimals);
    ShowRounded(*corners_[k].v, coords[k].v * texels_, kTexelDecimals);
  }
  is_filling_ = false;
}

void CBinMapperDialog::Apply(const std::vector<STexCoord>& coords) {
  if (!is_kept_) cursor_.Document().KeepState("Texture Mapping");
  is_kept_ = true;
  SetCornerCoords(cursor_, coords);
}

void CBinMapperDialog::ShowTexel(int x, int y) {
  texel_->setText(x < 0 ? tr("Drag corners, or the face") : tr("Texel %1 across, %2 down").arg(x).arg(y));
}

void CBinMapperDialog::done(int result) {
  if (result != Accepted && is_kept_) RestoreCornerCoords(cursor_, old_);
  CFieldDialog::done(result);
}

}  // namespace veldra

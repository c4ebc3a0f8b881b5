#include "editing/facesurfacefield.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include "model/texturepicture.h"

namespace veldra {

namespace {

constexpr int kFewestLetters = 24;

}  // namespace

CFaceSurfaceField::CFaceSurfaceField(const CBinModel& model, uint32_t type, int32_t texture, QWidget* picture,
                                     QWidget* parent)
    : QGroupBox(tr("Surface"), parent), types_(new QComboBox), textures_(new QComboBox) {
  types_->setObjectName("types");
  for (const uint32_t known : kFaceTypes)
    types_->addItem(FaceTypeLabel(known), known);
  if (types_->findData(type) < 0)
    types_->addItem(tr("%1, 0x%2").arg(FaceTypeLabel(type)).arg(type, 2, 16, QChar('0')), type);
  types_->setCurrentIndex(types_->findData(type));
  textures_->setObjectName("textures");
  ShowTextures(model, texture);
  for (QComboBox* choice : {types_, textures_}) {
    // The longest text need not be seen whole on a small screen.
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(kFewestLetters);
    connect(choice, &QComboBox::currentIndexChanged, this, &CFaceSurfaceField::Changed);
  }
  auto* form = new QFormLayout;
  form->addRow(tr("&Type:"), types_);
  form->addRow(tr("Te&xture:"), textures_);
  auto* line = new QHBoxLayout(this);
  line->addLayout(form, 1);
  line->addWidget(picture);
}

void CFaceSurfaceField::ShowTextures(const CBinModel& model, int32_t texture) {
  const QSignalBlocker quiet(textures_);
  textures_->clear();
  FillWithTextures(*textures_, model);
  textures_->addItem(tr("None"), -1);
  textures_->setCurrentIndex(textures_->findData(texture));
}

}  // namespace veldra

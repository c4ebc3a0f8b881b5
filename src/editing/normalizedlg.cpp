#include "editing/normalizedlg.h"

#include <algorithm>

#include "editing/texturecommands.h"
#include "model/texturepicture.h"

namespace veldra {

namespace {

/// In texels: what a user sees in a paint program.
QString Range(double from, double to, int32_t width) {
  const auto texel = [width](double value) { return QString::number(value * (width - 1), 'f', 1); };
  return CNormalizeDialog::tr("%1 to %2").arg(texel(from), texel(to));
}

}  // namespace

CNormalizeDialog::CNormalizeDialog(const CEditCursor& cursor, QWidget* parent)
    : CFieldDialog("normalizeTexture", tr("Normalize Texture"), parent),
      model_(cursor.Model()),
      textures_(new QComboBox),
      area_(new QLabel) {
  textures_->setObjectName("textures");
  FillWithTextures(*textures_, model_);
  for (int i = textures_->count() - 1; i >= 0; --i)
    if (model_.Texture(textures_->itemData(i).toInt()).UseCount() == 0) textures_->removeItem(i);
  const CBinFace* const face = cursor.FaceObject();
  const int32_t current = face == nullptr ? -1 : model_.TextureIndex(face->Texture());
  textures_->setCurrentIndex(std::max(0, textures_->findData(current)));
  auto* form = new QFormLayout;
  form->addRow(tr("&Texture:"), textures_);
  area_->setObjectName("area");
  form->addRow(tr("Its faces show:"), area_);
  Content()->addLayout(form);
  auto* text =
      new QLabel(tr("The texture coordinates of all faces that use it are stretched alike, so that together "
                    "they show the whole texture."));
  text->setWordWrap(true);
  Content()->addWidget(text);
  connect(textures_, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  Refresh();
}

QString CNormalizeDialog::Fault() {
  const CBinTexture& texture = model_.Texture(Texture());
  const STextureArea area = AreaOf(model_, FacesOfTexture(model_, texture));
  area_->setText(
      tr("texels %1 across, %2 down")
          .arg(Range(area.min.u, area.max.u, texture.Width()), Range(area.min.v, area.max.v, texture.Width())));
  return {};
}

}  // namespace veldra

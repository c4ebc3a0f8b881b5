#include "editing/assigntexturedlg.h"

#include <algorithm>

#include "editing/facecommands.h"
#include "model/texturepicture.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CAssignTextureDialog::CAssignTextureDialog(const CEditCursor& cursor, QWidget* parent)
    : CFieldDialog("assignTexture", tr("Assign Texture"), parent), textures_(new QComboBox) {
  textures_->setObjectName("textures");
  FillWithTextures(*textures_, cursor.Model());
  const CBinFace* const face = cursor.FaceObject();
  const int32_t current = face == nullptr ? -1 : cursor.Model().TextureIndex(face->Texture());
  textures_->setCurrentIndex(std::max(0, textures_->findData(current)));
  auto* form = new QFormLayout;
  form->addRow(tr("&Texture:"), textures_);
  const auto count = static_cast<int64_t>(FacesToEdit(cursor).size());
  form->addRow(tr("For:"), new QLabel(ToQString(Counted(count, "face", "faces"))));
  Content()->addLayout(form);
  auto* text = new QLabel(tr("The texture coordinates stay. Load further textures with Texture > Load Texture."));
  text->setWordWrap(true);
  Content()->addWidget(text);
  Refresh();
}

}  // namespace veldra

#include "editing/addfacedlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <algorithm>

#include "model/texturepicture.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kPictureSide = 96;

/// What was entered last may name vertices and textures that this model does not have.
SAddFaceInput Offered(const CBinModel& model, SAddFaceInput last) {
  const std::vector<int32_t> selected = model.Selected(EGroupKind::kVertices);
  if (selected.size() == 3 || selected.size() == 4) {
    last.corners[3] = -1;
    std::copy(selected.begin(), selected.end(), last.corners.begin());
  } else if (*std::max_element(last.corners.begin(), last.corners.end()) >= model.VertexCount()) {
    last.corners = SAddFaceInput().corners;
  }
  last.texture = std::min(last.texture, model.TextureCount() - 1);
  return last;
}

/// The first vertex that is none of CORNERS, to offer as the fourth.
int32_t FreeVertex(const CBinModel& model, const std::array<int32_t, 4>& corners) {
  int32_t vertex = 0;
  while (vertex < model.VertexCount() - 1 && std::find(corners.begin(), corners.end(), vertex) != corners.end())
    ++vertex;
  return vertex;
}

}  // namespace

CAddFaceDialog::CAddFaceDialog(const CBinModel& model, const SAddFaceInput& last, QWidget* parent)
    : CFieldDialog("addFace", tr("Add Face"), parent), model_(model) {
  const SAddFaceInput offered = Offered(model, last);
  Content()->addWidget(MakeCorners(offered));
  Content()->addWidget(MakeSurface(offered));
  StartWith(corners_[0]);
  ShowTexture();
  Refresh();
}

QWidget* CAddFaceDialog::MakeCorners(const SAddFaceInput& offered) {
  auto* box = new QGroupBox(tr("Corners, by vertex number"));
  auto* form = new QFormLayout(box);
  auto* triangle = new QRadioButton(tr("T&riangle"));
  triangle->setObjectName("triangle");
  quad_ = new QRadioButton(tr("&Quad"));
  quad_->setObjectName("quad");
  auto* shape = new QHBoxLayout;
  shape->addWidget(triangle);
  shape->addWidget(quad_);
  shape->addStretch();
  form->addRow(shape);

  const char* const names[] = {"corner1", "corner2", "corner3", "corner4"};
  const SNumberRule rule = SNumberRule::Integer(0, model_.VertexCount() - 1);
  for (size_t i = 0; i < corners_.size(); ++i) {
    const int32_t corner = offered.corners[i] >= 0 ? offered.corners[i] : FreeVertex(model_, offered.corners);
    corners_[i] = AddNumber(form, tr("Corner &%1:").arg(i + 1), names[i], rule, corner);
  }
  (offered.corners[3] >= 0 ? quad_ : triangle)->setChecked(true);
  corners_[3]->setEnabled(quad_->isChecked());
  connect(quad_, &QRadioButton::toggled, this, [this](bool is_quad) {
    corners_[3]->setEnabled(is_quad);
    Refresh();
  });
  return box;
}

QWidget* CAddFaceDialog::MakeSurface(const SAddFaceInput& offered) {
  picture_ = new QLabel;
  picture_->setFixedSize(kPictureSide, kPictureSide);
  const bool is_known = std::ranges::find(kFaceTypes, offered.type) != std::end(kFaceTypes);
  surface_ = new CFaceSurfaceField(model_, is_known ? offered.type : kFaceTypes[0], offered.texture, picture_);
  connect(surface_, &CFaceSurfaceField::Changed, this, [this] {
    ShowTexture();
    Refresh();
  });
  return surface_;
}

void CAddFaceDialog::ShowTexture() {
  const int32_t texture = surface_->Texture();
  picture_->setPixmap(texture < 0 ? QPixmap() : TexturePicture(*model_.Texture(texture).Image(), kPictureSide, *this));
}

SAddFaceInput CAddFaceDialog::Input() const {
  SAddFaceInput input;
  for (size_t i = 0; i < corners_.size(); ++i)
    input.corners[i] = static_cast<int32_t>(corners_[i]->Value().value_or(-1.0));
  if (!quad_->isChecked()) input.corners[3] = -1;
  input.type = surface_->Type();
  input.texture = surface_->Texture();
  return input;
}

QString CAddFaceDialog::Fault() {
  return ToQString(InputFault(model_, Input()));
}

}  // namespace veldra

#include "tools/currentfacewidget.h"

#include <QHeaderView>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "editing/facecommands.h"
#include "model/normals.h"
#include "model/texturepicture.h"
#include "platform/numberrule.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kPictureSide = 96;
constexpr int kCornerRows = 4;
enum EColumn { kVertexColumn, kUColumn, kVColumn, kPositionColumn, kColumnCount };

QString PointText(const SPoint& point) {
  return QStringLiteral("%1, %2, %3").arg(point.x).arg(point.y).arg(point.z);
}

}  // namespace

CCurrentFaceWidget::CCurrentFaceWidget()
    : CToolWidget("currentFaceTool"), content_(MakeContent()), title_(LayOut(content_)) {
  Refresh({});
}

/// Wide enough for a corner's coordinates, where the screen is.
QSize CCurrentFaceWidget::sizeHint() const {
  constexpr int kSmallest = 200;
  constexpr int kLargest = 310;
  constexpr double kShare = 0.27;
  const int width = static_cast<int>(screen()->availableSize().width() * kShare);
  return {std::clamp(width, kSmallest, kLargest), CToolWidget::sizeHint().height()};
}

QLabel* CCurrentFaceWidget::MakeValue(QFormLayout& form, const QString& title, const char* name) {
  auto* value = new QLabel;
  value->setObjectName(name);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse);
  value->setWordWrap(true);
  form.addRow(title, value);
  return value;
}

QWidget* CCurrentFaceWidget::MakeContent() {
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* surface = new QFormLayout;
  type_ = MakeValue(*surface, tr("Type:"), "type");
  texture_ = MakeValue(*surface, tr("Texture:"), "texture");
  picture_ = new QLabel;
  picture_->setObjectName("picture");
  surface->addRow(QString(), picture_);
  corners_ = MakeCorners();
  auto* plane = new QFormLayout;
  plane->addRow(new QLabel(tr("As loaded")));
  stored_normal_ = MakeValue(*plane, tr("Normal:"), "storedNormal");
  stored_magic_ = MakeValue(*plane, tr("Magic:"), "storedMagic");
  plane->addRow(new QLabel(tr("As computed")));
  normal_ = MakeValue(*plane, tr("Normal:"), "normal");
  magic_ = MakeValue(*plane, tr("Magic:"), "magic");
  edit_ = new QPushButton(tr("&Edit..."));
  edit_->setObjectName("edit");
  connect(edit_, &QPushButton::clicked, this, [this] {
    if (View() != nullptr) emit CommandWanted("editFace");
  });
  layout->addLayout(surface);
  layout->addWidget(corners_);
  layout->addLayout(plane);
  layout->addWidget(edit_, 0, Qt::AlignLeft);
  return content;
}

QTreeWidget* CCurrentFaceWidget::MakeCorners() {
  auto* corners = new QTreeWidget;
  corners->setObjectName("corners");
  corners->setHeaderLabels({tr("Vertex"), "u", "v", tr("x, y, z")});
  corners->setRootIsDecorated(false);
  corners->setUniformRowHeights(true);
  corners->setToolTip(tr("A click makes the corner's vertex the current one."));
  corners->header()->setStretchLastSection(true);
  corners->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  for (int k = 0; k < kCornerRows; ++k)
    corners->addTopLevelItem(new QTreeWidgetItem({QStringLiteral("0")}));
  corners->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  corners->setFixedHeight(corners->header()->sizeHint().height() + kCornerRows * corners->sizeHintForRow(0) +
                          corners->horizontalScrollBar()->sizeHint().height() + 2 * corners->frameWidth());
  connect(corners, &QTreeWidget::itemClicked, this, [this, corners](QTreeWidgetItem* item) {
    if (Cursor() != nullptr) Cursor()->SetCorner(corners->indexOfTopLevelItem(item));
  });
  return corners;
}

void CCurrentFaceWidget::Refresh(const SNews&) {
  const CBinFace* face = Cursor() == nullptr ? nullptr : Cursor()->FaceObject();
  content_->setVisible(face != nullptr);
  if (face == nullptr) {
    title_->setText(WhyNothing(tr("There is no current face. A click on one in the 3D view makes it so.")));
    return;
  }
  title_->setText(tr("<b>Face %1</b> of %L2").arg(face->Index()).arg(face->Owner().FaceCount()) +
                  (face->IsSelected() ? tr(", selected") : QString()));
  Show(*face);
}

void CCurrentFaceWidget::Show(const CBinFace& face) {
  type_->setText(QString::fromUtf8(FaceTypeLabel(face.Type())));
  ShowTexture(face.Texture());
  ShowCorners(face);
  const SPoint normal = CalcFaceNormal(face);
  stored_normal_->setText(PointText(face.StoredNormal()));
  stored_magic_->setText(QString::number(face.StoredMagic()));
  normal_->setText(PointText(normal));
  magic_->setText(QString::number(CalcMagic(face, normal)));
  edit_->setEnabled(CanEditFace(*Cursor()));
}

void CCurrentFaceWidget::ShowTexture(const CBinTexture* texture) {
  texture_->setText(texture == nullptr ? tr("none") : TextureText(*texture));
  picture_->setVisible(texture != nullptr);
  const STextureImage* image = texture == nullptr ? nullptr : texture->Image();
  if (image == nullptr || std::exchange(shown_image_, image->id.Number()) == image->id.Number()) return;
  picture_->setPixmap(TexturePicture(*image, kPictureSide, *this));
}

void CCurrentFaceWidget::ShowCorners(const CBinFace& face) {
  const int current = Cursor()->Corner();
  for (int k = 0; k < kCornerRows; ++k) {
    QTreeWidgetItem* item = corners_->topLevelItem(k);
    item->setHidden(k >= face.CornerCount());
    if (item->isHidden()) continue;
    const STexCoord& coord = face.TexCoord(k);
    item->setText(kVertexColumn, QString::number(face.Corner(k)->Index()));
    item->setText(kUColumn, QString::number(coord.u + 0.0, 'g', 4));
    item->setText(kVColumn, QString::number(coord.v + 0.0, 'g', 4));
    item->setText(kPositionColumn, PointText(face.Corner(k)->Position()));
    item->setToolTip(kUColumn, ToQString(NumberText(coord.u)));
    item->setToolTip(kVColumn, ToQString(NumberText(coord.v)));
    item->setSelected(k == current);
  }
}

}  // namespace veldra

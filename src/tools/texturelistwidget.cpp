#include "tools/texturelistwidget.h"

#include <QFont>
#include <QHeaderView>
#include <QMenu>
#include <QPalette>
#include <QVBoxLayout>

#include "editing/texturetransfer.h"
#include "model/texturepicture.h"
#include "platform/text.h"
#include "tools/itemmenus.h"
#include "ui/qstrings.h"

namespace veldra {

// --- Rows ----------------------------------------------------------------------------------------------------------

const CBinTexture* CTextureRows::Texture(int row) const {
  const CEditCursor* cursor = owner_.Cursor();
  if (cursor == nullptr || cursor->Model().IsBusy() || row < 0 || row >= cursor->Model().TextureCount()) return nullptr;
  return &cursor->Model().Texture(row);
}

void CTextureRows::Sync(bool forget) {
  if (forget) pictures_.clear();
  const int now = owner_.Cursor() == nullptr ? 0 : owner_.Cursor()->Model().TextureCount();
  if (now < count_) {
    beginRemoveRows({}, now, count_ - 1);
    count_ = now;
    endRemoveRows();
  } else if (now > count_) {
    beginInsertRows({}, count_, now - 1);
    count_ = now;
    endInsertRows();
  }
  if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, kColumnCount - 1));
}

QPixmap CTextureRows::Picture(const CBinTexture& texture) const {
  QPixmap& picture = pictures_[texture.Image()->id.Number()];
  if (picture.isNull()) picture = TexturePicture(*texture.Image(), kPictureSide, owner_);
  return picture;
}

QVariant CTextureRows::data(const QModelIndex& index, int role) const {
  const CBinTexture* texture = Texture(index.row());
  if (texture == nullptr) return {};
  const bool is_unused = texture->UseCount() == 0;
  if (role == Qt::ToolTipRole) return ToolTipText(TextureText(*texture));
  if (role == Qt::DecorationRole && index.column() == kTexture) return Picture(*texture);
  if (role == Qt::TextAlignmentRole && index.column() == kFaces) return int{Qt::AlignRight | Qt::AlignVCenter};
  if (role == Qt::ForegroundRole && is_unused) return owner_.palette().brush(QPalette::PlaceholderText);
  if (role == Qt::FontRole && is_unused) {
    QFont font = owner_.font();
    font.setItalic(true);
    return font;
  }
  if (role != Qt::DisplayRole) return {};
  return TextOf(*texture, index.column());
}

QString CTextureRows::TextOf(const CBinTexture& texture, int column) const {
  if (column == kFaces) return texture.UseCount() == 0 ? tr("unused") : QStringLiteral("%L1").arg(texture.UseCount());
  const QString kind =
      texture.Kind() == ETextureKind::kPlain ? tr("plain") : tr("%1 frames").arg(texture.Frames().size());
  return tr("%1\n%2 x %2, %3").arg(NameToQString(texture.Name())).arg(texture.Width()).arg(kind);
}

QVariant CTextureRows::headerData(int section, Qt::Orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  const QString titles[] = {tr("Texture"), tr("Faces")};
  return titles[section];
}

// --- The list ------------------------------------------------------------------------------------------------------

CTextureListWidget::CTextureListWidget() : CToolWidget("textureListTool"), rows_(*this), list_(new QTreeView) {
  list_->setObjectName("textures");
  list_->setModel(&rows_);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setIconSize({CTextureRows::kPictureSide, CTextureRows::kPictureSide});
  list_->setDragDropMode(QAbstractItemView::DragOnly);
  list_->setToolTip(tr("A double click gives a texture to the selected faces; it can also be dragged onto faces."));
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(CTextureRows::kTexture, QHeaderView::Stretch);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(list_);
  drop_ = new CTextureDrop(*list_, [this]() -> CBinTexture* {
    const int row = list_->currentIndex().row();
    return rows_.Texture(row) == nullptr ? nullptr : &View()->Document().Model().Texture(row);
  });
  connect(list_, &QAbstractItemView::doubleClicked, this,
          [this](const QModelIndex& index) { TakeDoubleClick(index.row()); });
  connect(list_, &QWidget::customContextMenuRequested, this, &CTextureListWidget::ShowMenu);
}

void CTextureListWidget::TakeDoubleClick(int row) {
  if (rows_.Texture(row) == nullptr) return;
  CBinModel& model = View()->Document().Model();
  if (Cursor()->SelectedCount(EGroupKind::kFaces) > 0)
    AssignTexture(*Cursor(), model.Texture(row));
  else
    SelectFacesOfTexture(*View(), row);
}

void CTextureListWidget::Refresh(const SNews& news) {
  if (news.view) drop_->Follow(View());
  const SModelChange& change = news.model;
  // Use counts follow the faces.
  if (news.view || change.textures || change.topology || change.faces) rows_.Sync(news.view || change.textures);
}

void CTextureListWidget::ShowMenu(const QPoint& at) {
  if (View() == nullptr) return;
  const QModelIndex index = list_->indexAt(at);
  QMenu menu;
  menu.setObjectName("textureMenu");
  AddTextureItems(menu, *this, rows_.Texture(index.row()) == nullptr ? -1 : index.row());
  menu.exec(list_->viewport()->mapToGlobal(at));
}

}  // namespace veldra

#pragma once

#include <QAbstractTableModel>
#include <QPixmap>
#include <QTreeView>
#include <map>

#include "tools/texturedrop.h"
#include "tools/toolwidget.h"

namespace veldra {

/// The texture entries of the model of OWNER's view, with pictures that are made when they are first painted.
class CTextureRows : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum EColumn { kTexture, kFaces, kColumnCount };
  static constexpr int kPictureSide = 40;

  explicit CTextureRows(const CToolWidget& owner) : owner_(owner) {}
  /// Brings the rows up to date; with FORGET the pictures as well.
  void Sync(bool forget);
  /// Null for a row that the model has no longer.
  const CBinTexture* Texture(int row) const;

  int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : count_; }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
  }
  int columnCount(const QModelIndex&) const override { return kColumnCount; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString TextOf(const CBinTexture& texture, int column) const;
  QPixmap Picture(const CBinTexture& texture) const;

  const CToolWidget& owner_;
  int count_ = 0;
  mutable std::map<uint64_t, QPixmap> pictures_;  ///< by the number of the image
};

/// The textures of the model. A double click gives one to the selected faces; where none is selected, it selects those
/// that use it. One is also dragged onto a face in the view: a selected face gets it with all that are selected.
class CTextureListWidget : public CToolWidget {
  Q_OBJECT

 public:
  CTextureListWidget();

 private:
  void Refresh(const SNews& news) override;
  void ShowMenu(const QPoint& at);
  void TakeDoubleClick(int row);

  CTextureRows rows_;
  QTreeView* list_;
  CTextureDrop* drop_;
};

}  // namespace veldra

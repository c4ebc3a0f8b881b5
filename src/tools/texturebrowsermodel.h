#pragma once

#include <QAbstractListModel>
#include <QCache>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <vector>

#include "model/binmodel.h"
#include "packing/texturecatalog.h"

namespace veldra {

/// A texture in the browser: of the model, of a folder or of an archive.
struct SBrowserTexture {
  std::string name;  ///< upper case, as models name it; an animation's own
  std::string place;
  int size = 0;
  int faces = -1;  ///< of the model; -1: the model does not have it
  bool is_animation = false;
  bool has_own_colors = false;
  bool is_in_archive = false;
  std::string fault;                      ///< what the game does not take
  const STextureImage* image = nullptr;   ///< of the model's
  std::optional<SCatalogTexture> source;  ///< of the others

  bool IsOfModel() const { return faces >= 0; }
  /// As it is stored now; nothing when it cannot be read.
  STextureFiles Read() const;
};

/// The textures as small pictures. Pictures are made when they are asked for, some at a time while nothing else is to
/// do, and the last ones are kept.
class CTextureBrowserRows : public QAbstractListModel {
  Q_OBJECT

 public:
  static constexpr int kPictureSide = 72;

  /// DEFAULTS are the colours of textures without their own.
  CTextureBrowserRows(const QWidget& owner, std::function<ColorTable()> defaults);
  /// Room for one, with its texts.
  QSize CellSize() const;
  /// Other rows; pictures stay.
  void SetTextures(std::vector<SBrowserTexture> textures);
  void ForgetPictures();
  /// Null for no row.
  const SBrowserTexture* Texture(int row) const;
  /// -1 where there is none of that name.
  int RowOf(const std::string& name) const;
  /// Pictures made since the start.
  int MadeCount() const { return made_; }
  bool IsMaking() const { return !wanted_.empty(); }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(textures_.size());
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
  }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  QString KeyOf(const SBrowserTexture& texture) const;
  QPixmap Picture(int row) const;
  QPixmap MakePicture(const SBrowserTexture& texture) const;
  void MakeSome();

  const QWidget& owner_;
  std::function<ColorTable()> defaults_;
  std::vector<SBrowserTexture> textures_;
  mutable QCache<QString, QPixmap> pictures_;
  mutable std::vector<int> wanted_;  ///< rows whose pictures are to be made, the last one first
  mutable QTimer making_;
  int made_ = 0;
};

/// What there is to know about TEXTURE, a line each.
QString DetailsOf(const SBrowserTexture& texture);

}  // namespace veldra

#pragma once

#include <QAbstractItemModel>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "editing/editcursor.h"
#include "tools/modelsearch.h"

namespace veldra {

class CToolWidget;

/// A model's faces, vertices, textures and groups as a tree of five sections. Nothing is kept of a row but which one it
/// is: what it says is read from the model when it is painted, so that a model of any size costs nothing here.
class CModelTreeModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  enum ESection { kFaces, kVertices, kTextures, kFaceGroups, kVertexGroups };
  static constexpr int kSectionCount = 5;

  /// What is in a row: a section, or the item NUMBER, a position in the model's array, of one.
  struct SPlace {
    ESection section = kFaces;
    int32_t number = -1;
    bool IsItem() const { return number >= 0; }
    bool operator==(const SPlace&) const = default;
  };

  /// OWNER says whose model it is.
  explicit CModelTreeModel(const CToolWidget& owner);

  /// Brings the rows up to date with the model and with SEARCH, null for all. WHAT can have changed.
  void Sync(const CModelSearch* search);

  /// Nothing for no row, and for one that the model has no longer.
  std::optional<SPlace> PlaceOf(const QModelIndex& index) const;
  /// Not valid where the search has not found it.
  QModelIndex IndexOf(const SPlace& place) const;
  bool IsSelected(const QModelIndex& index) const;
  /// Faces and vertices can be selected.
  static std::optional<EGroupKind> KindOf(ESection section);

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex&) const override { return 1; }
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  using Found = std::optional<std::vector<int32_t>>;  ///< nothing: all
  const CBinModel* Model() const;
  int32_t CountOf(ESection section) const;
  Found Search(const CModelSearch& search, ESection section) const;
  void TakeRows(ESection section, Found found);
  QString TextOf(const SPlace& place) const;
  QString SectionText(ESection section) const;
  QString FaceText(const CBinFace& face) const;
  bool IsCurrent(const SPlace& place) const;

  const CToolWidget& owner_;
  std::array<int32_t, kSectionCount> row_counts_ = {};
  std::array<Found, kSectionCount> found_;
};

}  // namespace veldra

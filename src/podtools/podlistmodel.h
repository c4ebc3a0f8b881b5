#pragma once

#include <QAbstractProxyModel>
#include <QAbstractTableModel>
#include <functional>
#include <string>
#include <vector>

#include "archive/poddocument.h"

namespace veldra {

/// The entries of an archive as the rows of a list, in directory order.
class CPodListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum EColumn { kName, kFolder, kSize, kDate, kColumnCount };
  static constexpr int kSortRole = Qt::UserRole;  ///< what the list sorts by: sizes as numbers
  /// Writes entries out for a drag to another program and gives the files' paths.
  using Exporter = std::function<QStringList(const std::vector<size_t>& entries)>;

  explicit CPodListModel(QObject* parent) : QAbstractTableModel(parent) {}
  /// ARCHIVE must outlive its time in the list; null for none. To be called again when its entries are others.
  void SetArchive(const CPodDocument* archive);
  void SetExporter(Exporter exporter) { exporter_ = std::move(exporter); }
  /// Entries have been extracted.
  void RefreshMarks();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  /// Of the archive that is shown.
  const SPodEntry& Entry(int row) const { return archive_->Entries()[static_cast<size_t>(row)]; }
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 signals:
  /// The user has typed another name for the entry.
  void RenameWanted(size_t entry, const QString& name);

 private:
  QString Text(const SPodEntry& entry, int column) const;
  QString ToolTip(const SPodEntry& entry, int column) const;

  const CPodDocument* archive_ = nullptr;
  Exporter exporter_;
};

/// The rows whose name or folder has a text in it, sorted by the column that the user clicked on. A key that is typed
/// into the search costs a look at the rows that are left: names are folded and sorted once.
class CPodListFilter : public QAbstractProxyModel {
  Q_OBJECT

 public:
  explicit CPodListFilter(QObject* parent) : QAbstractProxyModel(parent) {}
  /// MODEL is a CPodListModel.
  void setSourceModel(QAbstractItemModel* model) override;
  void Search(const QString& text);
  /// Only files with this extension, in any letter case; "" for all.
  void ShowOnly(const QString& extension);
  /// Positions of the entries at INDEXES, in directory order.
  std::vector<size_t> Entries(const QModelIndexList& indexes) const;
  /// Those of all rows, in the order of the list.
  std::vector<size_t> Order() const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex&) const override { return {}; }
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QModelIndex mapToSource(const QModelIndex& index) const override;
  QModelIndex mapFromSource(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// COLUMN -1: the archive's own order.
  void sort(int column, Qt::SortOrder order) override;

 private:
  const CPodListModel& Source() const { return static_cast<const CPodListModel&>(*sourceModel()); }
  void TakeSource();
  void Arrange();
  void Filter(const std::vector<int>& among);
  void ChangeLayout(const std::function<void()>& change);
  bool Accepts(int entry);
  const std::string& FoldedName(int entry);

  std::string wanted_;     ///< folded
  std::string extension_;  ///< folded, with its "."
  int column_ = -1;
  Qt::SortOrder order_ = Qt::AscendingOrder;
  std::vector<int> sorted_;          ///< all entries, as the column has them
  std::vector<int> rows_;            ///< those that are shown
  std::vector<int> places_;          ///< of each entry its row; -1 for none
  std::vector<std::string> folded_;  ///< names, each once it has been asked for
};

}  // namespace veldra

#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
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

/// The rows whose name or folder has a text in it, sorted by the column that the user clicked on.
class CPodListFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit CPodListFilter(QObject* parent);
  void Search(const QString& text);
  /// Only files with this extension, in any letter case; "" for all.
  void ShowOnly(const QString& extension);
  /// Positions of the entries at INDEXES, in directory order.
  std::vector<size_t> Entries(const QModelIndexList& indexes) const;
  /// Those of all rows, in the order of the list.
  std::vector<size_t> Order() const;

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  bool Accepts(const SPodEntry& entry) const;

  // Both folded, as thousands of names are compared with them for each key that is pressed.
  std::string wanted_;
  std::string extension_;  ///< with its "."
};

}  // namespace veldra

#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <functional>
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
  /// ARCHIVE must outlive its time in the list; null for none.
  void SetArchive(const CPodDocument* archive);
  void SetExporter(Exporter exporter) { exporter_ = std::move(exporter); }
  /// Entries have been extracted.
  void RefreshMarks();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  QString Text(const SPodEntry& entry, int column) const;

  const CPodDocument* archive_ = nullptr;
  Exporter exporter_;
};

/// The rows whose name or folder has a text in it, sorted by the column that the user clicked on.
class CPodListFilter : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit CPodListFilter(QObject* parent);
  void Search(const QString& text);
  /// Positions of the entries at INDEXES, in directory order.
  std::vector<size_t> Entries(const QModelIndexList& indexes) const;

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  QString wanted_;
};

}  // namespace veldra

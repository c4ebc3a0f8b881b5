#include "podtools/podlistmodel.h"

#include <QApplication>
#include <QLocale>
#include <QMimeData>
#include <QStyle>
#include <QUrl>
#include <algorithm>

#include "platform/text.h"
#include "ui/faultlabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

QString Shown(std::string_view name) {
  return NameToQString(name);
}

}  // namespace

void CPodListModel::SetArchive(const CPodDocument* archive) {
  beginResetModel();
  archive_ = archive;
  endResetModel();
}

void CPodListModel::RefreshMarks() {
  if (rowCount() > 0) emit dataChanged(index(0, kName), index(rowCount() - 1, kName), {Qt::DecorationRole});
}

int CPodListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || archive_ == nullptr ? 0 : static_cast<int>(archive_->Entries().size());
}

int CPodListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QString CPodListModel::Text(const SPodEntry& entry, int column) const {
  switch (column) {
    case kName:
      return Shown(entry.FileName());
    case kFolder:
      return Shown(entry.Folder());
    case kSize:
      return QLocale().toString(entry.length);
    default:
      return ToQString(PodDateText(archive_->ModificationTime()));
  }
}

QString CPodListModel::ToolTip(const SPodEntry& entry, int column) const {
  if (entry.fault != EPodFault::kNone)
    return tr("This file cannot be extracted: %1.").arg(ToQString(PodFaultText(entry.fault)));
  if (entry.file > 0) {
    const QString path = NameToQString(archive_->PartOf(entry).path);
    return ToolTipText(tr("Will be taken from %1 when the archive is saved").arg(path));
  }
  if (archive_->IsChanged(entry)) return tr("Will have this name when the archive is saved");
  return entry.extracted && column == kName ? tr("Has been extracted") : QString();
}

QVariant CPodListModel::data(const QModelIndex& index, int role) const {
  const SPodEntry& entry = archive_->Entries()[static_cast<size_t>(index.row())];
  const QString fault = ToQString(PodFaultText(entry.fault));
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return Text(entry, index.column());
    case kSortRole:
      return index.column() == kSize ? QVariant(entry.length) : QVariant(Text(entry, index.column()).toUpper());
    case Qt::TextAlignmentRole:
      if (index.column() == kSize) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      break;
    case Qt::DecorationRole:
      if (index.column() != kName) break;
      if (!fault.isEmpty()) return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
      if (entry.extracted) return QApplication::style()->standardIcon(QStyle::SP_DialogApplyButton);
      break;
    case Qt::ForegroundRole:
      if (!fault.isEmpty()) return FaultColor(QApplication::palette());
      break;
    case Qt::FontRole:
      if (!archive_->IsChanged(entry)) break;
      {
        QFont font = QApplication::font("QAbstractItemView");
        font.setBold(true);
        return font;
      }
    case Qt::ToolTipRole:
      return ToolTip(entry, index.column());
    default:
      break;
  }
  return {};
}

QVariant CPodListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  static const char* const kTitles[kColumnCount] = {"Filename", "Folder", "Size", "Date"};
  return tr(kTitles[section]);
}

Qt::ItemFlags CPodListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags usual =
      Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
  return index.column() == kName ? usual | Qt::ItemIsEditable : usual;
}

/// The list is not the one that changes the archive.
bool CPodListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || value.toString() == index.data(Qt::EditRole).toString()) return false;
  emit RenameWanted(static_cast<size_t>(index.row()), value.toString());
  return true;
}

QStringList CPodListModel::mimeTypes() const {
  return {QStringLiteral("text/uri-list")};
}

QMimeData* CPodListModel::mimeData(const QModelIndexList& indexes) const {
  std::vector<size_t> entries;
  for (const QModelIndex& index : indexes)
    if (index.column() == kName) entries.push_back(static_cast<size_t>(index.row()));
  QList<QUrl> urls;
  if (exporter_)
    for (const QString& path : exporter_(entries))
      urls.append(QUrl::fromLocalFile(path));
  auto* data = new QMimeData;
  data->setUrls(urls);
  return data;
}

CPodListFilter::CPodListFilter(QObject* parent) : QSortFilterProxyModel(parent) {
  setSortRole(CPodListModel::kSortRole);
}

void CPodListFilter::Search(const QString& text) {
  wanted_ = FoldName(text.trimmed().replace('/', '\\').toStdString());
  // In one go: to take thousands of rows out one by one would take longer than a key may.
  invalidate();
}

void CPodListFilter::ShowOnly(const QString& extension) {
  extension_ = extension.isEmpty() ? "" : FoldName('.' + extension.toStdString());
  invalidateFilter();
}

bool CPodListFilter::filterAcceptsRow(int row, const QModelIndex&) const {
  if (wanted_.empty() && extension_.empty()) return true;
  return Accepts(static_cast<const CPodListModel*>(sourceModel())->Entry(row));
}

bool CPodListFilter::Accepts(const SPodEntry& entry) const {
  const std::string name = FoldName(entry.Name());
  return name.ends_with(extension_) && name.find(wanted_) != std::string::npos;
}

std::vector<size_t> CPodListFilter::Entries(const QModelIndexList& indexes) const {
  std::vector<size_t> entries;
  for (const QModelIndex& index : indexes)
    entries.push_back(static_cast<size_t>(mapToSource(index).row()));
  std::sort(entries.begin(), entries.end());
  return entries;
}

std::vector<size_t> CPodListFilter::Order() const {
  std::vector<size_t> entries;
  for (int row = 0; row < rowCount(); ++row)
    entries.push_back(static_cast<size_t>(mapToSource(index(row, 0)).row()));
  return entries;
}

}  // namespace veldra

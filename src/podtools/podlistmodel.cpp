#include "podtools/podlistmodel.h"

#include <QApplication>
#include <QLocale>
#include <QMimeData>
#include <QStyle>
#include <QUrl>
#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

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

// --- What is shown of it ---------------------------------------------------------------------------------------------

void CPodListFilter::setSourceModel(QAbstractItemModel* model) {
  QAbstractProxyModel::setSourceModel(model);
  connect(model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
  connect(model, &QAbstractItemModel::modelReset, this, [this] {
    TakeSource();
    endResetModel();
  });
  connect(model, &QAbstractItemModel::dataChanged, this, [this](const auto&, const auto&, const QList<int>& roles) {
    if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), roles);
  });
  TakeSource();
}

void CPodListFilter::TakeSource() {
  folded_.assign(static_cast<size_t>(Source().rowCount()), {});
  Arrange();
  Filter(sorted_);
}

void CPodListFilter::Arrange() {
  sorted_.resize(folded_.size());
  std::iota(sorted_.begin(), sorted_.end(), 0);
  if (column_ < 0) return;
  std::vector<QVariant> keys;
  keys.reserve(sorted_.size());
  for (const int entry : sorted_)
    keys.push_back(Source().index(entry, column_).data(CPodListModel::kSortRole));
  const auto is_before = [&](int a, int b) {
    return QVariant::compare(keys[static_cast<size_t>(a)], keys[static_cast<size_t>(b)]) == QPartialOrdering::Less;
  };
  std::ranges::stable_sort(
      sorted_, [&](int a, int b) { return order_ == Qt::AscendingOrder ? is_before(a, b) : is_before(b, a); });
}

void CPodListFilter::Filter(const std::vector<int>& among) {
  std::vector<int> rows;
  rows.reserve(among.size());
  std::ranges::copy_if(among, std::back_inserter(rows), [this](int entry) { return Accepts(entry); });
  rows_ = std::move(rows);
  places_.assign(folded_.size(), -1);
  for (size_t row = 0; row < rows_.size(); ++row)
    places_[static_cast<size_t>(rows_[row])] = static_cast<int>(row);
}

/// What is selected and current stays so, as far as it is still there. In one go: to take thousands of rows out one by
/// one would take longer than a key may.
void CPodListFilter::ChangeLayout(const std::function<void()>& change) {
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  QModelIndexList sources;
  for (const QModelIndex& each : before)
    sources.append(mapToSource(each));
  change();
  QModelIndexList after;
  for (const QModelIndex& each : sources)
    after.append(mapFromSource(each));
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

void CPodListFilter::Search(const QString& text) {
  const std::string before = std::exchange(wanted_, FoldName(text.trimmed().replace('/', '\\').toStdString()));
  if (wanted_ == before) return;
  // What has a longer text has the shorter one.
  ChangeLayout([&] { Filter(wanted_.find(before) != std::string::npos ? rows_ : sorted_); });
}

void CPodListFilter::ShowOnly(const QString& extension) {
  extension_ = extension.isEmpty() ? "" : FoldName('.' + extension.toStdString());
  ChangeLayout([this] { Filter(sorted_); });
}

void CPodListFilter::sort(int column, Qt::SortOrder order) {
  column_ = column;
  order_ = order;
  ChangeLayout([this] {
    Arrange();
    Filter(sorted_);
  });
}

const std::string& CPodListFilter::FoldedName(int entry) {
  std::string& folded = folded_[static_cast<size_t>(entry)];
  if (folded.empty()) folded = FoldName(Source().Entry(entry).Name());
  return folded;
}

bool CPodListFilter::Accepts(int entry) {
  if (wanted_.empty() && extension_.empty()) return true;
  const std::string& name = FoldedName(entry);
  return name.ends_with(extension_) && name.find(wanted_) != std::string::npos;
}

QModelIndex CPodListFilter::index(int row, int column, const QModelIndex& parent) const {
  return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

int CPodListFilter::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int CPodListFilter::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : CPodListModel::kColumnCount;
}

QModelIndex CPodListFilter::mapToSource(const QModelIndex& index) const {
  const auto row = static_cast<size_t>(index.row());
  return index.isValid() && row < rows_.size() ? Source().index(rows_[row], index.column()) : QModelIndex();
}

QModelIndex CPodListFilter::mapFromSource(const QModelIndex& index) const {
  const auto entry = static_cast<size_t>(index.row());
  return index.isValid() && entry < places_.size() && places_[entry] >= 0 ? createIndex(places_[entry], index.column())
                                                                          : QModelIndex();
}

QVariant CPodListFilter::headerData(int section, Qt::Orientation orientation, int role) const {
  return Source().headerData(section, orientation, role);
}

std::vector<size_t> CPodListFilter::Entries(const QModelIndexList& indexes) const {
  std::vector<size_t> entries;
  for (const QModelIndex& index : indexes)
    entries.push_back(static_cast<size_t>(mapToSource(index).row()));
  std::sort(entries.begin(), entries.end());
  return entries;
}

std::vector<size_t> CPodListFilter::Order() const {
  return {rows_.begin(), rows_.end()};
}

}  // namespace veldra

#pragma once

#include <QTreeView>
#include <string>
#include <vector>

#include "podtools/podlistmodel.h"
#include "settings/settings.h"

namespace veldra {

/// The list of an archive's entries: searched, sorted, files dragged out of it and dropped into it.
class CPodListView : public QTreeView {
  Q_OBJECT

 public:
  explicit CPodListView(CSettings& settings, QWidget* parent = nullptr);
  ~CPodListView() override;

  CPodListModel& Entries() { return *entries_; }
  CPodListFilter& Filter() { return *filter_; }
  /// Shows ARCHIVE (null for none) as it is now. What is looked at stays in sight; nothing is selected.
  void Show(const CPodDocument* archive);
  /// Positions of the selected entries, in directory order.
  std::vector<size_t> Selected() const;
  void Select(const std::vector<size_t>& entries);
  /// The archive's own order, in place of that of a column.
  void ShowOwnOrder();
  bool HasOwnOrder() const;
  /// The name of the current entry is typed anew in the list.
  void EditName();

 private:
  CPodListModel* entries_;
  CPodListFilter* filter_;
};

}  // namespace veldra

#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "archive/podcompare.h"
#include "archive/podwriter.h"
#include "packing/toolservices.h"
#include "ui/datagrid.h"

namespace veldra {

/// Entries of two archives that belong together, as rows.
class CPodPairRows : public CGridRows {
 public:
  CPodPairRows(const CPodDocument& here, const CPodDocument& there) : here_(here), there_(there) {}
  void Show(std::vector<SPodPair> pairs) { pairs_ = std::move(pairs); }
  const SPodPair& Pair(int row) const { return pairs_[static_cast<size_t>(row)]; }

  int Count() const override { return static_cast<int>(pairs_.size()); }
  QString Text(int row, int column) const override;
  bool IsBefore(int row, int other, int column) const override;

 private:
  /// -1 for one that is not there.
  int64_t SizeOf(const SPodPair& pair, int column) const;

  const CPodDocument& here_;
  const CPodDocument& there_;
  std::vector<SPodPair> pairs_;
};

/// Two archives side by side: what only one of them has, and what differs. What the other one has can be taken over.
class CPodCompareDlg : public QDialog {
  Q_OBJECT

 public:
  /// Puts SOURCES into the archive that is HERE; what it returns. HERE is read anew then.
  using Taker = std::function<bool(const std::vector<SPodSource>& sources)>;

  /// HERE outlives it.
  CPodCompareDlg(const SToolServices& services, const CPodDocument& here, Taker take, QWidget* parent);

  /// False when PATH cannot be loaded, which the user has been told, or the comparison was stopped.
  bool CompareWith(const std::string& path);

 private:
  bool Compare();
  void ShowPairs();
  void Take();
  void Refresh();

  SToolServices services_;
  const CPodDocument& here_;
  Taker take_;
  CPodDocument there_;
  std::vector<SPodPair> pairs_;
  QLabel* summary_;
  QComboBox* shown_;
  CPodPairRows rows_{here_, there_};
  CDataGrid* grid_;
  QPushButton* take_button_;
};

}  // namespace veldra

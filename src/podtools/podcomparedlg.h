#pragma once

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "archive/podcompare.h"
#include "archive/podwriter.h"
#include "packing/toolservices.h"

namespace veldra {

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
  void AddRow(size_t pair);
  void Take();
  void Refresh();

  SToolServices services_;
  const CPodDocument& here_;
  Taker take_;
  CPodDocument there_;
  std::vector<SPodPair> pairs_;
  QLabel* summary_;
  QComboBox* shown_;
  QTreeWidget* rows_;
  QPushButton* take_button_;
};

}  // namespace veldra

#pragma once

#include <vector>

#include "archive/podedit.h"
#include "ui/datagrid.h"

namespace veldra {

/// What is wrong with the archive that is open, a line each. Looks while it is shown only.
class CPodProblemsWidget : public CDataGrid {
  Q_OBJECT

 public:
  explicit CPodProblemsWidget(QWidget* parent = nullptr);

  /// ARCHIVE, which outlives it, or its entries are others.
  void ShowProblemsOf(const CPodDocument& archive);

 signals:
  /// The user wants to see what a line is about.
  void EntriesWanted(const std::vector<size_t>& entries);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Test();

  const CPodDocument* archive_ = nullptr;
  std::vector<SPodFinding> findings_;
  CTextRows rows_;
  bool is_due_ = false;
};

}  // namespace veldra

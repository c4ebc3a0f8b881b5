#pragma once

#include <QBasicTimer>
#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "model/modelchecker.h"
#include "tools/toolwidget.h"
#include "ui/datagrid.h"

namespace veldra {

/// What was found, or that of one kind, as rows.
class CProblemRows : public CGridRows {
 public:
  enum EColumn { kKind, kPlace, kText };

  void Take(std::vector<SFinding> findings);
  /// Nothing for all kinds.
  void ShowOnly(std::optional<EFinding> kind);
  const SFinding& Finding(int row) const { return findings_[shown_[static_cast<size_t>(row)]]; }

  int Count() const override { return static_cast<int>(shown_.size()); }
  QString Text(int row, int column) const override;
  bool IsBefore(int row, int other, int column) const override;
  QVariant Data(int row, int column, Qt::ItemDataRole role) const override;

 private:
  std::vector<SFinding> findings_;
  std::vector<size_t> shown_;
  std::optional<EFinding> kind_;
};

/// What is wrong with the model, or may become so in the game: found anew soon after each change, a part at a time
/// between other events, so that a large model stays fluent. Shows what each is about and mends what can be mended.
class CProblemsWidget : public CToolWidget {
  Q_OBJECT

 public:
  CProblemsWidget();
  QSize sizeHint() const override;

  /// Of the model as it was last checked; those that are not listed, too.
  size_t Count() const;
  /// What is shown is about the model as it is.
  bool IsUpToDate() const;
  CDataGrid& Grid() const { return *grid_; }
  /// The columns of the list.
  QVariant KeepState() const override { return grid_->KeepColumns(); }
  void RestoreState(const QVariant& state) override { grid_->RestoreColumns(state.toByteArray()); }

 signals:
  void CountChanged();
  /// The page on the kinds of problems.
  void HelpWanted();

 protected:
  void timerEvent(QTimerEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Refresh(const SNews& news) override;
  bool RefreshesCovered() const override { return true; }

  QLayout* MakeFoot();
  void CheckSoon(int delay_ms);
  void BeginCheck();
  void GoOn();
  void TakeResult();
  void FillKinds();
  void ShowKind();
  void UpdateFoot();
  std::vector<int> Mendable() const;
  void Jump(int row);
  /// The selected ones, or runs what helps where they cannot be mended.
  void MendChosen();
  void MendAll();
  void ShowMenu(const QPoint& at);
  QString MendText() const;
  QString MendAllText() const;

  CProblemRows rows_;
  QComboBox* kinds_;
  QLabel* summary_;
  CDataGrid* grid_;
  QLabel* advice_;
  QPushButton* mend_;
  QPushButton* mend_all_;
  QBoxLayout* foot_;
  QBasicTimer wait_;  ///< until no change has come for a while
  QBasicTimer work_;
  std::unique_ptr<CModelChecker> check_;  ///< on its way
  uint64_t identity_ = 0;                 ///< of the model of check_, then of rows_; 0 for none
  uint64_t revision_ = 0;
  bool is_shown_ = false;  ///< what identity_ and revision_ tell is in rows_
  std::array<size_t, kFindingCount> counts_ = {};
};

}  // namespace veldra

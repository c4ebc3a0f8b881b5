#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTreeWidget>
#include <vector>

#include "document/recovery.h"

namespace veldra {

/// Offers what was not saved when the program died. The user ticks what to recover, or to discard; what is neither
/// recovered nor discarded is offered again at the next start.
class CRecoveryDialog : public QDialog {
  Q_OBJECT

 public:
  enum class EChoice { kLater, kRecover, kDiscard };

  /// LEFTOVERS as the keeper lists them.
  CRecoveryDialog(const std::vector<SLeftover>& leftovers, QWidget* parent);
  EChoice Choice() const { return choice_; }
  /// The places of the ticked ones in LEFTOVERS; when recovering, of those that can be.
  std::vector<size_t> Chosen() const;

 private:
  void AddLeftover(const SLeftover& leftover);
  void MakeButtons();
  void Choose(EChoice choice);
  void UpdateButtons();

  QTreeWidget* list_;
  QPushButton* recover_ = nullptr;
  QPushButton* discard_ = nullptr;
  EChoice choice_ = EChoice::kLater;
};

}  // namespace veldra

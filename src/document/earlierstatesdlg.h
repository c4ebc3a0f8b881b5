#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTreeWidget>
#include <optional>
#include <vector>

#include "document/earlierstates.h"

namespace veldra {

/// Shows the earlier states of a document; one of them can be chosen to be opened or, for a truck, to go back to.
class CEarlierStatesDialog : public QDialog {
  Q_OBJECT

 public:
  /// STATES as CEarlierStates lists them; TITLE is the document's.
  CEarlierStatesDialog(const QString& title, const std::vector<SEarlierState>& states, ECopyKind kind, QWidget* parent);
  /// The id of the state to open; nothing when the dialog was left without one.
  std::optional<uint64_t> Chosen() const;

 private:
  void AddState(const SEarlierState& state);

  QTreeWidget* list_;
  QPushButton* open_;
};

}  // namespace veldra

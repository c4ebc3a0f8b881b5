#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeWidget>
#include <optional>
#include <vector>

#include "document/earlierstates.h"

namespace veldra {

/// Shows the earlier states of a document; one of them can be chosen to go back to or, of a model, to be opened.
class CEarlierStatesDialog : public QDialog {
  Q_OBJECT

 public:
  /// STATES as CEarlierStates lists them; TITLE is the document's.
  CEarlierStatesDialog(const QString& title, const std::vector<SEarlierState>& states, ECopyKind kind, QWidget* parent);
  /// The id of the state to open; nothing when the dialog was left without one.
  std::optional<uint64_t> Chosen() const;
  /// The document is to become that state, rather than another document.
  bool GoesBack() const { return goes_back_; }
  /// Of a document that must not be changed states can only be opened.
  void SetReadOnly(bool is_read_only);

 private:
  void AddState(const SEarlierState& state);
  QPushButton* MakeChoice(const QString& text, const QString& name, bool goes_back);

  QTreeWidget* list_;
  QPushButton* back_;
  QPushButton* open_;  ///< null where states are not opened
  QDialogButtonBox* buttons_;
  bool goes_back_ = false;
  bool is_read_only_ = false;
};

}  // namespace veldra

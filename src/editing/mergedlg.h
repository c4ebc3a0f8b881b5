#pragma once

#include "editing/commandinputs.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks within which distance vertices are merged.
class CMergeDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CMergeDialog(const SMergeInput& last, QWidget* parent);
  /// Once accepted.
  SMergeInput Input() const;

 private:
  CNumberField* threshold_;
};

}  // namespace veldra

#pragma once

#include <array>

#include "editing/commandinputs.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks where a new vertex is.
class CAddVertexDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CAddVertexDialog(const SAddVertexInput& last, QWidget* parent);
  /// Once accepted.
  SAddVertexInput Input() const;

 private:
  std::array<CNumberField*, 3> coordinates_;
};

}  // namespace veldra

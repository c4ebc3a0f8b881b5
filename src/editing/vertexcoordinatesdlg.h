#pragma once

#include <array>

#include "model/helperclasses.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks where a vertex is to be.
class CVertexCoordinatesDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CVertexCoordinatesDialog(const CBinVertex& vertex, QWidget* parent);
  /// Once accepted.
  SPoint Position() const;

 private:
  std::array<CNumberField*, 3> fields_ = {};
};

}  // namespace veldra

#include "platform/opendialog.h"

namespace veldra {

bool CSystemOpenDialog::IsThere() {
  return false;
}

std::optional<SOpenFiles> CSystemOpenDialog::Ask(bool) const {
  return std::nullopt;
}

}  // namespace veldra

#pragma once

#include <string>

namespace veldra {

/// Why an import failed.
struct SImportFault {
  std::string what;      ///< what is wrong with the file and where, in one line; "" when the user stopped the import
  bool is_told = false;  ///< the user knows already: from a message, or because he stopped it himself
};

/// Memory ran out.
inline const SImportFault kNoMemory = {"there is not enough memory for it", false};

}  // namespace veldra

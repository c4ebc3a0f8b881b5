#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/questions.h"
#include "textures/texturestore.h"

namespace veldra {

class CTarnDoc;

/// While a command changes a document: a wait cursor, and the state before, which becomes one of the earlier states at
/// the end unless the model is still the same. A command that ends by an exception, as there is not enough memory for
/// it, leaves the document as it was. Throws std::bad_alloc when there is none for the state before: who cannot be
/// taken back does not begin.
class CStateBefore {
 public:
  CStateBefore(CTarnDoc& document, const char* command, bool cancellable = false);
  ~CStateBefore();
  CStateBefore(const CStateBefore&) = delete;
  CStateBefore& operator=(const CStateBefore&) = delete;

  CProgress& Progress() { return *work_; }

 private:
  void TakeBack();
  bool Restore(bool in_place);

  CTarnDoc& document_;
  std::unique_ptr<CProgress> work_;
  std::string key_;
  std::vector<uint8_t> packed_;
  bool is_file_;
  uint64_t revision_;
  int exceptions_;  ///< under way when the command began
  std::map<std::string, const STextureImage*> images_;
};

}  // namespace veldra

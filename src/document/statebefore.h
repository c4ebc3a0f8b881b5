#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/questions.h"

namespace veldra {

class CTarnDoc;

/// While a command changes a document: a wait cursor, and the state before, which becomes one of the earlier states at
/// the end unless the model is still the same.
class CStateBefore {
 public:
  CStateBefore(CTarnDoc& document, const char* command, bool cancellable = false);
  ~CStateBefore();
  CStateBefore(const CStateBefore&) = delete;
  CStateBefore& operator=(const CStateBefore&) = delete;

  CProgress& Progress() { return *work_; }

 private:
  CTarnDoc& document_;
  std::unique_ptr<CProgress> work_;
  std::string key_;
  std::vector<uint8_t> packed_;
  bool is_file_;
  uint64_t revision_;
};

}  // namespace veldra

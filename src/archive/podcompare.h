#pragma once

#include <optional>
#include <string>
#include <vector>

#include "archive/poddocument.h"
#include "platform/questions.h"

namespace veldra {

enum class EPodMatch {
  kSame,
  kDiffers,
  kOnlyHere,
  kOnlyThere,
  kUnknown  ///< one of the two cannot be read
};

/// One name of two archives.
struct SPodPair {
  EPodMatch match = EPodMatch::kSame;
  std::optional<size_t> here;  ///< positions; of several entries of one name the last, which the game finds
  std::optional<size_t> there;
};

/// What two archives have: the names of HERE in its order, then those that only THERE has, in its. Bytes are compared
/// where the lengths are equal, with progress. Nothing when the user has stopped it.
std::optional<std::vector<SPodPair>> ComparePods(CQuestions& questions, const CPodDocument& here,
                                                 const CPodDocument& there);

}  // namespace veldra

#include "platform/endsignals.h"

namespace veldra {

std::optional<intptr_t> WatchEndSignals() {
  return std::nullopt;  // windows are told by messages
}

}  // namespace veldra

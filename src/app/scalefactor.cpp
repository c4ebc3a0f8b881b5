#include "app/scalefactor.h"

#include "platform/text.h"

namespace veldra {

std::string ScaleFactorFault(std::string_view text) {
  constexpr double kFixedPointOne = 65536.0;
  const auto factor = ParseNumber(Trim(text));
  if (!factor) return "Enter a number such as 1.5.";
  const double word = *factor * kFixedPointOne;
  if (word > -1.0 && word < 1.0) return "The factor is too close to zero.";
  if (word <= -2147483649.0 || word >= 2147483648.0) return "The factor must lie between -32768 and 32767.99998.";
  return "";
}

}  // namespace veldra

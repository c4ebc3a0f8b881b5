#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/geometry.h"
#include "settings/settings.h"

/// The values of options as they are typed; nothing when one is malformed.
namespace veldra {

/// TEXT at every SEPARATOR; at least one part.
std::vector<std::string> SplitText(std::string_view text, char separator);
/// COUNT finite numbers with commas between them.
std::optional<std::vector<double>> ParseNumbers(std::string_view text, size_t count);
std::optional<std::vector<int32_t>> ParseIntegers(std::string_view text, size_t count);
/// "x", "y" or "z", in either case.
std::optional<EAxis> ParseAxis(std::string_view text);
/// A face type that a face can be given: one of the six or, with UNTYPED, 0 too; "0x18" or decimal.
std::optional<uint32_t> ParseFaceType(std::string_view text, bool untyped);
/// "WIDTHxHEIGHT", each a side that a picture can have, into SIZE. Returns what is wrong with TEXT, or "".
std::string TakePictureSize(std::string_view text, std::pair<int, int>& size);
/// "RRGGBB" or "#RRGGBB" in hexadecimal.
std::optional<SColor> ParseColor(std::string_view text);

}  // namespace veldra

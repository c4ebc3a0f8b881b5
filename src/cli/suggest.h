#pragma once

#include <span>
#include <string>
#include <string_view>

namespace veldra {

/// How many letters must be changed, added, left out or exchanged with their neighbour to make B of A, in any case.
size_t TypingDistance(std::string_view a, std::string_view b);

/// ", did you mean "convert"?" for the word of WORDS that is most like TEXT; "" when none is like it.
std::string DidYouMean(std::string_view text, std::span<const std::string> words);

}  // namespace veldra

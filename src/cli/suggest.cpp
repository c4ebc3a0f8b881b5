#include "cli/suggest.h"

#include <algorithm>
#include <vector>

#include "platform/text.h"

namespace veldra {

size_t TypingDistance(std::string_view a, std::string_view b) {
  const std::string from = LowerCase(a);
  const std::string to = LowerCase(b);
  // A row for each length of the part of FROM, a column for each of TO.
  std::vector<std::vector<size_t>> cost(from.size() + 1, std::vector<size_t>(to.size() + 1));
  for (size_t i = 0; i <= from.size(); ++i) {
    for (size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const bool differs = from[i - 1] != to[j - 1];
      cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + differs});
      const bool is_exchange = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
      if (is_exchange) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
    }
  }
  return cost.back().back();
}

std::string DidYouMean(std::string_view text, std::span<const std::string> words) {
  const auto distance = [text](const std::string& word) { return TypingDistance(text, word); };
  const auto nearest = std::ranges::min_element(words, {}, distance);
  // With more than half of its letters wrong it is another word.
  if (nearest == words.end() || 2 * distance(*nearest) > nearest->size()) return "";
  return ", did you mean \"" + *nearest + "\"?";
}

}  // namespace veldra

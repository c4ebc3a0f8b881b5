#include "platform/programcall.h"

#include "platform/files.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Between blanks outside of quotes, which are left out. "" is a word of no letters.
std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  bool is_in_word = false;
  bool is_quoted = false;
  for (const char letter : text) {
    const bool is_blank = !is_quoted && (letter == ' ' || letter == '\t');
    if (!is_blank && !std::exchange(is_in_word, true)) words.emplace_back();
    if (is_blank) is_in_word = false;
    if (letter == '"') {
      is_quoted = !is_quoted;
    } else if (!is_blank) {
      words.back() += letter;
    }
  }
  return words;
}

/// In one pass: a path may hold the name of a placeholder.
std::string Filled(const std::string& word, std::span<const Filling> fillings) {
  std::string filled;
  for (size_t at = 0; at < word.size();) {
    const size_t before = at;
    for (const auto& [name, value] : fillings) {
      if (word.compare(at, name.size(), name) != 0) continue;
      filled += value;
      at += name.size();
      break;
    }
    if (at == before) filled += word[at++];
  }
  return filled;
}

}  // namespace

std::optional<SProgramCall> ReadProgramCall(const std::string& text, std::span<const Filling> fillings) {
  const std::string trimmed(Trim(text));
  std::vector<std::string> words = IsFile(trimmed) ? std::vector{trimmed} : Words(trimmed);
  for (std::string& word : words)
    word = Filled(word, fillings);
  if (words.empty() || words.front().empty()) return std::nullopt;
  return SProgramCall{words.front(), {words.begin() + 1, words.end()}};
}

}  // namespace veldra

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veldra {

inline bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// What stands where a number is expected.
enum class ENumber { kGood, kTooLarge, kNone };

/// Walks over the lines and words of a Wavefront text, one pass. Blanks are blank, \t, \v and \f; a line ends with LF
/// or CR LF, or with CR in a text without any LF; a backslash at its end continues it on the next one.
class CWaveScanner {
 public:
  explicit CWaveScanner(std::string_view text)
      : begin_(text.data()),
        at_(text.data()),
        end_(text.data() + text.size()),
        line_end_(text.find('\n') == std::string_view::npos ? '\r' : '\n') {}

  bool AtEnd() const { return at_ == end_; }
  size_t Position() const { return static_cast<size_t>(at_ - begin_); }
  uint32_t Line() const { return line_; }  ///< from 1; lines as an editor counts them

  /// To the next word of the line, over blanks and continuations. False at the line's end or a comment.
  bool ToWord() {
    do {
      while (at_ != end_ && (*at_ == ' ' || IsBlank(*at_)))
        ++at_;
    } while (at_ != end_ && *at_ == '\\' && SkipContinuation());
    return at_ != end_ && *at_ != line_end_ && *at_ != '#';
  }
  char Peek() const { return at_ == end_ ? '\0' : *at_; }
  bool StartsWith(std::string_view text) const {
    return std::string_view(at_, static_cast<size_t>(end_ - at_)).starts_with(text);
  }
  /// Steps over the word that is just LETTER, if it is.
  bool TakeLetter(char letter) {
    if (*at_ != letter) return false;
    ++at_;
    if (AtWordEnd()) return true;
    --at_;
    return false;
  }
  void Skip(size_t count) { at_ += count; }
  /// Nothing of a word follows: a blank, the line's or the text's end, a comment or a continuation.
  bool AtWordEnd() const { return at_ == end_ || *at_ == line_end_ || *at_ == '\\' || IsBlank(*at_); }

  /// To the beginning of the next line that does not continue this one.
  void ToNextLine() {
    if (at_ == end_ || *at_ != line_end_) return SkipLine();
    ++at_;
    ++line_;
  }

  /// A decimal number, exactly rounded, whatever the locale. NUMBER is untouched unless it is good. The position is
  /// behind the number, or where it was.
  ENumber ReadNumber(double& number) { return ReadShortNumber(number) ? ENumber::kGood : ReadAnyNumber(number); }
  /// A whole number with an optional sign, about 2^43 when it is larger than that. False, the position unchanged, when
  /// none stands there.
  bool ReadInteger(int64_t& number) {
    const char* at = at_;
    const bool negative = at != end_ && *at == '-';
    if (at != end_ && (*at == '-' || *at == '+')) ++at;
    const char* const first = at;
    int64_t value = 0;
    for (; at != end_ && IsDigit(*at); ++at)
      value = value < kLargestInteger ? value * 10 + (*at - '0') : kLargestInteger;
    if (at == first) return false;
    number = negative ? -value : value;
    at_ = at;
    return true;
  }
  /// The characters up to the next blank.
  std::string_view ReadWord();
  /// The rest of the line without blanks at its ends.
  std::string_view ReadRest();

 private:
  static constexpr int64_t kLargestInteger = int64_t{1} << 40;
  bool IsBlank(char c) const {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || (c == '\r' && line_end_ == '\n');
  }
  bool ReadShortNumber(double& number);
  ENumber ReadAnyNumber(double& number);
  bool IsContinuation() const;
  bool SkipContinuation();
  void SkipLine();
  void SkipPhysicalLine();
  const char* LineEnd() const;

  const char* begin_;
  const char* at_;
  const char* end_;
  char line_end_;
  uint32_t line_ = 1;
};

}  // namespace veldra

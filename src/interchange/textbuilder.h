#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace veldra {

/// Text put together from pieces: formatting each of a million lines on its own would take most of an export's time.
class CTextBuilder {
 public:
  explicit CTextBuilder(size_t expected_size) { text_.reserve(expected_size); }

  CTextBuilder& operator<<(std::string_view text) {
    if (text.size() > Room()) Flush();
    if (text.size() > Room()) {
      text_ += text;
    } else {
      std::memcpy(piece_.data() + used_, text.data(), text.size());
      used_ += text.size();
    }
    return *this;
  }
  CTextBuilder& operator<<(char character) {
    if (Room() == 0) Flush();
    piece_[used_++] = character;
    return *this;
  }
  CTextBuilder& operator<<(int64_t number) { return Number(number, 10); }
  CTextBuilder& operator<<(int32_t number) { return Number(number, 10); }
  /// Without 0x.
  CTextBuilder& Hexadecimal(uint32_t number) {
    if (Room() < kLongestNumber) Flush();
    const size_t start = used_;
    Number(number, 16);
    for (size_t i = start; i < used_; ++i) {
      if (piece_[i] >= 'a') piece_[i] = static_cast<char>(piece_[i] - 'a' + 'A');
    }
    return *this;
  }

  std::string Take() {
    Flush();
    return std::move(text_);
  }

 private:
  static constexpr size_t kPieceSize = 16384;
  static constexpr size_t kLongestNumber = 24;

  size_t Room() const { return kPieceSize - used_; }
  void Flush() {
    text_.append(piece_.data(), used_);
    used_ = 0;
  }

  template <typename Integer>
  CTextBuilder& Number(Integer number, int base) {
    if (Room() < kLongestNumber) Flush();
    char* const at = piece_.data() + used_;
    used_ += static_cast<size_t>(std::to_chars(at, at + kLongestNumber, number, base).ptr - at);
    return *this;
  }

  std::string text_;
  std::array<char, kPieceSize> piece_;  ///< what comes next, in the cache and without a check for each character
  size_t used_ = 0;
};

}  // namespace veldra

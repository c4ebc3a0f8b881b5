#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldra {

/// Text put together from pieces: formatting each of a million lines on its own would take most of an export's time.
class CTextBuilder {
 public:
  explicit CTextBuilder(size_t expected_size) { text_.reserve(expected_size); }

  CTextBuilder& operator<<(std::string_view text) {
    text_ += text;
    return *this;
  }
  CTextBuilder& operator<<(char character) {
    text_ += character;
    return *this;
  }
  CTextBuilder& operator<<(int64_t number) { return Number(number, 10); }
  CTextBuilder& operator<<(int32_t number) { return Number(number, 10); }
  /// Without 0x.
  CTextBuilder& Hexadecimal(uint32_t number) {
    const size_t start = text_.size();
    Number(number, 16);
    for (size_t i = start; i < text_.size(); ++i) {
      if (text_[i] >= 'a') text_[i] = static_cast<char>(text_[i] - 'a' + 'A');
    }
    return *this;
  }

  std::string Take() { return std::move(text_); }

 private:
  template <typename Integer>
  CTextBuilder& Number(Integer number, int base) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof(digits), number, base).ptr;
    text_.append(digits, static_cast<size_t>(end - digits));
    return *this;
  }

  std::string text_;
};

}  // namespace veldra

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <iterator>
#include <limits>
#include <utility>

#include "platform/text_system.h"

namespace veldra {

namespace {

constexpr char UpperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char LowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Takes one leading sign off TEXT; true for "-".
bool TakeSign(std::string_view& text) {
  if (text.empty() || (text[0] != '+' && text[0] != '-')) return false;
  const bool negative = text[0] == '-';
  text.remove_prefix(1);
  return negative;
}

template <typename Value, typename... Options>
std::optional<Value> ParseWhole(std::string_view text, Options... options) {
  Value value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, options...);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

/// Length of the valid UTF-8 sequence at the start of TEXT (not empty); 0 when there is none.
size_t Utf8SequenceLength(std::string_view text) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
  const uint8_t lead = byte(0);
  if (lead < 0x80) return 1;
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  for (size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
  const bool surrogate = lead == 0xED && byte(1) >= 0xA0;
  const bool beyond_unicode = lead == 0xF4 && byte(1) >= 0x90;
  return overlong || surrogate || beyond_unicode ? 0 : length;
}

/// The character that the valid UTF-8 SEQUENCE stands for.
uint32_t CodeOf(std::string_view sequence) {
  if (sequence.size() == 1) return static_cast<uint8_t>(sequence[0]);
  uint32_t code = static_cast<uint8_t>(sequence[0]) & (0x7FU >> sequence.size());
  for (const char c : sequence.substr(1))
    code = code << 6 | (static_cast<uint8_t>(c) & 0x3FU);
  return code;
}

struct SCodes {
  uint32_t first;
  uint32_t last;
};

/// Control characters, and what Unicode has to format text with: marks of direction, of joining and of width, line
/// separators, annotations, tags.
constexpr SCodes kHidden[] = {{0, 0x1F},        {0x7F, 0x9F},     {0xAD, 0xAD},      {0x61C, 0x61C},
                              {0x180E, 0x180E}, {0x200B, 0x200F}, {0x2028, 0x202E},  {0x2060, 0x206F},
                              {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};

bool IsHidden(uint32_t code) {
  return std::any_of(std::begin(kHidden), std::end(kHidden),
                     [=](const SCodes& codes) { return code >= codes.first && code <= codes.last; });
}

bool IsPlain(char c) {
  return c >= 0x20 && c < 0x7F;
}

std::string EscapeOf(uint32_t code) {
  if (code <= 0xFF) return Format("\\x%02X", code);
  return Format(code <= 0xFFFF ? "\\u%04X" : "\\U%06X", code);
}

std::string JsonEscapeOf(uint32_t code) {
  if (code <= 0xFFFF) return Format("\\u%04x", code);
  return Format("\\u%04x\\u%04x", 0xD7C0 + (code >> 10), 0xDC00 + (code & 0x3FF));
}

/// What the game's code page has from 0x80 on; from 0xA0 on it is Unicode's own order. The five that it leaves open are
/// control characters, as Windows has them.
constexpr std::array<uint16_t, 32> kCodePage = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                                0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

uint32_t CodeOfByte(uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? kCodePage[byte - 0x80] : byte;
}

/// Of a character below 0x10000.
std::string Utf8Of(uint32_t code) {
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) return std::string(1, static_cast<char>(code));
  if (code < 0x800) return {static_cast<char>(0xC0 | (code >> 6)), tail(0)};
  return {static_cast<char>(0xE0 | (code >> 12)), tail(6), tail(0)};
}

/// The capital of a letter of the code page; other characters stay.
uint32_t CapitalOf(uint32_t code) {
  const bool is_latin = code >= 0xE0 && code <= 0xFE && code != 0xF7;
  if (is_latin || (code >= 'a' && code <= 'z')) return code - 0x20;
  if (code == 0xFF) return 0x178;
  return code == 0x161 || code == 0x153 || code == 0x17E ? code - 1 : code;
}

/// TEXT with ESCAPE(code) for each hidden character that is not among KEPT. A byte that is no UTF-8 is taken as
/// one of the game's code page.
template <typename Escape>
std::string EscapeHidden(std::string_view text, std::string_view kept, const Escape& escape) {
  std::string shown;
  while (!text.empty()) {
    const auto plain = static_cast<size_t>(std::find_if_not(text.begin(), text.end(), IsPlain) - text.begin());
    shown += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const size_t length = Utf8SequenceLength(text);
    const uint32_t code = length > 0 ? CodeOf(text.substr(0, length)) : CodeOfByte(static_cast<uint8_t>(text[0]));
    const bool stays = !IsHidden(code) || (code < 0x80 && kept.find(static_cast<char>(code)) != std::string_view::npos);
    if (!stays) {
      shown += escape(code);
    } else {
      shown += length > 0 ? std::string(text.substr(0, length)) : Utf8Of(code);
    }
    text.remove_prefix(std::max(length, size_t{1}));
  }
  return shown;
}

/// Of most texts there is nothing to escape, and that shows quickly.
bool IsPlainText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return IsPlain(c) || c == '\n' || c == '\t'; });
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = Utf8SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

std::string Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = FormatList(format, arguments);
  va_end(arguments);
  return text;
}

std::string FormatList(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = textsystem::PrintInC(nullptr, 0, format, again);
  va_end(again);
  if (length <= 0) return {};
  std::string text(static_cast<size_t>(length), '\0');
  // The zero behind the characters belongs to the string and may be written as zero.
  textsystem::PrintInC(text.data(), text.size() + 1, format, arguments);
  return text;
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperLetter);
  return upper;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerLetter);
  return lower;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperLetter(x) == UpperLetter(y); });
}

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\n\v\f\r";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<int32_t> ParseInteger(std::string_view text) {
  const bool negative = TakeSign(text);
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  const auto magnitude = ParseWhole<uint32_t>(text, hexadecimal ? 16 : 10);
  if (!magnitude) return std::nullopt;
  const int64_t value = negative ? -int64_t{*magnitude} : int64_t{*magnitude};
  if (value != static_cast<int32_t>(value)) return std::nullopt;
  return static_cast<int32_t>(value);
}

std::optional<double> ParseNumber(std::string_view text) {
  const bool negative = TakeSign(text);
  // from_chars would take a second sign.
  if (text.starts_with('-')) return std::nullopt;
  const auto magnitude = ParseWhole<double>(text);
  if (!magnitude || !std::isfinite(*magnitude)) return std::nullopt;
  return negative ? -*magnitude : *magnitude;
}

std::string ToUtf8(std::string_view text) {
  if (IsUtf8(text)) return std::string(text);
  std::string utf8;
  utf8.reserve(text.size() * 2);
  for (const char c : text)
    utf8 += Utf8Of(CodeOfByte(static_cast<uint8_t>(c)));
  return utf8;
}

std::optional<std::string> ToCodePage(std::string_view utf8) {
  std::string bytes;
  while (!utf8.empty()) {
    const size_t length = Utf8SequenceLength(utf8);
    const uint32_t code = length > 0 ? CodeOf(utf8.substr(0, length)) : 0;
    const auto* const in_page = std::ranges::find(kCodePage, code);
    const bool is_in_page = in_page != kCodePage.end();
    if (length == 0 || (!is_in_page && (code > 0xFF || (code >= 0x80 && code < 0xA0)))) return std::nullopt;
    bytes += static_cast<char>(is_in_page ? 0x80 + (in_page - kCodePage.begin()) : code);
    utf8.remove_prefix(length);
  }
  return bytes;
}

std::string FoldName(std::string_view name) {
  if (std::ranges::all_of(name, IsPlain)) return UpperCase(name);
  const std::string utf8 = ToUtf8(name);
  std::string folded;
  for (std::string_view left = utf8; !left.empty();) {
    const size_t length = Utf8SequenceLength(left);
    const uint32_t code = CodeOf(left.substr(0, length));
    const uint32_t capital = CapitalOf(code);
    folded += capital == code ? std::string(left.substr(0, length)) : Utf8Of(capital);
    left.remove_prefix(length);
  }
  return folded;
}

std::string DisplayName(std::string_view name) {
  return EscapeHidden(ToUtf8(name), {}, EscapeOf);
}

std::string DisplayText(std::string_view text) {
  return IsPlainText(text) ? std::string(text) : EscapeHidden(text, "\n\t", EscapeOf);
}

std::string DisplayJson(std::string json) {
  return IsPlainText(json) ? std::move(json) : EscapeHidden(json, "\n\t", JsonEscapeOf);
}

bool HasHiddenCharacters(std::string_view name) {
  return DisplayName(name) != ToUtf8(name);
}

std::string Counted(int64_t count, const char* one, const char* many) {
  std::string digits = std::to_string(count);
  for (size_t at = digits.size(); at > 3 && digits[at - 4] != '-';)
    digits.insert(at -= 3, ",");
  return digits + " " + (count == 1 ? one : many);
}

uint64_t HashText(std::string_view text) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text)
    hash = (hash ^ static_cast<uint8_t>(c)) * 0x100000001B3;
  return hash;
}

}  // namespace veldra

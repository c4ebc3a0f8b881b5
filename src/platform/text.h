#pragma once

#include <cstdarg>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Marks a printf-style function, TEXT and FIRST being the positions of its format and first argument. MinGW's
// compiler takes "printf" for Microsoft's, though its library's printf is the standard one ("%zu").
#if defined(__MINGW32__) && !defined(__clang__)
#define VELDRA_PRINTF(text, first) [[gnu::format(gnu_printf, text, first)]]
#else
#define VELDRA_PRINTF(text, first) [[gnu::format(printf, text, first)]]
#endif

namespace veldra {

/// printf into a string, with "." as decimal point whatever the locale.
VELDRA_PRINTF(1, 2) std::string Format(const char* format, ...);
/// "1 vertex", "1,200 vertices".
std::string Counted(int64_t count, const char* one, const char* many);
VELDRA_PRINTF(1, 0) std::string FormatList(const char* format, va_list arguments);

/// ASCII letters only, so that the result does not depend on the locale; other bytes stay.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);

/// Without the white space (blank, \t, \n, \v, \f, \r) at both ends.
std::string_view Trim(std::string_view text);

/// The whole of TEXT as a number, "." as decimal point whatever the locale; nothing when anything else stands in it, or
/// when it does not fit. A leading "+" is taken. ParseInteger reads 0x... as hexadecimal.
std::optional<int32_t> ParseInteger(std::string_view text);
std::optional<double> ParseNumber(std::string_view text);

/// TEXT as valid UTF-8: unchanged when it is, else its bytes taken as characters of the game's code page, Windows-1252,
/// as its tools wrote names.
std::string ToUtf8(std::string_view text);
/// The UTF-8 text in the game's code page, a byte a character; nothing when it has a character that is not there.
std::optional<std::string> ToCodePage(std::string_view utf8);
/// One spelling for all that the game takes for one name: ToUtf8 in capitals, the letters with accents of its code page
/// among them.
std::string FoldName(std::string_view name);

/// FNV-1a, 64 bits: the same in every version of the program, which std::hash does not promise.
uint64_t HashText(std::string_view text);

// What stands in a file can hold anything. All that is shown of it, in a window or a terminal, goes through one of
// these: characters that a terminal obeys, that turn the direction of writing, or that nobody sees are written out.

/// A name, on one line: ToUtf8, with "\x1B" for such a character, "\u202E" beyond the first 256.
std::string DisplayName(std::string_view name);
/// The same for a text of several lines: its line feeds and tabs stay, and only its bytes that are no UTF-8 are taken
/// as characters of the game's code page.
std::string DisplayText(std::string_view text);
/// The same for JSON that is printed: characters become JSON's own escapes, so that it says what it said.
std::string DisplayJson(std::string json);
/// DisplayName has something to write out.
bool HasHiddenCharacters(std::string_view name);

}  // namespace veldra

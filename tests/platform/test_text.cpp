#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {
namespace {

TEST(Text, ParsesIntegers) {
  constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  const std::pair<const char*, int32_t> kCases[] = {{"0", 0},
                                                    {"-17", -17},
                                                    {"+4", 4},
                                                    {"007", 7},
                                                    {"2147483647", kMost},
                                                    {"0x1F", 31},
                                                    {"0Xff", 255},
                                                    {"-0x10", -16},
                                                    {"0x7FFFFFFF", kMost},
                                                    {"-2147483648", kLeast},
                                                    {"-0x80000000", kLeast}};
  for (const auto& [text, value] : kCases)
    EXPECT_EQ(ParseInteger(text), value) << text;
  for (const char* text : {"2147483648", "-2147483649", "4294967297", "0x80000000", "0xFFFFFFFF", "", "-", "+-1", "0x",
                           "0x-1", "1.0", " 1", "1 ", "12abc", "1e3"})
    EXPECT_FALSE(ParseInteger(text)) << text;
}

TEST(Text, ParsesNumbers) {
  const std::pair<const char*, double> kCases[] = {{"0", 0.0},      {"-1.5", -1.5}, {"+.25", 0.25},
                                                   {"1e3", 1000.0}, {"1.", 1.0},    {"5e-324", 5e-324}};
  for (const auto& [text, value] : kCases)
    EXPECT_EQ(ParseNumber(text), value) << text;
  for (const char* text : {"1e999", "nan", "inf", "-inf", "--1", "+-1", "1,5", " 1", "1 ", "", "0x10", "1.5f"})
    EXPECT_FALSE(ParseNumber(text)) << text;
  EXPECT_TRUE(std::signbit(ParseNumber("-0").value_or(1)));
}

TEST(Text, TrimsAndComparesAsciiOnly) {
  EXPECT_EQ(Trim(" \t\r\n\v\fa b\f "), "a b");
  EXPECT_EQ(Trim(" \n"), "");
  EXPECT_EQ(UpperCase("az\xC3\xA4{`"), "AZ\xC3\xA4{`");
  EXPECT_EQ(LowerCase("AZ[@"), "az[@");
  EXPECT_TRUE(EqualNoCase("Truck.BIN", "tRUCK.bin"));
  EXPECT_FALSE(EqualNoCase("Truck", "Truck1"));
  EXPECT_FALSE(EqualNoCase("[", "{"));
}

TEST(Text, BecomesUtf8) {
  const std::pair<const char*, const char*> kCases[] = {
      {"plain", "plain"},
      {"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x9A\x9A", "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x9A\x9A"},
      {"M\xFCller", "M\xC3\xBCller"},
      {"\x80\x9F\x81", "\xE2\x82\xAC\xC5\xB8\xC2\x81"},                  // the code page's own, one that it leaves open
      {"\xC3", "\xC3\x83"},                                              // cut short
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                                  // longer than needed
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},                  // half a surrogate pair
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC"},  // beyond the last character
  };
  for (const auto& [bytes, utf8] : kCases)
    EXPECT_EQ(ToUtf8(bytes), utf8) << utf8;
  for (int byte = 1; byte < 0x100; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(ToCodePage(ToUtf8(text)), text);
    EXPECT_EQ(FoldName(FoldName(text)), FoldName(text));
  }
  EXPECT_EQ(ToCodePage("\xF0\x9F\x9A\x9A"), std::nullopt);
  EXPECT_EQ(FoldName("\x9A\x9C\x9E\xFF\xF7z\xE9\x80"), FoldName("\x8A\x8C\x8E\x9F\xF7Z\xC9\x80"));
  EXPECT_NE(FoldName("\xD7"), FoldName("\xF7")) << "times and divided by are no letters";
}

TEST(Text, ShowsWhatNobodySees) {
  const std::pair<std::string, const char*> kCases[] = {
      {"plain \xC3\xA4", "plain \xC3\xA4"},
      {"a\x1B[2J\n\t\x7F", "a\\x1B[2J\\x0A\\x09\\x7F"},
      {"\x8F"
       "31m\x80\xE9",
       "\\x8F"
       "31m\xE2\x82\xAC\xC3\xA9"},  // a byte a letter
      {"\xC2\x9B"
       "31m\xC2\xA0",
       "\\x9B"
       "31m\xC2\xA0"},  // in UTF-8
      {"\xE2\x80\xAE"
       "WAR.A\xE2\x81\xA6",
       "\\u202EWAR.A\\u2066"},
      {"\xF3\xA0\x81\x81\xF0\x9F\x9A\x9A", "\\U0E0041\xF0\x9F\x9A\x9A"},
      {std::string("a\0b", 3), "a\\x00b"},
  };
  for (const auto& [text, shown] : kCases) {
    EXPECT_EQ(DisplayName(text), shown);
    EXPECT_EQ(HasHiddenCharacters(text), text.substr(0, 5) != "plain");
  }
  EXPECT_EQ(DisplayText("\xC3\xA4\n\t\xE9\x1B"), "\xC3\xA4\n\t\xC3\xA9\\x1B") << "bytes one by one";
  EXPECT_EQ(DisplayJson("[\"\x7F\xE2\x80\xAE\xF3\xA0\x81\x81\xC3\xA4\"]"),
            "[\"\\u007f\\u202e\\udb40\\udc41\xC3\xA4\"]");
}

TEST(Numbers, TruncateTowardsZeroWithinThirtyTwoBits) {
  constexpr int32_t kNone = std::numeric_limits<int32_t>::min();
  const struct {
    double value;
    int32_t truncated;
    bool fits;
  } kCases[] = {{1.9, 1, true},
                {-1.9, -1, true},
                {2147483647.9, 2147483647, true},
                {2147483648.0, kNone, false},
                {-2147483648.9, kNone, true},
                {-2147483649.0, kNone, false},
                {1e300, kNone, false},
                {std::numeric_limits<double>::quiet_NaN(), kNone, false},
                {-std::numeric_limits<double>::infinity(), kNone, false}};
  for (const auto& each : kCases) {
    EXPECT_EQ(Truncate(each.value), each.truncated) << each.value;
    EXPECT_EQ(TryTruncate(each.value).has_value(), each.fits) << each.value;
  }
}

}  // namespace
}  // namespace veldra

#include "platform/numberrule.h"

#include <gtest/gtest.h>

namespace veldra {

TEST(NumberRule, SaysWhatIsWrongWithAText) {
  const SNumberRule any;
  const SNumberRule whole = SNumberRule::Integer();
  const SNumberRule angle{.smallest = -360, .largest = 360.5};
  const struct {
    const char* text;
    SNumberRule rule;
    const char* fault;
    double value;
  } rows[] = {{" 1.5\t", any, "", 1.5},
              {"-1e3", whole, "", -1000},
              {"+7", whole, "", 7},
              {"4.0", whole, "", 4},
              {"-2147483648", whole, "", -2147483648.0},
              {"360.5", angle, "", 360.5},
              {"", any, "Enter a number.", 0},
              {" \n", whole, "Enter a number.", 0},
              {"1x", any, "Not a number.", 0},
              {"1 000", any, "Not a number.", 0},
              {"nan", any, "Not a number.", 0},
              {"0x10", whole, "Not a number.", 0},
              {"1,5", any, "Not a number: the decimal point is \".\".", 0},
              {"0.5", whole, "Not a whole number.", 0},
              {"2147483648", whole, "Must be between -2147483648 and 2147483647.", 0},
              {"-361", angle, "Must be between -360 and 360.5.", 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(NumberFault(row.text, row.rule), row.fault) << row.text;
    const auto value = FieldNumber(row.text, row.rule);
    EXPECT_EQ(value.has_value(), *row.fault == '\0') << row.text;
    EXPECT_EQ(value.value_or(0), row.value) << row.text;
  }
}

TEST(NumberRule, TextsOfNumbersReadBackExactly) {
  const std::pair<double, const char*> rows[] = {{0, "0"},
                                                 {-0.125, "-0.125"},
                                                 {1e6, "1000000"},
                                                 {2147483647, "2147483647"},
                                                 {0.1, "0.1"},
                                                 {1e-7, "1e-07"},
                                                 {1.0 / 65536, "0.0000152587890625"},
                                                 {1e15, "1e+15"}};
  for (const auto& [value, text] : rows) {
    EXPECT_EQ(NumberText(value), text);
    EXPECT_EQ(FieldNumber(text, {.smallest = -1e300, .largest = 1e300}), value);
  }
}

}  // namespace veldra

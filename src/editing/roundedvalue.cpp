#include "editing/roundedvalue.h"

#include <cmath>

namespace veldra {

namespace {

double Rounded(double value, int decimals) {
  const double unit = std::pow(10.0, decimals);
  return std::round(value * unit) / unit + 0.0;  // not -0
}

}  // namespace

void ShowRounded(CNumberField& field, double value, int decimals) {
  field.SetValue(Rounded(value, decimals));
}

double RoundedValue(const CNumberField& field, double shown, int decimals) {
  const double value = field.Value().value_or(shown);
  return value == Rounded(shown, decimals) ? shown : value;
}

}  // namespace veldra

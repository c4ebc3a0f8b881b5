#pragma once

#include "ui/numberfield.h"

/// Numbers with more digits than a field has room for.
namespace veldra {

/// Shows VALUE with at most DECIMALS digits behind the point.
void ShowRounded(CNumberField& field, double value, int decimals);
/// What FIELD, which is valid, says: SHOWN itself, in full, while what ShowRounded made of it stands there.
double RoundedValue(const CNumberField& field, double shown, int decimals);

}  // namespace veldra

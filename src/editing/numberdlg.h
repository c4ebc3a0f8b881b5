#pragma once

#include "ui/fielddialog.h"

namespace veldra {

/// Asks for one whole number.
class CNumberDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// LABEL with "&"; NOTE says more, and may be empty.
  CNumberDialog(const char* name, const QString& title, const QString& label, const QString& note,
                const SNumberRule& rule, int32_t value, QWidget* parent);
  /// Once accepted.
  int32_t Value() const { return static_cast<int32_t>(number_->Value().value_or(0.0)); }

 private:
  CNumberField* number_;
};

}  // namespace veldra

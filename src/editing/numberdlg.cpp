#include "editing/numberdlg.h"

namespace veldra {

CNumberDialog::CNumberDialog(const char* name, const QString& title, const QString& label, const QString& note,
                             const SNumberRule& rule, int32_t value, QWidget* parent)
    : CFieldDialog(name, title, parent) {
  auto* form = new QFormLayout;
  number_ = AddNumber(form, label, "number", rule, value);
  Content()->addLayout(form);
  if (!note.isEmpty()) {
    auto* text = new QLabel(note);
    text->setWordWrap(true);
    Content()->addWidget(text);
  }
  StartWith(number_);
  Refresh();
}

}  // namespace veldra

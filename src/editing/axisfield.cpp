#include "editing/axisfield.h"

#include <QHBoxLayout>
#include <QRadioButton>

namespace veldra {

CAxisField::CAxisField(const QString& title, EAxis axis, QWidget* parent)
    : QGroupBox(title, parent), axes_(new QButtonGroup(this)) {
  auto* line = new QHBoxLayout(this);
  const std::pair<EAxis, const char*> rows[] = {{EAxis::kX, "&X"}, {EAxis::kY, "&Y"}, {EAxis::kZ, "&Z"}};
  for (const auto& [each, label] : rows) {
    auto* button = new QRadioButton(label);
    button->setObjectName(QString(label).remove('&').toLower());
    button->setChecked(each == axis);
    axes_->addButton(button, static_cast<int>(each));
    line->addWidget(button);
  }
  line->addStretch();
  connect(axes_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    if (is_on) emit Changed();
  });
}

}  // namespace veldra

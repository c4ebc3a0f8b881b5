#include "settings/settingcontrol.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QVBoxLayout>

#include "platform/text.h"
#include "ui/colorwell.h"
#include "ui/pathfield.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

using Changed = std::function<void()>;

/// CONTROL under what it is for.
QWidget* UnderMeaning(const SSettingRow& row, QWidget* control, bool fills_line) {
  auto* box = new QWidget;
  auto* label = new QLabel(ToQString(row.meaning));
  label->setWordWrap(true);
  label->setBuddy(control);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(label);
  layout->addWidget(control, 0, fills_line ? Qt::Alignment() : Qt::AlignLeft);
  return box;
}

void FillSwitch(SSettingControl& control, const Changed& changed) {
  auto* box = new QCheckBox(ToQString(control.row->meaning).replace('&', "&&"));
  box->setObjectName(ToQString(control.row->key));
  QObject::connect(box, &QCheckBox::toggled, box, changed);
  control.box = box;
  control.text = [box] { return box->isChecked() ? "1" : "0"; };
  control.set_text = [box](const std::string& text) { box->setChecked(ParseInteger(text).value_or(0) != 0); };
}

void FillChoice(SSettingControl& control, const Changed& changed) {
  auto* box = new QComboBox;
  box->setObjectName(ToQString(control.row->key));
  for (const SSettingChoice& choice : control.row->choices)
    box->addItem(ToQString(choice.label), choice.value);
  QObject::connect(box, &QComboBox::currentIndexChanged, box, changed);
  control.box = UnderMeaning(*control.row, box, false);
  control.text = [box] { return std::to_string(box->currentData().toInt()); };
  control.set_text = [box](const std::string& text) {
    box->setCurrentIndex(box->findData(ParseInteger(text).value_or(0)));
  };
}

void FillNumber(SSettingControl& control, bool is_integer, const Changed& changed) {
  const SNumberRule rule{.integer = is_integer, .smallest = control.row->smallest, .largest = control.row->largest};
  auto* field = new CNumberField(rule);
  field->setObjectName(ToQString(control.row->key));
  QObject::connect(field, &CNumberField::TextChanged, field, changed);
  control.box = UnderMeaning(*control.row, field, true);
  control.number = field;
  // Two texts of one number are one value.
  control.text = [field] { return field->IsValid() ? NumberText(*field->Value()) : std::string(); };
  control.set_text = [field](const std::string& text) { field->SetValue(ParseNumber(text).value_or(0.0)); };
}

void FillColor(SSettingControl& control, const Changed& changed) {
  auto* well = new CColorWell;
  well->setObjectName(ToQString(control.row->key));
  QObject::connect(well, &CColorWell::ColorChanged, well, changed);
  control.box = UnderMeaning(*control.row, well, false);
  control.text = [well] { return well->Color().name().toUpper().toStdString(); };
  control.set_text = [well](const std::string& text) { well->SetColor(QColor(ToQString(text))); };
}

void FillPath(SSettingControl& control, const Changed& changed) {
  const bool is_file = !control.row->key.ends_with("DIR");
  auto* field = new CPathField(is_file ? CPathField::EKind::kFile : CPathField::EKind::kFolder);
  field->setObjectName(ToQString(control.row->key));
  if (control.row->is_command) field->RemoveNote();
  const QString title = control.row->is_command ? QObject::tr("Program") : ToQString(control.row->meaning);
  std::vector<SFileFilter> filters = {{"All Files *.*", "*.*"}};
  if (!control.row->is_command) filters.insert(filters.begin(), {"Adobe Color Table *.act", "*.act"});
  field->SetPrompt(title, filters);
  QObject::connect(field, &CPathField::PathChanged, field, changed);
  control.box = UnderMeaning(*control.row, field, true);
  control.text = [field] { return field->Path(); };
  control.set_text = [field](const std::string& text) { field->SetPath(text); };
}

}  // namespace

SSettingControl MakeSettingControl(const SSettingRow& row, const std::function<void()>& changed) {
  SSettingControl control{.row = &row};
  if (row.is_switch) {
    FillSwitch(control, changed);
  } else if (!row.choices.empty()) {
    FillChoice(control, changed);
  } else if (std::holds_alternative<std::string& (*)(CSettings&)>(row.member)) {
    FillPath(control, changed);
  } else if (std::holds_alternative<SColor& (*)(CSettings&)>(row.member)) {
    FillColor(control, changed);
  } else {
    FillNumber(control, std::holds_alternative<int32_t& (*)(CSettings&)>(row.member), changed);
  }
  control.box->setToolTip(ToQString(Format("%s in the settings file", row.key.c_str())));
  control.set_text(row.default_text);
  return control;
}

}  // namespace veldra

#include "truckeditor/trucknamespage.h"

#include <QVBoxLayout>

#include "archive/filetypes.h"
#include "platform/text.h"

namespace veldra {

std::string TireBaseOfFile(const std::string& file_name) {
  std::string upper = UpperCase(file_name);
  for (const std::string end : kTireModelEnds)
    if (upper.size() > end.size() && upper.ends_with(end)) return upper.substr(0, upper.size() - end.size());
  return upper;
}

CTruckNamesPage::CTruckNamesPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {
  auto* form = new QFormLayout;
  Add(*form, tr("&Name of the truck:"), "truckName", kTypeOther, &CTruck::name);
  Add(*form, tr("&Body model:"), "bodyModel", kTypeBin, &CTruck::model_base_name);
  CGameNameField* const tires = Add(*form, tr("&Tire models:"), "tireModels", kTypeBin, &CTruck::tire_base_name);
  tires->SetProbes(TireModels);
  tires->SetNameOfFile(TireBaseOfFile);
  tires->setToolTip(
      tr("A base name stands for six models, its own name followed by 08L, 08R, 10L, 10R, 16L and 16R;\n"
         "a name that ends in .BIN for that one model."));
  Add(*form, tr("&Axle model:"), "axleModel", kTypeBin, &CTruck::axle_model_name);
  Add(*form, tr("&Shock texture:"), "shockTexture", kTypeRaw, &CTruck::shock_texture);
  Add(*form, tr("Ba&r texture:"), "barTexture", kTypeRaw, &CTruck::bar_texture);
  auto* cluster = new QLabel(QString("%1 (%2)").arg(tr("the only one there is"), kInstrumentClusterName));
  form->addRow(tr("Instrument cluster:"), cluster);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
}

CGameNameField* CTruckNamesPage::Add(QFormLayout& form, const QString& label, const char* name, int type,
                                     std::string CTruck::*field) {
  auto* line = new CGameNameField(context_, name, type, [field](CTruck& truck) { return &(truck.*field); });
  form.addRow(label, line);
  return line;
}

}  // namespace veldra

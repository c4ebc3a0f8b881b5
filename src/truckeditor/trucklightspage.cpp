#include "truckeditor/trucklightspage.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "archive/filetypes.h"
#include "truck/truckreport.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kListWidth = 170;
constexpr int kSwatchSide = 28;

QString LightTitle(int index, const TruckLight& light) {
  return QString("%1  %2").arg(index).arg(ToQString(LightTypeName(light.type)));
}

}  // namespace

CTruckLightsPage::CTruckLightsPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), context_(context), document_(context.document), list_(new QListWidget) {
  list_->setObjectName("lights");
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(MakeListSide());
  layout->addWidget(MakeFields(), 1);
  connect(list_, &QListWidget::currentRowChanged, this, &CTruckLightsPage::ShowSelected);
  connect(&document_, &CTruckDocument::Changed, this, &CTruckLightsPage::Refresh);
  Refresh();
}

QWidget* CTruckLightsPage::MakeListSide() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  side->setFixedWidth(kListWidth);
  layout->addWidget(list_, 1);
  add_ = MakeButton(tr("&Add"), "addLight", &CTruckLightsPage::Add);
  delete_ = MakeButton(tr("&Delete"), "deleteLight", &CTruckLightsPage::Delete);
  up_ = MakeButton(tr("Move &up"), "lightUp", &CTruckLightsPage::MoveUp);
  down_ = MakeButton(tr("Move do&wn"), "lightDown", &CTruckLightsPage::MoveDown);
  for (const auto& [left, right] : {std::pair(add_, delete_), std::pair(up_, down_)}) {
    auto* row = new QHBoxLayout;
    row->addWidget(left);
    row->addWidget(right);
    layout->addLayout(row);
  }
  return side;
}

QPushButton* CTruckLightsPage::MakeButton(const QString& text, const char* name, void (CTruckLightsPage::*action)()) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

TruckLight* CTruckLightsPage::Light(CTruck& truck) const {
  const int selected = Selected();
  return selected >= 0 && selected < truck.UsedLights() ? &truck.lights[static_cast<size_t>(selected)] : nullptr;
}

QWidget* CTruckLightsPage::MakeFields() {
  auto* side = new QWidget;
  auto* form = new QFormLayout(side);
  type_ = new QComboBox;
  type_->setObjectName("lightType");
  for (const char* name : kLightTypeNames)
    type_->addItem(name);
  connect(type_, &QComboBox::activated, this, [this](int type) {
    // Behind the five names may stand the number that a file brought.
    if (type < static_cast<int>(kLightTypeNames.size()))
      document_.Change("", [&](CTruck& truck) {
        if (TruckLight* const light = Light(truck)) light->type = type;
      });
  });
  form->addRow(tr("&Type:"), type_);
  type_note_ = new CFaultLabel;
  type_note_->setObjectName("lightTypeNote");
  form->addRow(type_note_);
  AddNumberRows(*form);
  form->addRow(tr("&Cone texture:"), MakeConeTexture());
  auto* source = new CGameNameField(context_, "sourceBitmap", kTypeRaw, [this](CTruck& truck) {
    TruckLight* const light = Light(truck);
    return light != nullptr ? &light->source_bitmap : nullptr;
  });
  form->addRow(tr("&Source bitmap:"), source);
  names_.push_back(source);
  return side;
}

NumberPlace CTruckLightsPage::Number(double TruckLight::*member) {
  return [this, member](CTruck& truck) {
    TruckLight* const light = Light(truck);
    return light != nullptr ? &(light->*member) : nullptr;
  };
}

void CTruckLightsPage::AddNumberRows(QFormLayout& form) {
  const auto add_row = [&](const QString& label, const char* name) {
    numbers_.push_back(new CNumbersField(document_, name));
    form.addRow(label, numbers_.back());
    return numbers_.back();
  };
  CNumbersField* const position = add_row(tr("Position (feet):"), "lightPosition");
  for (size_t axis = 0; axis < 3; ++axis) {
    position->Add(QString("xyz").mid(static_cast<int>(axis), 1), [this, axis](CTruck& truck) {
      TruckLight* const light = Light(truck);
      return light != nullptr ? &light->position[axis] : nullptr;
    });
  }
  add_row(tr("Bitmap radius (feet):"), "bitmapRadius")->Add("", Number(&TruckLight::bitmap_radius));
  CNumbersField* const heading = add_row(tr("Looks (radians):"), "lightHeading");
  heading->Add(tr("heading"), Number(&TruckLight::heading), tr("0 is straight ahead, 3.1416 to the rear"));
  heading->Add(tr("pitch"), Number(&TruckLight::pitch), tr("Above 0 is upwards"));
  add_row(tr("Turns (radians a second):"), "headingSpeed")->Add("", Number(&TruckLight::heading_speed));
  CNumbersField* const cone = add_row(tr("Cone (feet):"), "cone");
  cone->Add(tr("length"), Number(&TruckLight::cone_length));
  cone->Add(tr("base"), Number(&TruckLight::cone_base_radius), tr("Radius at the light"));
  cone->Add(tr("rim"), Number(&TruckLight::cone_rim_radius), tr("Radius at the far end"));
  CNumbersField* const blink = add_row(tr("Blinks (milliseconds):"), "blink");
  const auto integer = [this](int32_t TruckLight::*member) {
    return [this, member](CTruck& truck) {
      TruckLight* const light = Light(truck);
      return light != nullptr ? &(light->*member) : nullptr;
    };
  };
  blink->AddInteger(tr("on"), integer(&TruckLight::ms_on), tr("Both 0 for a light that does not blink"));
  blink->AddInteger(tr("off"), integer(&TruckLight::ms_off), tr("Both 0 for a light that does not blink"));
}

QWidget* CTruckLightsPage::MakeConeTexture() {
  auto* field = new CGameNameField(context_, "coneTexture", kTypeRaw, [this](CTruck& truck) {
    TruckLight* const light = Light(truck);
    return light != nullptr ? &light->cone_texture : nullptr;
  });
  field->SetFurtherRule([](const std::string& name) {
    return name.find(',') != std::string::npos ? tr("A truck file cannot hold a name with a comma here.") : QString();
  });
  names_.push_back(field);
  swatch_ = new QLabel;
  swatch_->setObjectName("coneColor");
  swatch_->setFixedSize(kSwatchSide, kSwatchSide);
  swatch_->setFrameShape(QFrame::Box);
  swatch_->setToolTip(tr("The cone's color: the mean of its texture"));
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(field, 1);
  layout->addWidget(swatch_, 0, Qt::AlignTop);
  return row;
}

void CTruckLightsPage::Refresh() {
  const CTruck& truck = document_.Truck();
  const int count = truck.UsedLights();
  const int selected = std::min(std::max(Selected(), 0), count - 1);
  {
    const QSignalBlocker blocker(list_);
    while (list_->count() > count)
      delete list_->takeItem(list_->count() - 1);
    for (int i = 0; i < count; ++i) {
      if (i == list_->count()) list_->addItem("");
      list_->item(i)->setText(LightTitle(i, truck.lights[static_cast<size_t>(i)]));
    }
    list_->setCurrentRow(selected);
  }
  ShowSelected();
}

void CTruckLightsPage::ShowSelected() {
  const int count = document_.Truck().UsedLights();
  const int selected = Selected();
  add_->setEnabled(count < kTruckLights);
  delete_->setEnabled(selected >= 0);
  up_->setEnabled(selected > 0);
  down_->setEnabled(selected >= 0 && selected + 1 < count);
  for (CNumbersField* field : numbers_)
    field->Refresh();
  for (CGameNameField* field : names_)
    field->Refresh();
  ShowType();
  ShowSwatch();
  emit SelectedChanged(selected);
}

void CTruckLightsPage::ShowType() {
  const TruckLight* const light = document_.Look([this](CTruck& truck) { return Light(truck); });
  const int named = static_cast<int>(kLightTypeNames.size());
  while (type_->count() > named)
    type_->removeItem(named);
  type_->setEnabled(light != nullptr);
  const bool is_named = light != nullptr && light->type >= 0 && light->type < named;
  if (light != nullptr && !is_named) type_->addItem(ToQString(LightTypeName(light->type)));
  int row = -1;
  if (light != nullptr) row = is_named ? light->type : named;
  type_->setCurrentIndex(row);
  const bool changes = light != nullptr && AcceptedLightType(light->type) != light->type;
  type_note_->setText(changes ? tr("When the file is read again, this light is a headlight.") : QString());
  type_note_->setVisible(changes);
}

void CTruckLightsPage::ShowSwatch() {
  const TruckLight* const light = document_.Look([this](CTruck& truck) { return Light(truck); });
  const auto color = light != nullptr && context_.textures != nullptr
                         ? context_.textures->MeanColor(light->cone_texture)
                         : std::nullopt;
  QPixmap pixmap(swatch_->size());
  pixmap.fill(color ? QColor(color->red, color->green, color->blue) : Qt::transparent);
  swatch_->setPixmap(pixmap);
  swatch_->setProperty("color", color ? QColor(color->red, color->green, color->blue) : QColor());
}

void CTruckLightsPage::Add() {
  int added = -1;
  document_.Change("", [&](CTruck& truck) { added = truck.AddLight(); });
  if (added >= 0) Select(added);
}

void CTruckLightsPage::Delete() {
  const int selected = Selected();
  document_.ChangeMuch("Delete light", [&](CTruck& truck) { truck.DeleteLight(selected); });
}

void CTruckLightsPage::MoveUp() {
  Move(true);
}

void CTruckLightsPage::MoveDown() {
  Move(false);
}

void CTruckLightsPage::Move(bool up) {
  const int selected = Selected();
  bool is_moved = false;
  document_.Change("",
                   [&](CTruck& truck) { is_moved = up ? truck.MoveLightUp(selected) : truck.MoveLightDown(selected); });
  if (is_moved) Select(up ? selected - 1 : selected + 1);
}

}  // namespace veldra

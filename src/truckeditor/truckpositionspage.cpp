#include "truckeditor/truckpositionspage.h"

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace veldra {

namespace {

QLabel* MakeHint(const QString& text) {
  auto* hint = new QLabel(text);
  hint->setWordWrap(true);
  return hint;
}

void AddRow(QFormLayout& form, CTruckDocument& document, const STruckPointId& id) {
  form.addRow(QString::fromStdString(TruckPointName(id)) + ":", MakePointField(document, id));
}

}  // namespace

CNumbersField* MakePointField(CTruckDocument& document, const STruckPointId& id) {
  const QString name = QString::fromStdString(TruckPointName(id)).toLower().remove(' ');
  auto* field = new CNumbersField(document, name);
  for (size_t axis = 0; axis < 3; ++axis) {
    field->Add(QString("xyz").mid(static_cast<int>(axis), 1), [id, axis](CTruck& truck) -> double* {
      TruckPoint* const point = FindTruckPoint(truck, id);
      return point != nullptr ? &(*point)[axis] : nullptr;
    });
  }
  return field;
}

CTruckPositionsPage::CTruckPositionsPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), document_(context.document) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeHint(tr("In feet from the middle of the body: x to the right, y up, z to the front.")));
  auto* parts = new QFormLayout;
  AddRow(*parts, document_, {ETruckPoint::kAxleBar});
  AddRow(*parts, document_, {ETruckPoint::kDriveShaft});
  layout->addLayout(parts);
  auto* box = new QGroupBox(tr("Tires, where they hang when the truck stands still"));
  auto* tires = new QFormLayout(box);
  for (int tire = 0; tire < kTireCount; ++tire)
    AddRow(*tires, document_, {ETruckPoint::kTire, tire});
  auto* buttons = new QHBoxLayout;
  const auto add_button = [&](const QString& text, const char* name, ETire front, ETire rear) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(tr("Gives the tires of the other side the same place with x negated."));
    connect(button, &QPushButton::clicked, this, [this, front, rear] { MirrorTires(front, rear); });
    buttons->addWidget(button);
  };
  add_button(tr("Mirror right to left"), "mirrorRight", kFrontRightTire, kRearRightTire);
  add_button(tr("Mirror left to right"), "mirrorLeft", kFrontLeftTire, kRearLeftTire);
  buttons->addStretch();
  tires->addRow(buttons);
  layout->addWidget(box);
  layout->addStretch();
}

void CTruckPositionsPage::MirrorTires(ETire from_front, ETire from_rear) {
  document_.Change("", [=](CTruck& truck) {
    for (const ETire from : {from_front, from_rear}) {
      // Right and left tires alternate.
      TruckPoint& to = truck.tires[static_cast<size_t>(from ^ 1)];
      to = truck.tires[from];
      to[0] = 0.0 - to[0];
    }
  });
}

CTruckScrapePage::CTruckScrapePage(const STruckPageContext& context, QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(
      MakeHint(tr("Where the body scrapes what it touches. In feet from the middle of the body: x to the "
                  "right, y up, z to the front.")));
  auto* form = new QFormLayout;
  for (int point = 0; point < kScrapePoints; ++point)
    AddRow(*form, context.document, {ETruckPoint::kScrapePoint, point});
  layout->addLayout(form);
  layout->addStretch();
}

}  // namespace veldra

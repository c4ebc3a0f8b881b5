#include "truckeditor/truckpositionspage.h"
#include "ui/qstrings.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace veldra {

namespace {

QLabel* MakeHint(const QString& text) {
  auto* hint = new QLabel(text);
  hint->setWordWrap(true);
  return hint;
}

/// So that the numbers of all boxes stand below one another.
int WidestName() {
  int widest = 0;
  for (const STruckPointId& id :
       {STruckPointId{ETruckPoint::kAxleBar}, STruckPointId{ETruckPoint::kDriveShaft},
        STruckPointId{ETruckPoint::kTire, kFrontRightTire}, STruckPointId{ETruckPoint::kTire, kFrontLeftTire}})
    widest = std::max(widest, QLabel(ToQString(TruckPointName(id)) + ":").sizeHint().width());
  return widest;
}

void AddRow(QFormLayout& form, CTruckDocument& document, const STruckPointId& id) {
  auto* label = new QLabel(ToQString(TruckPointName(id)) + ":");
  label->setMinimumWidth(WidestName());
  form.addRow(label, MakePointField(document, id));
}

}  // namespace

CNumbersField* MakePointField(CTruckDocument& document, const STruckPointId& id) {
  const QString name = ToQString(TruckPointName(id)).toLower().remove(' ');
  auto* field = new CNumbersField(document, name);
  for (size_t axis = 0; axis < 3; ++axis) {
    field->Add(QString("xyz").mid(static_cast<int>(axis), 1), [id, axis](CTruck& truck) -> double* {
      TruckPoint* const point = FindTruckPoint(truck, id);
      return point != nullptr ? &(*point)[axis] : nullptr;
    });
  }
  field->AddUnit("ft");
  return field;
}

CTruckPositionsPage::CTruckPositionsPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), document_(context.document) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeHint(tr("From the middle of the body: x to the right, y up, z to the front.")));
  auto* parts_box = new QGroupBox(tr("Parts"));
  auto* parts = new QFormLayout(parts_box);
  AddRow(*parts, document_, {ETruckPoint::kAxleBar});
  AddRow(*parts, document_, {ETruckPoint::kDriveShaft});
  layout->addWidget(parts_box);
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
  add_button(tr("Mirror Right to Left"), "mirrorRight", kFrontRightTire, kRearRightTire);
  add_button(tr("Mirror Left to Right"), "mirrorLeft", kFrontLeftTire, kRearLeftTire);
  buttons->addStretch();
  tires->addRow(buttons);
  layout->addWidget(box);
  layout->addStretch();
}

void CTruckPositionsPage::MirrorTires(ETire from_front, ETire from_rear) {
  document_.ChangeMuch("Mirror tires", [=](CTruck& truck) {
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
      MakeHint(tr("Where the body scrapes what it touches. From the middle of the body: x to the "
                  "right, y up, z to the front.")));
  auto* form = new QFormLayout;
  for (int point = 0; point < kScrapePoints; ++point)
    AddRow(*form, context.document, {ETruckPoint::kScrapePoint, point});
  layout->addLayout(form);
  layout->addStretch();
}

}  // namespace veldra

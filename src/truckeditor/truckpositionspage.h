#pragma once

#include <QFormLayout>
#include <QWidget>

#include "truck/truckpoints.h"
#include "truckeditor/gamenamefield.h"
#include "truckeditor/numbersfield.h"

namespace veldra {

/// Three lines for one of the truck's points.
CNumbersField* MakePointField(CTruckDocument& document, const STruckPointId& id);

/// Axle bar, drive shaft and tires.
class CTruckPositionsPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckPositionsPage(const STruckPageContext& context, QWidget* parent = nullptr);

 private:
  void MirrorTires(ETire from_front, ETire from_rear);

  CTruckDocument& document_;
};

/// The twelve scrape points.
class CTruckScrapePage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckScrapePage(const STruckPageContext& context, QWidget* parent = nullptr);
};

}  // namespace veldra

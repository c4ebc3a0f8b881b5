#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QStackedWidget>
#include <QWidget>

#include "truckeditor/gamenamefield.h"
#include "truckeditor/numbersfield.h"
#include "truckeditor/truckview.h"
#include "ui/numberfield.h"

namespace veldra {

/// The 3D view of the truck, the coordinates of the point that is selected in it, and what it shows.
class CTruck3dPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruck3dPage(const STruckPageContext& context, QWidget* parent = nullptr);
  CTruckView& View() const { return *view_; }

 private:
  QWidget* MakeSide();
  QWidget* MakeOptions();
  void AddPlaceNumbers(CFaultLabel* fault);
  QCheckBox* AddOption(const QString& text, const char* name, bool on, std::function<void(bool)> set);
  void ListPoints();
  void ShowSelected();
  std::optional<STruckPointId> PointInList() const;

  const STruckPageContext& context_;
  CTruckView* view_;
  QComboBox* points_;
  CNumbersField* place_;
  CNumberField* units_;
};

}  // namespace veldra

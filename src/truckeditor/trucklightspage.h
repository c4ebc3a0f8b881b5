#pragma once

#include <QComboBox>
#include <QFormLayout>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <vector>

#include "truckeditor/gamenamefield.h"
#include "truckeditor/numbersfield.h"

namespace veldra {

/// The list of lights, and all fields of the one that is selected.
class CTruckLightsPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckLightsPage(const STruckPageContext& context, QWidget* parent = nullptr);

  /// -1 for none.
  int Selected() const { return list_->currentRow(); }
  void Select(int light) { list_->setCurrentRow(light); }

 signals:
  void SelectedChanged(int light);

 private:
  QWidget* MakeListSide();
  QPushButton* MakeButton(const QString& text, const char* name, void (CTruckLightsPage::*action)());
  QWidget* MakeFields();
  QWidget* MakeConeTexture();
  void AddNumberRows(QFormLayout& form);
  NumberPlace Number(double TruckLight::*member);
  void Refresh();
  void ShowSelected();
  void ShowType();
  void ShowSwatch();
  TruckLight* Light(CTruck& truck) const;
  void Add();
  void Delete();
  void MoveUp();
  void MoveDown();
  void Move(bool up);

  const STruckPageContext& context_;
  CTruckDocument& document_;
  QListWidget* list_;
  QComboBox* type_ = nullptr;
  CFaultLabel* type_note_ = nullptr;
  QLabel* swatch_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* delete_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
  std::vector<CNumbersField*> numbers_;
  std::vector<CGameNameField*> names_;
};

}  // namespace veldra

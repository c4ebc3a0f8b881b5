#pragma once

#include <QBasicTimer>
#include <QLabel>
#include <QTreeWidget>
#include <QWidget>
#include <optional>
#include <vector>

#include "truckeditor/gamenamefield.h"
#include "truckscene/truckcheck.h"

namespace veldra {

/// One of the editor's fields that hold a name.
struct STruckNameField {
  QString name;    ///< the object name of its line
  int light = -1;  ///< which one the field is of, on the page of the lights
};

/// The field whose name leads to the file NAMED: the model, texture or sound itself, a size of the tires, the colour
/// table of a texture. Nothing for the truck's own file.
std::optional<STruckNameField> FieldOfFile(const CTruck& truck, const std::string& named);

/// What is wrong with the truck, looked up again soon after each change while the page is shown.
class CTruckCheckPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckCheckPage(const STruckPageContext& context, QWidget* parent = nullptr);
  /// Files have come or gone.
  void Forget();

 signals:
  /// The user wants to see the field that a finding is about.
  void FieldWanted(const STruckNameField& field);
  /// The user wants to see where in the model in FILE it is.
  void FindingWanted(const SPodSource& file, const SFinding& finding);

 protected:
  void showEvent(QShowEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void CheckSoon();
  void Check();
  void AddFindingsOnModels(const std::vector<STruckFinding>& findings);
  /// Below GROUP, or where that is null in the list itself.
  QTreeWidgetItem* AddRow(QTreeWidgetItem* group, const QString& kind, const std::string& about,
                          const std::string& text, const std::string& named);
  void Jump(const QTreeWidgetItem* item);

  const STruckPageContext& context_;
  std::optional<CTruckCheck> check_;
  std::vector<STruckFinding> in_models_;  ///< what rows lead to the place of
  QLabel* summary_;
  QTreeWidget* list_;
  QBasicTimer timer_;
  bool is_due_ = true;
};

}  // namespace veldra

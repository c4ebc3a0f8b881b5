#pragma once

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QWizardPage>
#include <map>
#include <vector>

#include "truckeditor/newtruckwizard.h"
#include "ui/faultlabel.h"
#include "ui/pathfield.h"

namespace veldra {

/// The steps of a new truck.
class CNewTruckPage : public QWizardPage {
  Q_OBJECT

 public:
  CNewTruckPage(CNewTruckWizard& wizard, const QString& title, const QString& hint);
  /// Turns VIEW to what the step is about.
  virtual void Show(CTruckView& view) const;

 protected:
  CNewTruckWizard& Wizard() const { return wizard_; }
  CTruckDocument& Draft() const { return wizard_.Context().document; }
  QVBoxLayout* Content() const { return content_; }
  CGameNameField* AddName(QFormLayout& form, const QString& label, const char* name, int type,
                          std::string CTruck::*field);

 private:
  CNewTruckWizard& wizard_;
  QVBoxLayout* content_;
};

/// Which truck it begins as.
class CTruckStartPage : public CNewTruckPage {
  Q_OBJECT

 public:
  CTruckStartPage(CNewTruckWizard& wizard, std::vector<STruckTemplate> trucks, bool has_sample);
  bool isComplete() const override { return is_chosen_; }

 private:
  void Browse();
  void Choose();

  std::vector<STruckTemplate> trucks_;
  QListWidget* list_;
  CFaultLabel* fault_;
  bool is_chosen_ = true;
};

/// Its name, and that of its file.
class CTruckNamePage : public CNewTruckPage {
  Q_OBJECT

 public:
  explicit CTruckNamePage(CNewTruckWizard& wizard);
  void initializePage() override;
  bool isComplete() const override;

 private:
  QString Fault() const;

  QLineEdit* file_;
  CPathField* folder_;
  CFaultLabel* fault_;
};

class CTruckBodyPage : public CNewTruckPage {
  Q_OBJECT

 public:
  explicit CTruckBodyPage(CNewTruckWizard& wizard);
};

/// The tires and where they are: the left ones stand as the right ones do.
class CTruckWheelsPage : public CNewTruckPage {
  Q_OBJECT

 public:
  explicit CTruckWheelsPage(CNewTruckWizard& wizard);
  void Show(CTruckView& view) const override;

 private:
  void Mirror();
};

/// Which lights it has.
class CTruckLampsPage : public CNewTruckPage {
  Q_OBJECT

 public:
  explicit CTruckLampsPage(CNewTruckWizard& wizard);
  void initializePage() override;
  void Show(CTruckView& view) const override;

 private:
  void Switch(int32_t type, bool on);
  void Refresh();

  std::map<int32_t, QCheckBox*> boxes_;                   ///< by type of light
  std::map<int32_t, std::vector<TruckLight>> taken_out_;  ///< that come back when their box is checked again
  QLabel* count_;
};

/// What is missing, and what becomes of it all.
class CTruckEndPage : public CNewTruckPage {
  Q_OBJECT

 public:
  explicit CTruckEndPage(CNewTruckWizard& wizard);
  void initializePage() override;

 private:
  QLabel* where_;
  CFaultLabel* missing_;
  QCheckBox* save_;
  QCheckBox* copy_;
};

}  // namespace veldra

#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "app/setup.h"
#include "ui/fielddialog.h"
#include "ui/pathfield.h"

namespace veldra {

/// Where the game is, or that there is none: asked at the first start, and again under Tools.
class CSetUpDialog : public CFieldDialog {
  Q_OBJECT

 public:
  enum class EOccasion { kFirstStart, kAgain };
  CSetUpDialog(EOccasion occasion, const SSetUp& offer, QWidget* parent = nullptr);

  SSetUp Choice() const;

 private:
  void AddGame(const SSetUp& offer);
  void AddSample(const SSetUp& offer);
  void LookIntoFolder();
  QString Fault() override;

  SGameFolder game_;
  QRadioButton* with_game_;
  CPathField* folder_;
  QLabel* found_;
  QCheckBox* stock_;
  QRadioButton* without_game_;
  QCheckBox* sample_;
  CPathField* sample_folder_;
};

}  // namespace veldra

#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>

#include "editing/facecommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks which type and magic number many faces are to have: the selected ones, those of a face group, or all.
class CGroupFacesDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CGroupFacesDialog(const CEditCursor& cursor, QWidget* parent);
  /// Once accepted.
  SGroupFacesInput Input() const;

 private:
  void FillFaces(const CEditCursor& cursor);
  QWidget* MakeMagic();
  QString Fault() override;

  const CBinModel& model_;
  std::vector<std::vector<int32_t>> choices_;  ///< the faces of each item
  QComboBox* faces_;
  QCheckBox* change_type_;
  QComboBox* types_;
  QButtonGroup* magic_;
  CNumberField* value_;
};

}  // namespace veldra

#pragma once

#include <QCheckBox>
#include <array>

#include "editing/commandinputs.h"
#include "editing/scopebox.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks along which axes a model is mirrored.
class CMirrorDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CMirrorDialog(const CBinModel& model, const SMirrorInput& last, QWidget* parent);
  /// Once accepted.
  SMirrorInput Input() const;

 private:
  QString Fault() override;

  std::array<QCheckBox*, 3> axes_ = {};
  CScopeBox* scope_;
};

}  // namespace veldra

#pragma once

#include <optional>

#include "editing/pivotbox.h"
#include "editing/scopebox.h"
#include "ui/fielddialog.h"
#include "ui/sizepreview.h"

namespace veldra {

/// What the dialogs that move vertices have in common: fields beside a preview of the model's size, the scope,
/// and a pivot where there is one.
class CSizeDialog : public CFieldDialog {
  Q_OBJECT

 protected:
  CSizeDialog(const char* name, const QString& title, const CBinModel& model, SScope::EKind last_scope,
              QWidget* parent);
  /// VERTEX: the current one, -1 for none. To call before LayOut.
  void AddPivot(int32_t vertex, const SPivotInput& last);
  SPivotInput Pivot() const { return pivot_->Pivot(); }
  /// FIELDS come to stand above the scope, both beside the preview. To call once, before Refresh.
  void LayOut(QWidget* fields);
  const CBinModel& Model() const { return model_; }
  SScope::EKind Scope() const { return scope_->Scope(); }
  /// The bounds that the fields lead to, or nothing when the model would refuse them. Every field is valid.
  virtual std::optional<SBounds> Result() const = 0;
  QString Fault() override;
  QString FieldFault() override;

 private:
  const CBinModel& model_;
  CScopeBox* scope_;
  CPivotBox* pivot_ = nullptr;
  CSizePreview* preview_;
};

}  // namespace veldra

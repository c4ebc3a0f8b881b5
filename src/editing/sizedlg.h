#pragma once

#include <optional>

#include "editing/scopebox.h"
#include "ui/fielddialog.h"
#include "ui/sizepreview.h"

namespace veldra {

/// What the dialogs that move vertices have in common: fields beside a preview of the model's size, and the scope.
class CSizeDialog : public CFieldDialog {
  Q_OBJECT

 protected:
  CSizeDialog(const char* name, const QString& title, const CBinModel& model, SScope::EKind last_scope,
              QWidget* parent);
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
  CSizePreview* preview_;
};

}  // namespace veldra

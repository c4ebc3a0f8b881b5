#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <vector>

#include "ui/numberfield.h"

namespace veldra {

/// A dialog of checked fields over a row of OK and Cancel: OK is enabled only while every field is valid and nothing
/// else is wrong.
class CFieldDialog : public QDialog {
  Q_OBJECT

 public:
  /// NAME is its object name.
  CFieldDialog(const char* name, const QString& title, QWidget* parent);
  bool IsValid() const;
  /// To call when something else has changed than a watched field, and once at the end of the constructor.
  void Refresh();
  void setVisible(bool visible) override;

 protected:
  /// Above the buttons; scrolls where the screen is too small for it.
  QVBoxLayout* Content() const { return content_; }
  QDialogButtonBox* Buttons() const { return buttons_; }

  /// A field of this dialog in FORM, with a label whose "&" leads to it.
  CNumberField* AddNumber(QFormLayout* form, const QString& label, const char* name, const SNumberRule& rule,
                          double value, CNumberField::EFaultPlace place = CNumberField::EFaultPlace::kBeside);
  /// The field that the dialog opens with, ready to be typed over.
  void StartWith(QWidget* field) { start_ = field; }
  /// Lets OK wait for FIELD, which stands anywhere in the dialog.
  void Watch(CNumberField* field);
  /// What is wrong although every field by itself is valid, or ""; OK waits for it. Called by Refresh, and only then:
  /// the place for previews.
  virtual QString Fault() { return {}; }
  /// Called instead of Fault while a field is not valid: what to say besides the field, often nothing.
  virtual QString FieldFault() { return {}; }
  void showEvent(QShowEvent* event) override;

 private:
  QVBoxLayout* content_ = nullptr;
  CFaultLabel* fault_;
  QDialogButtonBox* buttons_;
  std::vector<CNumberField*> fields_;
  QWidget* start_ = nullptr;
};

}  // namespace veldra

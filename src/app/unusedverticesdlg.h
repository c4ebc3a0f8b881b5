#pragma once

#include <QCheckBox>
#include <QDialog>

#include "platform/questions.h"

namespace veldra {

/// What to do with unused vertices before a save. Closing it cancels the save.
class CUnusedVerticesDialog : public QDialog {
  Q_OBJECT

 public:
  explicit CUnusedVerticesDialog(QWidget* parent);
  SUnusedVerticesAnswer Answer() const;

 private:
  void AddChoice(const char* name, const QString& text, SUnusedVerticesAnswer::EChoice choice);

  QCheckBox* dont_show_again_;
  SUnusedVerticesAnswer::EChoice choice_ = SUnusedVerticesAnswer::EChoice::kCancel;
};

}  // namespace veldra

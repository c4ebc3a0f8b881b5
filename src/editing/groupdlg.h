#pragma once

#include <QDialog>
#include <QListWidget>
#include <QPushButton>

#include "editing/groupcommands.h"
#include "ui/dialogplace.h"

namespace veldra {

/// The face groups or the vertex groups of a document. What is done there is done at once.
class CGroupDialog : public QDialog {
  Q_OBJECT

 public:
  CGroupDialog(CTarnDoc& document, EGroupKind kind, QWidget* parent);

 private:
  QPushButton* MakeButton(const char* name, const QString& text, void (CGroupDialog::*action)());
  void Fill(const std::string& current);
  void Refresh();
  std::string CurrentName() const;
  void ShowFault(const std::string& fault);
  std::optional<std::string> AskName(const QString& title, const std::string& offered);
  void Create();
  void Rename();
  void Delete();
  void Select() { SelectGroup(document_, kind_, CurrentName(), false); }
  void AddToSelection() { SelectGroup(document_, kind_, CurrentName(), true); }

  CTarnDoc& document_;
  EGroupKind kind_;
  QListWidget* list_;
  QPushButton* create_;
  std::vector<QPushButton*> selecting_;  ///< those that work on the current group
  std::vector<QPushButton*> changing_;   ///< those that change it
};

}  // namespace veldra

#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <optional>
#include <vector>

#include "packing/podbuild.h"
#include "packing/toolservices.h"
#include "podtools/podprompt.h"
#include "ui/dialogplace.h"

namespace veldra {

/// The Pod Creator: collects files for an archive, shows what they need besides, and writes it. A window of its own, so
/// that the editor stays at hand.
class CPodCreatorDialog : public QDialog {
  Q_OBJECT

 public:
  CPodCreatorDialog(const SToolServices& services, QWidget* parent);

  CPodBuild& Build() { return build_; }
  /// Files, folders, and archives as the check box says.
  void Add(const std::vector<std::string>& paths);
  /// Asks for a path and writes the archive.
  void Create();
  /// The list anew, after Build() was changed.
  void ShowBuild();
  void reject() override;

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* MakeFiles();
  QWidget* MakeFileButtons();
  QWidget* MakeNeeded();
  QWidget* MakeOptions();
  QPushButton* MakeButton(const char* name, const QString& text, void (CPodCreatorDialog::*pressed)());
  void AskFiles();
  void AskFolder();
  void AskArchive();
  void AddNeeded();
  void RemoveSelected();
  void MoveSelected(int by);
  void MoveUp() { MoveSelected(-1); }
  void MoveDown() { MoveSelected(1); }
  std::vector<size_t> Selected() const;
  void Select(const std::vector<size_t>& positions);
  void ShowNeeded();
  void TakeOptions();
  void Refresh();
  bool LeavesOutStock() const { return leave_out_stock_->isChecked(); }

  SToolServices services_;
  CPodBuild build_;
  std::vector<SDependency> needed_;
  bool is_written_ = true;  ///< nothing has been added since the archive was written
  QTreeWidget* files_;
  QTreeWidget* needed_list_;
  QWidget* needed_box_;
  QCheckBox* show_needed_;
  QCheckBox* insert_archives_;
  QCheckBox* leave_out_stock_;
  QPushButton* add_needed_;
  QPushButton* remove_;
  QPushButton* up_;
  QPushButton* down_;
  QPushButton* create_;
  QLabel* total_;
  std::optional<CDialogPlace> place_;
};

}  // namespace veldra

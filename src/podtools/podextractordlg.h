#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <memory>
#include <optional>

#include "packing/toolservices.h"
#include "podtools/podlistmodel.h"
#include "podtools/podpreview.h"
#include "podtools/podprompt.h"
#include "ui/dialogplace.h"
#include "ui/pathfield.h"

namespace veldra {

/// The Pod Extractor: the entries of an archive, what the chosen one holds, and extraction of the selected ones. A
/// window of its own, so that the editor stays at hand.
class CPodExtractorDialog : public QDialog {
  Q_OBJECT

 public:
  CPodExtractorDialog(const SToolServices& services, QWidget* parent);
  ~CPodExtractorDialog() override;

  /// Shows the archive PATH. False after "Failed to load POD file"; the archive that was there stays.
  bool LoadArchive(const std::string& path);
  /// The setting DEFPAL has changed.
  void TakeDefaultColors();
  /// The Load button: the prompt, then LoadArchive.
  void AskAndLoad();
  void Extract();
  const CPodDocument& Archive() const { return archive_; }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* MakeList();
  QWidget* MakeDestination();
  QWidget* MakeButtons();
  std::vector<size_t> Selected() const;
  void OnSelectionChanged();
  void Refresh();
  void TakeFields();
  QStringList ExportForDrag(const std::vector<size_t>& entries);

  SToolServices services_;
  CPodDocument archive_;
  CPodListModel* entries_;
  CPodListFilter* filter_;
  QLabel* archive_text_;
  QLineEdit* search_;
  QTreeView* list_;
  CPodPreview* preview_;
  CPathField* destination_;
  QCheckBox* folders_;
  QCheckBox* dependencies_;
  QPushButton* extract_;
  QLabel* status_;
  std::unique_ptr<QTemporaryDir> drag_folder_;
  std::optional<CDialogPlace> place_;
};

}  // namespace veldra

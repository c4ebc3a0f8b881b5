#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <memory>
#include <optional>

#include "packing/toolservices.h"
#include "platform/sound.h"
#include "podtools/archivedocument.h"
#include "podtools/podeditactions.h"
#include "podtools/podextractorkeys.h"
#include "podtools/podlistview.h"
#include "podtools/podpreview.h"
#include "podtools/podproblemswidget.h"
#include "podtools/podprompt.h"
#include "ui/dialogplace.h"
#include "ui/pathfield.h"

namespace veldra {

/// The Pod Extractor: the entries of an archive, what the chosen one holds, extraction of the selected ones, and
/// changes of the archive. A window of its own, so that the editor stays at hand.
class CPodExtractorDialog : public QDialog {
  Q_OBJECT

 public:
  CPodExtractorDialog(const SToolServices& services, QWidget* parent);
  ~CPodExtractorDialog() override;

  /// Shows the archive PATH, after asking about unsaved changes. False when the archive that was there stays: the user
  /// wants it so, or "Failed to load POD file".
  bool LoadArchive(const std::string& path);
  /// The setting DEFPAL has changed.
  void TakeDefaultColors();
  /// The Load button: the prompt, then LoadArchive.
  void AskAndLoad();
  void Extract();
  /// Asks for another archive and shows the two side by side.
  void AskAndCompare();
  /// Opens the entry that is worked on: a model or a truck where it is edited, a sound is played, what else can be
  /// shown gets a window of its own.
  void OpenEntry();
  const CPodDocument& Archive() const { return document_.Archive(); }
  CArchiveDocument& Document() { return document_; }
  /// Asks about unsaved changes. True when they may go.
  bool MayLeave() { return actions_->MayLeave(); }

 protected:
  void reject() override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QLayout* MakeTop();
  QWidget* MakeList();
  QWidget* MakeDestination();
  QWidget* MakeButtons();
  void MakeMenus();
  void OnEntriesChanged();
  void OnStateChanged();
  void OnSelectionChanged();
  void Refresh();
  void TakeFields();
  void OpenWhereEdited(size_t entry);
  void Play(size_t entry);
  QStringList ExportForDrag(const std::vector<size_t>& entries);

  SToolServices services_;
  CArchiveDocument document_;
  CPodListView* list_;
  CWindowKeys* keys_;
  CPodEditActions* actions_;
  CPodProblemsWidget* problems_;
  QLabel* archive_text_;
  QLineEdit* search_;
  CPodPreview* preview_;
  CPathField* destination_;
  QCheckBox* folders_;
  QCheckBox* dependencies_;
  QPushButton* extract_;
  QLabel* status_;
  std::unique_ptr<QTemporaryDir> drag_folder_;
  QTemporaryDir sound_folder_;
  CSoundPlayer player_;
  std::optional<CDialogPlace> place_;
};

}  // namespace veldra

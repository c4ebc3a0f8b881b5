#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <string>
#include <vector>

#include "app/documentwindows.h"
#include "app/tarn2.h"
#include "archive/stockfiles.h"
#include "interchange/importcommands.h"
#include "model/modelcheck.h"
#include "packing/toolservices.h"

namespace veldra {

class CPodCreatorDialog;
class CPodExtractorDialog;
class CTruckEditorDlg;

/// What lies beside the editing of models: archives, trucks, meshes of other programs. Archives and trucks have windows
/// of their own, one of each kind; trucks get further ones where the first is taken.
class CToolCommands : public QObject {
  Q_OBJECT

 public:
  /// What is imported gets a window of WINDOWS; dialogs, and windows of its own, stand over WINDOW. All outlive it.
  CToolCommands(CTarn2App& app, CDocumentWindows& windows, QWidget& window);
  ~CToolCommands() override;

  void ShowExtractor();
  void ShowCreator();
  void ShowTruckEditor();
  void NewTruck();
  void BuildStockList();
  void TakeStockList();  ///< there is another one
  void Import3ds();
  void ImportWavefront();
  void ImportMeshes();

  /// To the windows that are open.
  void ShowDefaultColors();

  // Each opens a file in its window. False when it could not be opened; the user has been told then.
  bool OpenArchive(const std::string& path);
  bool OpenTruck(const std::string& path);
  /// A model or a truck of ARCHIVE, which is as it is on the disk.
  void OpenEntry(const CPodDocument& archive, size_t entry);
  /// Lets the user choose among the models of the archive, and opens them read-only. False when it cannot be loaded.
  bool OpenModelsOf(const std::string& path);
  /// What an earlier program left unsaved, in a window of its own unless that of the editor is free.
  void RecoverTruck(const SLeftover& leftover);
  /// Into the extractor, after asking about what is unsaved in it.
  void RecoverArchive(const SLeftover& leftover);
  /// The trucks and the archive that are open.
  QList<CFileDocument*> Documents() const;
  /// The window of DOCUMENT, if it is one of those, comes to the front.
  void Activate(const CFileDocument& document);
  /// Asks about each of them with unsaved changes, and saves where the user wants it. False: one stays open.
  bool MayCloseDocuments();
  // For files that are dropped or named on the command line; always true, as what fails is told.
  bool Import3dsFile(const std::string& path);
  bool ImportMeshFile(const std::string& path);
  bool ImportWavefrontFile(const std::string& path);

  /// Closes the windows, which ask about what is not saved. False: one stays open.
  bool CloseWindows();

 signals:
  /// The user wants to see where in the model in FILE it is.
  void FindingWanted(const SPodSource& file, const SFinding& finding);
  /// Which documents are open, or where their files are.
  void FilesChanged();

 private:
  SToolServices Services();
  void OpenModel(const SArchivePlace& place);
  void OpenTruck(const SArchivePlace& place);
  bool SaveIntoArchive(const SArchivePlace& place, std::span<const uint8_t> bytes);
  bool StartGame(const std::string& archive, const std::string& truck);
  SImportServices ImportServices();
  CPodExtractorDialog& Extractor();
  QList<CTruckEditorDlg*> TruckEditors() const;
  CTruckEditorDlg& TruckEditor();
  CTruckEditorDlg& NewTruckEditor();

  CTarn2App& app_;
  CDocumentWindows& windows_;
  QWidget& window_;
  CStockFiles stock_;
  SWaveOptions wave_options_ = {.fit = kTruckSize};  ///< the last ones chosen
  QPointer<CPodExtractorDialog> extractor_;
  QPointer<CPodCreatorDialog> creator_;
  QList<QPointer<CTruckEditorDlg>> truck_editors_;
};

}  // namespace veldra

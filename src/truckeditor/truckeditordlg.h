#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QTabWidget>
#include <functional>
#include <memory>
#include <string>

#include "archive/stockfiles.h"
#include "model/modelcheck.h"
#include "packing/packmemory.h"
#include "packing/packtruck.h"
#include "packing/toolservices.h"
#include "settings/windowkeys.h"
#include "truckeditor/gamenamefield.h"
#include "truckeditor/truckdocument.h"

namespace veldra {

class CNewTruckWizard;
class CTruck3dPage;
class CTruckCheckPage;
struct STruckNameField;
class CTruckLightsPage;

/// The truck editor: one truck, page by page. A window of its own, so that the models stay at hand.
class CTruckEditorDlg : public QMainWindow {
  Q_OBJECT

 public:
  /// STATES (may be null) is where earlier states of trucks are kept.
  explicit CTruckEditorDlg(const SToolServices& services, CEarlierStates* states = nullptr, QWidget* parent = nullptr);
  ~CTruckEditorDlg() override;

  /// Opens PATH after asking about unsaved changes. False when the user kept the old truck, or after "Failed to load
  /// truck".
  bool OpenFile(const std::string& path);
  /// The same for an entry of an archive.
  bool OpenFromArchive(const SArchivePlace& place) { return MayLeave() && document_.LoadFromArchive(place); }
  void New();
  /// A new truck step by step, after asking about unsaved changes.
  void NewByWizard();
  void Open();
  bool Save();
  bool SaveAs();
  void Reload();
  void EarlierStates();
  void PackTruck();
  /// False when nothing was written.
  bool PackAgain();
  /// Again, or the first time, and then the game with what was written.
  void PackAndStart();
  /// Asks about unsaved changes. True when the truck may go: it is saved, or the user does not want it to be.
  bool MayLeave();
  /// Looks for models, textures and sounds again.
  void RefreshFiles();

  const CTruckDocument& Document() const { return document_; }
  CTruckDocument& Document() { return document_; }

 signals:
  /// The user wants to see where in the model in FILE it is.
  void FindingWanted(const SPodSource& file, const SFinding& finding);

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void MakeActions();
  /// NAME is its row's in the table of keys, and that of its icon, if it has one.
  QAction* MakeAction(const char* name, std::function<void()> action);
  void MakeToolBar(const QList<QList<QAction*>>& groups);
  void AddPage(QWidget* page, const char* name);
  void MakePages();
  void GoTo(const STruckNameField& field);
  bool SaveIntoArchive();
  bool IsReadyToPack();
  STruckPackPlan PackPlan() const;
  void RememberPacking(SPackMemory packed);
  /// How many files the archive has got; nothing when none was written.
  std::optional<size_t> AskAndPack();
  std::optional<size_t> WritePod(const STruckPackPlan& plan, bool leave_out_stock);
  void OfferArchive(size_t files);
  void ShowPackActions();
  bool KeepNew(const CNewTruckWizard& wizard);
  void OnFileChanged();
  void OnChanged();

  SToolServices services_;
  CEarlierStates* states_;
  CTruckDocument document_;
  std::unique_ptr<CTruckFiles> files_;
  std::unique_ptr<CTruckTextures> textures_;
  STruckPageContext context_;
  CWindowKeys* keys_ = nullptr;
  QTabWidget* pages_;
  QLabel* path_;
  QMenu* view_menu_ = nullptr;
  CTruckLightsPage* lights_ = nullptr;
  CTruckCheckPage* check_ = nullptr;
  CTruck3dPage* view_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* reload_ = nullptr;
  QAction* pack_again_ = nullptr;
  QAction* pack_and_start_ = nullptr;
  std::optional<SPackMemory> packed_;  ///< the last time
};

}  // namespace veldra

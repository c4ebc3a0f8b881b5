#pragma once

#include <QByteArray>
#include <QDockWidget>
#include <QMainWindow>
#include <QObject>
#include <QPointer>
#include <QSettings>
#include <QVariant>
#include <array>
#include <set>
#include <vector>

#include "settings/settings.h"
#include "tools/toolwidget.h"

namespace veldra {

enum class EToolDock {
  kModelTree,
  kCurrentFace,
  kVertexStatus,
  kTextureList,
  kModelInfo,
  kMapping,
  kMappingTools,
  kTextureBrowser,
  kProblems
};
inline constexpr size_t kToolDockCount = 9;

class CMappingWidget;
class CProblemsWidget;
class CTextureBrowserWidget;

/// The tool windows of the main window. They show the active view; where each of them stands is part of the main
/// window's state. While the active view is to be seen alone, all of them are away. What stands in one is made when it
/// is first seen or wanted, so that a start makes only what is in front.
///
/// The settings keep of the vertex status window whether it is open and, while it floats, where. The mapping editor and
/// its tools float at first; the settings keep where.
class CToolDocks : public QObject {
  Q_OBJECT

 public:
  /// Makes them in WINDOW, at their first places.
  CToolDocks(QMainWindow& window, CSettings& settings);

  /// VIEW is the active one, null for none, or an option of it has changed.
  void Follow(CTarnView* view);
  /// Docks, tool bars and what tools keep, as Keep has left them in KEPT.
  void Restore(const QSettings& kept);
  /// For Restore; the settings take what is theirs.
  void Keep(QSettings& kept);

  /// The pictures of the textures have become others.
  void ForgetPictures();

  QDockWidget& Dock(EToolDock dock) const { return *docks_[static_cast<size_t>(dock)]; }
  /// In the window or beside it, be it behind another one.
  bool IsOpen(EToolDock dock) const { return !Dock(dock).isHidden(); }
  bool AreAway() const { return are_away_; }
  /// The keys go to something in one of them.
  bool HasFocus() const;
  /// FILTER, an event filter, sees the keys that go to them.
  void InstallKeys(QObject* filter);

  CToolWidget& Tool(EToolDock dock);
  CMappingWidget& Mapping();
  CTextureBrowserWidget& Browser();
  CProblemsWidget& Problems();
  /// Opens the texture browser and gives it the keys.
  void ShowBrowser();
  /// Opens the mapping editor and gives it the keys; its tools come with it when it is opened.
  void ShowMapping();

  // Commands: each opens its window, in front of the others, or closes it.
  void ToggleModelTree() { Toggle(EToolDock::kModelTree); }
  void ToggleCurrentFace() { Toggle(EToolDock::kCurrentFace); }
  void ToggleVertexStatus() { Toggle(EToolDock::kVertexStatus); }
  void ToggleTextureList() { Toggle(EToolDock::kTextureList); }
  void ToggleModelInfo() { Toggle(EToolDock::kModelInfo); }
  void ToggleMapping() { Toggle(EToolDock::kMapping); }
  void ToggleMappingTools() { Toggle(EToolDock::kMappingTools); }
  void ToggleTextureBrowser() { Toggle(EToolDock::kTextureBrowser); }
  void ToggleProblems() { Toggle(EToolDock::kProblems); }

 signals:
  /// One has been opened or closed.
  void Changed();
  // Those of CToolWidget.
  void CommandWanted(const char* name);
  void MenuWanted(EGroupKind kind, const QPoint& at);

 private:
  void Add(EToolDock dock, const char* name, const QString& title, Qt::DockWidgetArea area);
  void PutTogether();
  CToolWidget* Make(EToolDock dock);
  CToolWidget* MakeMapping();
  CToolWidget* MakeBrowser();
  CToolWidget* MakeProblems();
  void Show(EToolDock dock, bool is_in_front);
  void InstallKeysIn(EToolDock dock);
  void Toggle(EToolDock dock);
  void SendAway();
  void BringBack();
  void PlaceVertexStatus();
  void PlaceMapping();
  void PlaceBrowser();
  void OpenMappingTools();
  void PlaceFloating(EToolDock dock, const QPoint& first, int32_t x, int32_t y);
  void KeepPlace(EToolDock dock, int32_t& x, int32_t& y) const;

  QMainWindow& window_;
  CSettings& settings_;
  std::array<QDockWidget*, kToolDockCount> docks_ = {};
  std::array<CToolWidget*, kToolDockCount> tools_ = {};  ///< null until they are made
  std::array<QVariant, kToolDockCount> states_;          ///< that those not yet made will have
  QPointer<CTarnView> view_;
  QObject* keys_ = nullptr;
  std::set<EToolDock> placed_;  ///< those that have a place by now
  bool are_away_ = false;
  QByteArray state_before_;             ///< they went away
  std::vector<QDockWidget*> away_;      ///< those that come back
  bool is_vertex_status_open_ = false;  ///< before they went away
};

}  // namespace veldra

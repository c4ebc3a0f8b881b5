#pragma once

#include <QString>
#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "document/tarn2doc.h"
#include "view/tarn2view.h"

namespace veldra {

class CMainFrame;

enum class ECommand : int32_t {
  kNone,  ///< a separator in menus and tool bars
  kFileOpen,
  kFileClose,
  kFileSave,
  kFileSaveAs,
  kFileRecent,  ///< the list of recent files
  kFileExit,
  kViewVertices,
  kViewWireframe,
  kViewSolid,
  kViewTextured,
  kViewOnly3D,
  kViewAxes,
  kViewVertexMarkers,
  kViewSphericalMarkers,
  kViewHighQuality,
  kViewTransparency,
  kViewFollowFace,
  kViewPlay,
  kViewZoomIn,
  kViewZoomOut,
  kViewZoomToFit,
  kViewRestoreRotation,
  kViewBackground,
  kModelCenterAll,
  kModelCenterX,
  kModelCenterY,
  kModelCenterZ,
  kModelDeleteUnused,
  kWindowCascade,
  kWindowTile,
  kWindowList,  ///< the list of open windows
  kHelpAbout,
};

/// What the rules of the commands look at. Without an open document both are null.
struct SCommandState {
  const CTarnDoc* document = nullptr;
  const CTarnView* view = nullptr;
  bool has_recent_files = false;
};

/// Who carries a command out: the main frame, the active view or its document. The last two need one to be there.
using CommandHandler =
    std::variant<std::monostate, void (CMainFrame::*)(), void (CTarnView::*)(), void (CTarnDoc::*)()>;

/// One command. Menus, tool bar, status texts, keys and enabling all come from these rows.
struct SCommandRow {
  ECommand id;
  const char* name;           ///< of the action and of its icon file
  const char* text;           ///< with "&" before the menu's key
  const char* status;         ///< status bar text, then "\n" and tool tip where it has one of its own
  const char* key = "";       ///< the application's shortcut, "Ctrl+O"
  const char* view_key = "";  ///< shown in the menu; the view handles it
  bool has_icon = false;
  bool (*when)(const SCommandState&) = nullptr;     ///< enabled; null: whenever its handler's target is there
  bool (*checked)(const SCommandState&) = nullptr;  ///< null: not checkable
  bool is_choice = false;                           ///< one of several, shown as a radio button
  CommandHandler handler = {};
};

std::span<const SCommandRow> CommandRows();
const SCommandRow& CommandRow(ECommand id);
bool IsEnabled(const SCommandRow& row, const SCommandState& state);
QString StatusText(const SCommandRow& row);
QString ToolTip(const SCommandRow& row);

/// A menu of the menu bar and what stands in it, in order.
struct SMenuRow {
  const char* name;
  const char* title;
  std::span<const ECommand> commands;
};
std::span<const SMenuRow> MenuRows();
std::span<const ECommand> ToolBarCommands();

}  // namespace veldra

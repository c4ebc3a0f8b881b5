#include "app/commandtable.h"

#include <algorithm>

#include "app/mainfrm.h"
#include "platform/assert.h"

namespace veldra {

namespace {

using S = SCommandState;

bool HasDocument(const S& state) {
  return state.document != nullptr;
}
bool HasChanges(const S& state) {
  return HasDocument(state) && state.document->IsModified();
}
bool CanEditVertices(const S& state) {
  return HasDocument(state) && !state.document->IsReadOnly() && state.document->Model().VertexCount() > 0;
}
bool HasRecentFiles(const S& state) {
  return state.has_recent_files;
}

template <ERenderMode kMode>
bool IsMode(const S& state) {
  return state.view != nullptr && state.view->State().mode == kMode;
}

template <bool SViewState::*kOption>
bool IsOn(const S& state) {
  return state.view != nullptr && state.view->State().*kOption;
}

bool IsPlaying(const S& state) {
  return state.view != nullptr && state.view->IsPlaying();
}

const SCommandRow kRows[] = {
    // --- File
    {.id = ECommand::kFileOpen,
     .name = "open",
     .text = "&Open...",
     .status = "Open an existing document\nOpen",
     .key = "Ctrl+O",
     .has_icon = true,
     .handler = &CMainFrame::AskAndOpen},
    {.id = ECommand::kFileClose,
     .name = "close",
     .text = "&Close",
     .status = "Close the active document\nClose",
     .key = "Ctrl+W",
     .when = HasDocument,
     .handler = &CMainFrame::CloseActive},
    {.id = ECommand::kFileSave,
     .name = "save",
     .text = "&Save",
     .status = "Save the active document",
     .key = "Ctrl+S",
     .has_icon = true,
     .when = HasChanges,
     .handler = &CMainFrame::SaveActive},
    {.id = ECommand::kFileSaveAs,
     .name = "saveAs",
     .text = "Save &As...",
     .status = "Saves the active docmunet as an MTM model",
     .key = "Ctrl+Shift+S",
     .has_icon = true,
     .when = HasDocument,
     .handler = &CMainFrame::SaveActiveAs},
    {.id = ECommand::kFileRecent,
     .name = "recentFiles",
     .text = "&Recent Files",
     .status = "Open a document that was open before",
     .when = HasRecentFiles},
    {.id = ECommand::kFileExit,
     .name = "exit",
     .text = "E&xit",
     .status = "Quit the application; prompts to save documents",
     .key = "Ctrl+Q",
     .handler = &CMainFrame::Exit},
    // --- View
    {.id = ECommand::kViewVertices,
     .name = "verticesOnly",
     .text = "&Vertices Only",
     .status = "Display only the model's vertices\nVertices Only",
     .has_icon = true,
     .checked = IsMode<ERenderMode::kVertices>,
     .is_choice = true,
     .handler = &CTarnView::ShowVerticesOnly},
    {.id = ECommand::kViewWireframe,
     .name = "wireframe",
     .text = "&Wireframe",
     .status = "Display model as wireframe\nWireframe",
     .has_icon = true,
     .checked = IsMode<ERenderMode::kWireframe>,
     .is_choice = true,
     .handler = &CTarnView::ShowWireframe},
    {.id = ECommand::kViewSolid,
     .name = "solid",
     .text = "&Solid Untextured",
     .status = "Display model as solid faces\nSolid",
     .has_icon = true,
     .checked = IsMode<ERenderMode::kSolid>,
     .is_choice = true,
     .handler = &CTarnView::ShowSolid},
    {.id = ECommand::kViewTextured,
     .name = "textured",
     .text = "&Textured",
     .status = "Display model with textures\nTextured",
     .has_icon = true,
     .checked = IsMode<ERenderMode::kTextured>,
     .is_choice = true,
     .handler = &CTarnView::ShowTextured},
    {.id = ECommand::kViewOnly3D,
     .name = "only3D",
     .text = "Show &Only 3D View",
     .status = "View 3D model only\nView 3D model only",
     .has_icon = true,
     .checked = IsOn<&SViewState::only_3d>,
     .handler = &CTarnView::ToggleOnly3D},
    {.id = ECommand::kViewAxes,
     .name = "axes",
     .text = "Show &Axes",
     .status = "Toggles 3D axis visibility in active view",
     .has_icon = true,
     .checked = IsOn<&SViewState::axes>,
     .handler = &CTarnView::ToggleAxes},
    {.id = ECommand::kViewVertexMarkers,
     .name = "vertexMarkers",
     .text = "Show 3D V&ertices",
     .status = "Toggles 3D vertex visibility in active view",
     .has_icon = true,
     .checked = IsOn<&SViewState::vertices>,
     .handler = &CTarnView::ToggleVertices},
    {.id = ECommand::kViewSphericalMarkers,
     .name = "sphericalMarkers",
     .text = "Use S&pherical 3D Markers",
     .status = "Use spheres to mark a point in 3D space",
     .checked = IsOn<&SViewState::spherical_markers>,
     .handler = &CTarnView::ToggleSphericalMarkers},
    {.id = ECommand::kViewHighQuality,
     .name = "highQuality",
     .text = "High &Quality 3D Textures",
     .status = "Toggles high/low 3D texture rendering in active view",
     .checked = IsOn<&SViewState::high_quality>,
     .handler = &CTarnView::ToggleHighQuality},
    {.id = ECommand::kViewTransparency,
     .name = "transparency",
     .text = "Show Transparenc&y",
     .status = "Render \"Transparent Color #0\"  faces with transparency",
     .has_icon = true,
     .checked = IsOn<&SViewState::transparency>,
     .handler = &CTarnView::ToggleTransparency},
    {.id = ECommand::kViewFollowFace,
     .name = "followFace",
     .text = "&Follow Current Face",
     .status = "Follow Current Face\nFollow Current Face",
     .checked = IsOn<&SViewState::follow_current_face>,
     .handler = &CTarnView::ToggleFollowFace},
    {.id = ECommand::kViewPlay,
     .name = "play",
     .text = "P&lay",
     .status = "Rotate model\nToggle Play",
     .view_key = "P",
     .has_icon = true,
     .checked = IsPlaying,
     .handler = &CTarnView::TogglePlay},
    {.id = ECommand::kViewZoomIn,
     .name = "zoomIn",
     .text = "Zoom &In",
     .status = "Zoom In\nZoom In",
     .view_key = "+",
     .has_icon = true,
     .handler = &CTarnView::ZoomIn},
    {.id = ECommand::kViewZoomOut,
     .name = "zoomOut",
     .text = "Zoom O&ut",
     .status = "Zoom Out\nZoom Out",
     .view_key = "-",
     .has_icon = true,
     .handler = &CTarnView::ZoomOut},
    {.id = ECommand::kViewZoomToFit,
     .name = "zoomToFit",
     .text = "&Zoom to fit",
     .status = "Zoom model to fit in 3d-View\nFit to 3d-view",
     .has_icon = true,
     .handler = &CTarnView::ZoomToFit},
    {.id = ECommand::kViewRestoreRotation,
     .name = "restoreRotation",
     .text = "&Restore Rotation",
     .status = "Resets model rotation to the default position\nRestore Rotation",
     .view_key = "5 (Number Pad)",
     .has_icon = true,
     .handler = &CTarnView::RestoreRotation},
    {.id = ECommand::kViewBackground,
     .name = "background",
     .text = "Change &Background Color...",
     .status = "Set the active view's background color",
     .when = HasDocument,
     .handler = &CMainFrame::AskBackground},
    // --- Model
    {.id = ECommand::kModelCenterAll,
     .name = "centerAll",
     .text = "Center &All",
     .status = "Centers model relative to all axes",
     .when = CanEditVertices,
     .handler = &CTarnDoc::CenterAll},
    {.id = ECommand::kModelCenterX,
     .name = "centerX",
     .text = "Center &X",
     .status = "Centers model relative to the X axis",
     .when = CanEditVertices,
     .handler = &CTarnDoc::CenterX},
    {.id = ECommand::kModelCenterY,
     .name = "centerY",
     .text = "Center &Y",
     .status = "Centers model relative to the Y axis",
     .when = CanEditVertices,
     .handler = &CTarnDoc::CenterY},
    {.id = ECommand::kModelCenterZ,
     .name = "centerZ",
     .text = "Center &Z",
     .status = "Centers model relative to the Z axis",
     .when = CanEditVertices,
     .handler = &CTarnDoc::CenterZ},
    {.id = ECommand::kModelDeleteUnused,
     .name = "deleteUnused",
     .text = "&Delete All Unused",
     .status = "Deletes all unused vertices",
     .when = CanEditVertices,
     .handler = &CMainFrame::DeleteUnused},
    // --- Window and Help
    {.id = ECommand::kWindowCascade,
     .name = "cascade",
     .text = "&Cascade",
     .status = "Arrange windows so they overlap\nCascade Windows",
     .when = HasDocument,
     .handler = &CMainFrame::CascadeWindows},
    {.id = ECommand::kWindowTile,
     .name = "tile",
     .text = "&Tile",
     .status = "Arrange windows as non-overlapping tiles\nTile Windows",
     .when = HasDocument,
     .handler = &CMainFrame::TileWindows},
    {.id = ECommand::kWindowList, .name = "windowList", .text = "", .status = "Activate this window"},
    {.id = ECommand::kHelpAbout,
     .name = "about",
     .text = "&About Veldra...",
     .status = "Display program information, version number and copyright\nAbout",
     .handler = &CMainFrame::About},
};

constexpr auto kSeparator = ECommand::kNone;

constexpr ECommand kFileMenu[] = {
    ECommand::kFileOpen, ECommand::kFileClose,  kSeparator, ECommand::kFileSave, ECommand::kFileSaveAs,
    kSeparator,          ECommand::kFileRecent, kSeparator, ECommand::kFileExit};
constexpr ECommand kViewMenu[] = {ECommand::kViewVertices,
                                  ECommand::kViewWireframe,
                                  ECommand::kViewSolid,
                                  ECommand::kViewTextured,
                                  kSeparator,
                                  ECommand::kViewOnly3D,
                                  ECommand::kViewAxes,
                                  ECommand::kViewVertexMarkers,
                                  ECommand::kViewSphericalMarkers,
                                  ECommand::kViewHighQuality,
                                  ECommand::kViewTransparency,
                                  ECommand::kViewFollowFace,
                                  kSeparator,
                                  ECommand::kViewPlay,
                                  kSeparator,
                                  ECommand::kViewZoomIn,
                                  ECommand::kViewZoomOut,
                                  ECommand::kViewZoomToFit,
                                  ECommand::kViewRestoreRotation,
                                  kSeparator,
                                  ECommand::kViewBackground};
constexpr ECommand kModelMenu[] = {
    ECommand::kModelCenterAll, kSeparator, ECommand::kModelCenterX,     ECommand::kModelCenterY,
    ECommand::kModelCenterZ,   kSeparator, ECommand::kModelDeleteUnused};
constexpr ECommand kWindowMenu[] = {ECommand::kWindowCascade, ECommand::kWindowTile, kSeparator, ECommand::kWindowList};
constexpr ECommand kHelpMenu[] = {ECommand::kHelpAbout};

constexpr SMenuRow kMenus[] = {
    {"menuFile", "&File", kFileMenu},       {"menuView", "&View", kViewMenu}, {"menuModel", "&Model", kModelMenu},
    {"menuWindow", "&Window", kWindowMenu}, {"menuHelp", "&Help", kHelpMenu},
};

constexpr ECommand kToolBar[] = {ECommand::kFileOpen,
                                 ECommand::kFileSave,
                                 ECommand::kFileSaveAs,
                                 kSeparator,
                                 ECommand::kViewVertices,
                                 ECommand::kViewWireframe,
                                 ECommand::kViewSolid,
                                 ECommand::kViewTextured,
                                 kSeparator,
                                 ECommand::kViewOnly3D,
                                 ECommand::kViewAxes,
                                 ECommand::kViewVertexMarkers,
                                 ECommand::kViewTransparency,
                                 kSeparator,
                                 ECommand::kViewPlay,
                                 kSeparator,
                                 ECommand::kViewZoomIn,
                                 ECommand::kViewZoomOut,
                                 ECommand::kViewZoomToFit,
                                 ECommand::kViewRestoreRotation};

}  // namespace

std::span<const SCommandRow> CommandRows() {
  return kRows;
}

const SCommandRow& CommandRow(ECommand id) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [id](const SCommandRow& candidate) { return candidate.id == id; });
  VELDRA_ASSERT(row != std::end(kRows));
  return *row;
}

bool IsEnabled(const SCommandRow& row, const SCommandState& state) {
  if (std::holds_alternative<void (CTarnView::*)()>(row.handler) && state.view == nullptr) return false;
  if (std::holds_alternative<void (CTarnDoc::*)()>(row.handler) && state.document == nullptr) return false;
  return row.when == nullptr || row.when(state);
}

QString StatusText(const SCommandRow& row) {
  return QString::fromUtf8(row.status).section('\n', 0, 0);
}

QString ToolTip(const SCommandRow& row) {
  const QString own = QString::fromUtf8(row.status).section('\n', 1);
  return own.isEmpty() ? QString::fromUtf8(row.text).remove('&').remove("...") : own;
}

std::span<const SMenuRow> MenuRows() {
  return kMenus;
}

std::span<const ECommand> ToolBarCommands() {
  return kToolBar;
}

}  // namespace veldra

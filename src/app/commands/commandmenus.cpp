#include "app/commands/commandtable.h"

namespace veldra {

namespace {

constexpr auto kSeparator = ECommand::kNone;

constexpr ECommand kFileMenu[] = {ECommand::kFileNew,
                                  ECommand::kFileOpen,
                                  ECommand::kFileClose,
                                  kSeparator,
                                  ECommand::kFileSave,
                                  ECommand::kFileSaveAs,
                                  ECommand::kFileEditInArchive,
                                  ECommand::kFileReload,
                                  ECommand::kFileEarlierStates,
                                  ECommand::kFileRecover,
                                  kSeparator,
                                  ECommand::kMenuImport,
                                  ECommand::kMenuExport,
                                  ECommand::kFileTextureList,
                                  kSeparator,
                                  ECommand::kFileRecent,
                                  kSeparator,
                                  ECommand::kFilePreferences,
                                  ECommand::kFileExit};
constexpr ECommand kImportMenu[] = {ECommand::kImport3ds, ECommand::kImportWavefront, ECommand::kImportMeshes};
constexpr ECommand kExportMenu[] = {ECommand::kExportWavefront, ECommand::kExport3ds, ECommand::kExportVrml};
constexpr ECommand kEditMenu[] = {ECommand::kEditUndo,     ECommand::kEditRedo,        kSeparator,
                                  ECommand::kEditStepBack, ECommand::kEditStepForward, ECommand::kEditEarlierStates};
constexpr ECommand kViewMenu[] = {ECommand::kViewVertices,
                                  ECommand::kViewWireframe,
                                  ECommand::kViewSolid,
                                  ECommand::kViewTextured,
                                  kSeparator,
                                  ECommand::kViewOnly3D,
                                  ECommand::kViewAxes,
                                  ECommand::kViewGrid,
                                  ECommand::kViewEdges,
                                  ECommand::kViewGizmo,
                                  ECommand::kViewVertexMarkers,
                                  ECommand::kViewVertexNumbers,
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
                                  ECommand::kMenuSides,
                                  ECommand::kViewOrthographic,
                                  kSeparator,
                                  ECommand::kMenuDocks,
                                  ECommand::kViewBackground};
constexpr ECommand kDocksMenu[] = {
    ECommand::kDockModelTree,    ECommand::kDockTextureList,    ECommand::kDockCurrentFace,
    ECommand::kDockVertexStatus, ECommand::kDockModelInfo,      ECommand::kDockMapping,
    ECommand::kDockMappingTools, ECommand::kDockTextureBrowser, ECommand::kDockProblems};
constexpr ECommand kSidesMenu[] = {ECommand::kViewFront, ECommand::kViewBack, ECommand::kViewLeft,
                                   ECommand::kViewRight, ECommand::kViewTop,  ECommand::kViewBottom};
constexpr ECommand kSelectMenu[] = {ECommand::kSelectLinked,
                                    ECommand::kSelectGrow,
                                    ECommand::kSelectShrink,
                                    ECommand::kMenuSelectSame,
                                    kSeparator,
                                    ECommand::kSelectLoop,
                                    ECommand::kSelectLoopAcross,
                                    kSeparator,
                                    ECommand::kSelectHide,
                                    ECommand::kSelectHideOthers,
                                    ECommand::kSelectShowAll,
                                    kSeparator,
                                    ECommand::kSelectThrough,
                                    ECommand::kSelectZoom};
constexpr ECommand kSelectSameMenu[] = {ECommand::kSelectSameTexture, ECommand::kSelectSameType,
                                        ECommand::kSelectSameGroup, ECommand::kSelectSameFacing,
                                        ECommand::kSelectSameSize};
constexpr ECommand kModelMenu[] = {ECommand::kModelInfo,
                                   ECommand::kModelJump,
                                   kSeparator,
                                   ECommand::kModelCenterAll,
                                   kSeparator,
                                   ECommand::kModelCenterX,
                                   ECommand::kModelCenterY,
                                   ECommand::kModelCenterZ,
                                   kSeparator,
                                   ECommand::kModelResize,
                                   ECommand::kModelTranslate,
                                   ECommand::kModelRotate,
                                   ECommand::kModelMirror,
                                   ECommand::kMenuGizmoPivot,
                                   kSeparator,
                                   ECommand::kMenuMake,
                                   ECommand::kModelAddFace,
                                   ECommand::kModelAddVertex,
                                   ECommand::kModelDeleteUnused,
                                   ECommand::kModelMerge,
                                   kSeparator,
                                   ECommand::kMenuInsert,
                                   ECommand::kModelReplaceTexture};
constexpr ECommand kGizmoPivotMenu[] = {ECommand::kGizmoMiddle, ECommand::kGizmoOrigin,
                                        ECommand::kGizmoVertex, kSeparator,
                                        ECommand::kGizmoPick,   ECommand::kGizmoPoint};
constexpr ECommand kMakeMenu[] = {ECommand::kMakeFace,
                                  ECommand::kMakeBridge,
                                  ECommand::kMakeVertices,
                                  kSeparator,
                                  ECommand::kMakeExtrude,
                                  ECommand::kMakeDetach,
                                  ECommand::kMakeDuplicate,
                                  ECommand::kMenuMakeMirrored,
                                  kSeparator,
                                  ECommand::kMakeSplitEdge,
                                  ECommand::kMakeSplitQuads,
                                  ECommand::kMakeJoin,
                                  kSeparator,
                                  ECommand::kMakeFlatten,
                                  ECommand::kMakeSnap};
constexpr ECommand kMakeMirroredMenu[] = {ECommand::kMakeDuplicateX, ECommand::kMakeDuplicateY,
                                          ECommand::kMakeDuplicateZ};
constexpr ECommand kInsertMenu[] = {ECommand::kInsertShape, ECommand::kInsertBin, ECommand::kInsertGenericObject};
constexpr ECommand kFaceMenu[] = {ECommand::kFaceSelect,      ECommand::kFaceSelectAll,
                                  ECommand::kFaceDeselectAll, ECommand::kFaceInvert,
                                  ECommand::kFaceFacing,      kSeparator,
                                  ECommand::kMenuCurrentFace, ECommand::kFaceEdit,
                                  ECommand::kFaceFlip,        kSeparator,
                                  ECommand::kMenuTagged,      ECommand::kFaceGroupType,
                                  ECommand::kFaceGroups,      kSeparator,
                                  ECommand::kFaceDelete,      ECommand::kFaceDeleteSelected};
constexpr ECommand kCurrentFaceMenu[] = {ECommand::kFaceCycle,         ECommand::kFaceReverseCycle,         kSeparator,
                                         ECommand::kFaceCycleSelected, ECommand::kFaceReverseCycleSelected, kSeparator,
                                         ECommand::kFaceNone};
constexpr ECommand kTaggedMenu[] = {ECommand::kFaceTag, ECommand::kFaceClearTags, kSeparator,
                                    ECommand::kFaceMakeTagged};
constexpr ECommand kVertexMenu[] = {ECommand::kVertexSelect,
                                    ECommand::kVertexSelectAll,
                                    ECommand::kVertexDeselectAll,
                                    ECommand::kVertexInvert,
                                    kSeparator,
                                    ECommand::kMenuCurrentVertex,
                                    ECommand::kMenuMoveVertex,
                                    ECommand::kMenuMoveSelection,
                                    kSeparator,
                                    ECommand::kVertexCoordinates,
                                    ECommand::kVertexPlane,
                                    kSeparator,
                                    ECommand::kVertexGroups,
                                    kSeparator,
                                    ECommand::kVertexDelete,
                                    ECommand::kVertexDeleteSelected};
constexpr ECommand kCurrentVertexMenu[] = {ECommand::kVertexCycle,
                                           ECommand::kVertexReverseCycle,
                                           kSeparator,
                                           ECommand::kVertexCycleSelected,
                                           ECommand::kVertexReverseCycleSelected,
                                           kSeparator,
                                           ECommand::kVertexCycleFace,
                                           ECommand::kVertexReverseCycleFace,
                                           ECommand::kVertexFirstOfFace,
                                           ECommand::kVertexLastOfFace,
                                           kSeparator,
                                           ECommand::kVertexNone};
constexpr ECommand kMoveVertexMenu[] = {
    ECommand::kVertexMoveX,        ECommand::kVertexMoveY,        ECommand::kVertexMoveZ,       kSeparator,
    ECommand::kVertexReverseMoveX, ECommand::kVertexReverseMoveY, ECommand::kVertexReverseMoveZ};
constexpr ECommand kMoveSelectionMenu[] = {
    ECommand::kVertexMoveSelectionX,        ECommand::kVertexMoveSelectionY,
    ECommand::kVertexMoveSelectionZ,        kSeparator,
    ECommand::kVertexReverseMoveSelectionX, ECommand::kVertexReverseMoveSelectionY,
    ECommand::kVertexReverseMoveSelectionZ};
constexpr ECommand kTextureMenu[] = {ECommand::kTextureMapping,
                                     ECommand::kTextureMapFace,
                                     ECommand::kTextureNormalize,
                                     kSeparator,
                                     ECommand::kTextureFlipX,
                                     ECommand::kTextureFlipY,
                                     ECommand::kTextureRotate,
                                     ECommand::kMenuOffset,
                                     ECommand::kTextureLock,
                                     kSeparator,
                                     ECommand::kTextureBrowser,
                                     ECommand::kTextureAssign,
                                     ECommand::kTextureLoad,
                                     ECommand::kTextureAnimation,
                                     kSeparator,
                                     ECommand::kTextureImport,
                                     ECommand::kTexturePaste,
                                     kSeparator,
                                     ECommand::kTextureExport,
                                     ECommand::kTextureChange,
                                     ECommand::kTextureColors,
                                     ECommand::kTextureEdit};
constexpr ECommand kOffsetMenu[] = {ECommand::kTextureOffsetU, ECommand::kTextureReverseOffsetU, kSeparator,
                                    ECommand::kTextureOffsetV, ECommand::kTextureReverseOffsetV};
constexpr ECommand kToolsMenu[] = {ECommand::kToolsTruckEditor, ECommand::kToolsNewTruck, kSeparator,
                                   ECommand::kToolsExtractor,   ECommand::kToolsCreator,  kSeparator,
                                   ECommand::kToolsStockList,   ECommand::kToolsSetUp};
constexpr ECommand kWindowMenu[] = {ECommand::kWindowNew,
                                    kSeparator,
                                    ECommand::kWindowCascade,
                                    ECommand::kWindowTile,
                                    ECommand::kWindowFourViews,
                                    kSeparator,
                                    ECommand::kWindowNext,
                                    ECommand::kWindowPrevious,
                                    kSeparator,
                                    ECommand::kWindowList};
constexpr ECommand kHelpMenu[] = {ECommand::kHelpGuide,
                                  ECommand::kHelpKeyboard,
                                  ECommand::kHelpCommandLine,
                                  ECommand::kHelpNews,
                                  kSeparator,
                                  ECommand::kHelpSample,
                                  kSeparator,
                                  ECommand::kHelpAbout};

constexpr SMenuRow kMenus[] = {
    {"menuFile", "&File", kFileMenu},
    {"menuImport", "&Import", kImportMenu, ECommand::kMenuImport},
    {"menuExport", "Ex&port", kExportMenu, ECommand::kMenuExport},
    {"menuEdit", "&Edit", kEditMenu},
    {"menuView", "&View", kViewMenu},
    {"menuSides", "Loo&k From", kSidesMenu, ECommand::kMenuSides},
    {"menuDocks", "Tool Win&dows", kDocksMenu, ECommand::kMenuDocks},
    {"menuSelect", "&Select", kSelectMenu},
    {"menuSelectSame", "Sa&me", kSelectSameMenu, ECommand::kMenuSelectSame},
    {"menuModel", "&Model", kModelMenu},
    {"menuGizmoPivot", "&Gizmo Pivot", kGizmoPivotMenu, ECommand::kMenuGizmoPivot},
    {"menuMake", "Ma&ke", kMakeMenu, ECommand::kMenuMake},
    {"menuMakeMirrored", "Duplicate Mi&rrored", kMakeMirroredMenu, ECommand::kMenuMakeMirrored},
    {"menuInsert", "&Insert", kInsertMenu, ECommand::kMenuInsert},
    {"menuFace", "Fa&ce", kFaceMenu},
    {"menuCurrentFace", "C&urrent Face", kCurrentFaceMenu, ECommand::kMenuCurrentFace},
    {"menuTagged", "&Tagged Face Vertices", kTaggedMenu, ECommand::kMenuTagged},
    {"menuVertex", "Ve&rtex", kVertexMenu},
    {"menuCurrentVertex", "C&urrent Vertex", kCurrentVertexMenu, ECommand::kMenuCurrentVertex},
    {"menuMoveVertex", "&Move Current Vertex", kMoveVertexMenu, ECommand::kMenuMoveVertex},
    {"menuMoveSelection", "Mo&ve Selection", kMoveSelectionMenu, ECommand::kMenuMoveSelection},
    {"menuTexture", "&Texture", kTextureMenu},
    {"menuOffset", "&Offset Corner", kOffsetMenu, ECommand::kMenuOffset},
    {"menuTools", "T&ools", kToolsMenu},
    {"menuWindow", "&Window", kWindowMenu},
    {"menuHelp", "&Help", kHelpMenu},
};

constexpr ECommand kFaceItems[] = {ECommand::kFaceEdit,
                                   ECommand::kTextureMapping,
                                   ECommand::kFaceGroupType,
                                   ECommand::kFaceFlip,
                                   kSeparator,
                                   ECommand::kFaceSelect,
                                   ECommand::kFaceSelectAll,
                                   ECommand::kFaceDeselectAll,
                                   ECommand::kFaceInvert,
                                   ECommand::kFaceGroups,
                                   kSeparator,
                                   ECommand::kFaceDelete,
                                   ECommand::kFaceDeleteSelected};
constexpr ECommand kVertexItems[] = {ECommand::kVertexCoordinates,
                                     ECommand::kVertexPlane,
                                     ECommand::kFaceTag,
                                     ECommand::kFaceMakeTagged,
                                     kSeparator,
                                     ECommand::kVertexSelect,
                                     ECommand::kVertexSelectAll,
                                     ECommand::kVertexDeselectAll,
                                     ECommand::kVertexInvert,
                                     ECommand::kVertexGroups,
                                     kSeparator,
                                     ECommand::kVertexDelete,
                                     ECommand::kVertexDeleteSelected};
constexpr SMenuRow kFaceItemMenu = {"menuFaceItems", "", kFaceItems};
constexpr SMenuRow kVertexItemMenu = {"menuVertexItems", "", kVertexItems};

constexpr ECommand kToolBar[] = {ECommand::kFileNew,
                                 ECommand::kFileOpen,
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

std::span<const SMenuRow> MenuRows() {
  return kMenus;
}

const SMenuRow& ItemMenu(EGroupKind kind) {
  return kind == EGroupKind::kFaces ? kFaceItemMenu : kVertexItemMenu;
}

std::span<const ECommand> ToolBarCommands() {
  return kToolBar;
}

}  // namespace veldra

#pragma once

#include <cstdint>

namespace veldra {

/// The commands and submenus of the main window. Their rows stand in commands_<menu>.cpp, their places in
/// commandmenus.cpp.
enum class ECommand : int32_t {
  kNone,  ///< a separator in menus and tool bars
  // --- File
  kFileNew,
  kFileOpen,
  kFileClose,
  kFileSave,
  kFileSaveAs,
  kFileReload,
  kFileEarlierStates,
  kFileRecover,
  kMenuImport,  ///< submenu
  kImport3ds,
  kImportWavefront,
  kMenuExport,  ///< submenu
  kExportWavefront,
  kExport3ds,
  kExportVrml,
  kFileTextureList,
  kFileRecent,  ///< the list of recent files
  kFilePreferences,
  kFileExit,
  // --- Edit
  kEditUndo,
  kEditRedo,
  // --- View
  kViewVertices,
  kViewWireframe,
  kViewSolid,
  kViewTextured,
  kViewOnly3D,
  kViewAxes,
  kViewVertexMarkers,
  kViewVertexNumbers,
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
  kViewGrid,
  kViewOrthographic,
  kMenuSides,  ///< submenu
  kViewFront,
  kViewBack,
  kViewLeft,
  kViewRight,
  kViewTop,
  kViewBottom,
  kViewTurnUp,
  kViewTurnDown,
  kViewTurnLeft,
  kViewTurnRight,
  kViewTurnPageUp,
  kViewTurnPageDown,
  // --- Model
  kModelInfo,
  kModelJump,
  kModelCenterAll,
  kModelCenterX,
  kModelCenterY,
  kModelCenterZ,
  kModelResize,
  kModelTranslate,
  kModelRotate,
  kModelMirror,
  kModelAddFace,
  kModelAddVertex,
  kModelDeleteUnused,
  kModelMerge,
  kModelReplaceTexture,
  kMenuInsert,  ///< submenu
  kInsertBin,
  kInsertGenericObject,
  // --- Face
  kMenuCurrentFace,  ///< submenu
  kMenuTagged,       ///< submenu
  kFaceSelect,
  kFaceSelectAll,
  kFaceDeselectAll,
  kFaceInvert,
  kFaceFacing,
  kFaceCycle,
  kFaceReverseCycle,
  kFaceCycleSelected,
  kFaceReverseCycleSelected,
  kFaceNone,
  kFaceEdit,
  kFaceFlip,
  kFaceTag,
  kFaceClearTags,
  kFaceMakeTagged,
  kFaceGroupType,
  kFaceGroups,
  kFaceDelete,
  kFaceDeleteSelected,
  // --- Vertex
  kMenuCurrentVertex,  ///< submenu
  kMenuMoveVertex,     ///< submenu
  kMenuMoveSelection,  ///< submenu
  kVertexSelect,
  kVertexSelectAll,
  kVertexDeselectAll,
  kVertexInvert,
  kVertexCycle,
  kVertexReverseCycle,
  kVertexCycleSelected,
  kVertexReverseCycleSelected,
  kVertexCycleFace,
  kVertexReverseCycleFace,
  kVertexFirstOfFace,
  kVertexLastOfFace,
  kVertexNone,
  kVertexMoveX,
  kVertexMoveY,
  kVertexMoveZ,
  kVertexReverseMoveX,
  kVertexReverseMoveY,
  kVertexReverseMoveZ,
  kVertexMoveSelectionX,
  kVertexMoveSelectionY,
  kVertexMoveSelectionZ,
  kVertexReverseMoveSelectionX,
  kVertexReverseMoveSelectionY,
  kVertexReverseMoveSelectionZ,
  kVertexCoordinates,
  kVertexPlane,
  kVertexGroups,
  kVertexDelete,
  kVertexDeleteSelected,
  // --- Texture
  kMenuOffset,  ///< submenu
  kTextureMapping,
  kTextureNormalize,
  kTextureFlipX,
  kTextureFlipY,
  kTextureRotate,
  kTextureOffsetU,
  kTextureOffsetV,
  kTextureReverseOffsetU,
  kTextureReverseOffsetV,
  kTextureLoad,
  kTextureAnimation,
  // --- Tools
  kToolsTruckEditor,
  kToolsExtractor,
  kToolsCreator,
  kToolsStockList,
  kToolsSetUp,
  // --- Window and Help
  kWindowNew,
  kWindowCascade,
  kWindowTile,
  kWindowNext,
  kWindowPrevious,
  kWindowList,  ///< the list of open windows
  // --- Tool windows
  kMenuDocks,  ///< submenu
  kDockModelTree,
  kDockTextureList,
  kDockCurrentFace,
  kDockVertexStatus,
  kDockModelInfo,
  kHelpGuide,
  kHelpCommandLine,
  kHelpNews,
  kHelpSample,
  kHelpKeyboard,
  kHelpAbout,
};

}  // namespace veldra

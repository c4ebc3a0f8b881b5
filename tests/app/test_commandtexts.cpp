#include <gtest/gtest.h>

#include "app/commands/commandtable.h"

namespace veldra {
namespace {

struct SText {
  const char* name;
  const char* status;
};

/// What users of earlier releases know, spelling and all, written down once more: a table that is only compared with
/// itself could change unnoticed.
constexpr SText kTexts[] = {
    {"save", "Save the active document"},
    {"saveAs", "Saves the active docmunet as an MTM model"},
    {"centerAll", "Centers model relative to all axes"},
    {"centerX", "Centers model relative to the X axis"},
    {"centerY", "Centers model relative to the Y axis"},
    {"centerZ", "Centers model relative to the Z axis"},
    {"resize", "Opens the Resize Model dialog"},
    {"translate", "Opens the Translate Model dialog"},
    {"rotate", "Opens the Rotate Model dialog"},
    {"mirror", "Mirror the model along the X, Y, and Z axes"},
    {"addFace", "Opens the Add Face dialog"},
    {"addVertex", "Opens the Add Vertex dialog"},
    {"deleteUnused", "Deletes all unused vertices"},
    {"mergeVertices", "Merges close vertices into one vertex"},
    {"insertBin", "Inserts a bin model into the active document"},
    {"insertGenericObject", "Inserts a generic object into the active document"},
    {"saveTextureList", "Saves current texture names within an LST file"},
    {"exportWavefront", "Saves active document as a Wavefront file"},
    {"export3ds", "Export model as an Autodesk 3D Studio File"},
    {"exportVrml", "Saves active document as a VRML file"},
    {"replaceTexture", "Replace a currently loaded texture with another"},
    {"undo", "Undoes last action"},
    {"redo", "Redoes last action"},
    {"import3ds", "Import an Autodesk 3D Studio File"},
    {"loadTexture", "Load a new texture into the texture pool"},
    {"keyboard", "Displays all keyboard commands"},
    {"verticesOnly", "Display only the model's vertices\nVertices Only"},
    {"wireframe", "Display model as wireframe\nWireframe"},
    {"solid", "Display model as solid faces\nSolid"},
    {"textured", "Display model with textures\nTextured"},
    {"only3D", "View 3D model only\nView 3D model only"},
    {"axes", "Toggles 3D axis visibility in active view"},
    {"vertexMarkers", "Toggles 3D vertex visibility in active view"},
    {"sphericalMarkers", "Use spheres to mark a point in 3D space"},
    {"highQuality", "Toggles high/low 3D texture rendering in active view"},
    {"transparency", "Render \"Transparent Color #0\"  faces with transparency"},
    {"followFace", "Follow Current Face\nFollow Current Face"},
    {"play", "Rotate model\nToggle Play"},
    {"zoomIn", "Zoom In\nZoom In"},
    {"zoomOut", "Zoom Out\nZoom Out"},
    {"zoomToFit", "Zoom model to fit in 3d-View\nFit to 3d-view"},
    {"background", "Set the active view's background color"},
};

TEST(CommandTexts, AreWhatTheyHaveAlwaysBeen) {
  for (const SText& expected : kTexts) {
    const SCommandRow* row = FindCommand(expected.name);
    ASSERT_NE(row, nullptr) << expected.name;
    // Where only the status bar's text is known, a tool tip may follow.
    const std::string status(row->status);
    const bool has_tip = std::string_view(expected.status).find('\n') != std::string_view::npos;
    EXPECT_EQ(has_tip ? status : status.substr(0, status.find('\n')), expected.status);
  }
}

}  // namespace
}  // namespace veldra

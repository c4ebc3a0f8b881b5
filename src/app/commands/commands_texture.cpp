#include "app/commands/commandrows.h"
#include "app/commands/commandrules.h"
#include "app/textureactions.h"
#include "editing/animationdlg.h"
#include "editing/assigntexturedlg.h"
#include "editing/binmapperdlg.h"
#include "editing/facecommands.h"
#include "editing/normalizedlg.h"
#include "editing/texturecommands.h"
#include "editing/texturetransfer.h"

namespace veldra {

namespace {

constexpr const char* kNeedsCorner = "The current vertex is not one of the current face's, or the face has no texture";

constexpr const char* kNeedsTexture = "Choose a texture in the texture browser, or a face that has one";

/// While a view is seen alone, no tool window can be opened beside it.
bool CanShowMapping(const SCommandTarget& on) {
  return on.view != nullptr && !on.docks.AreAway();
}

void ShowBinMapper(const SCommandTarget& on) {
  CBinMapperDialog(on.Cursor(), &on.window).exec();
}

void AskAssign(const SCommandTarget& on) {
  CAssignTextureDialog dialog(on.Cursor(), &on.window);
  if (dialog.exec() == QDialog::Accepted) AssignTexture(on.Cursor(), on.Model().Texture(dialog.Texture()));
}

bool HasTexture(const SCommandTarget& on) {
  return ChosenTexture(on).has_value();
}

std::string NameOfTexture(const SCommandTarget& on) {
  const auto source = ChosenTexture(on);
  return source ? source->name : "";
}

void AskNormalize(const SCommandTarget& on) {
  CNormalizeDialog dialog(on.Cursor(), &on.window);
  if (dialog.exec() == QDialog::Accepted) NormalizeTexture(on.Cursor(), on.Model().Texture(dialog.Texture()));
}

void AskAnimation(const SCommandTarget& on) {
  const CBinFace* const face = on.Cursor().FaceObject();
  CAnimationDialog dialog(*on.document, face == nullptr ? nullptr : face->Texture(), &on.window);
  if (dialog.exec() == QDialog::Accepted) DefineAnimation(*on.document, dialog.Input(), dialog.Edited());
}

bool IsLocked(const SCommandTarget& on) {
  return on.app.Settings().texture_lock != 0;
}

void ToggleLock(const SCommandTarget& on) {
  int32_t& lock = on.app.Settings().texture_lock;
  lock = lock == 0 ? 1 : 0;
}

const SCommandRow kTextureRows[] = {
    {.id = ECommand::kTextureMapping,
     .name = "textureMapping",
     .text = "Texture &Mapping",
     .status = "Opens the texture-mapping dialog",
     .view_key = "T",
     .when = CanShowMapping,
     .run = WithDocks<&CToolDocks::ShowMapping>},
    {.id = ECommand::kTextureMapFace,
     .name = "binMapper",
     .text = "Map &Current Face...",
     .status = "Maps the current face alone, its corners as numbers\nMap Current Face",
     .view_key = "Shift+T",
     .when = IfCursor<CanMapTexture>,
     .run = ShowBinMapper},
    {.id = ECommand::kTextureNormalize,
     .name = "normalizeTexture",
     .text = "&Normalize Texture...",
     .status = "Normalizes a texture for all faces",
     .view_key = "Ctrl+T",
     .when = IfCursor<CanNormalizeTexture>,
     .run = AskNormalize},
    {.id = ECommand::kTextureFlipX,
     .name = "flipTextureX",
     .text = "Flip Texture &X",
     .status = "Mirrors the texture on the selected faces, or on the current one, from left to right",
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&FlipTexture, ETextureAxis::kU>},
    {.id = ECommand::kTextureFlipY,
     .name = "flipTextureY",
     .text = "Flip Texture &Y",
     .status = "Mirrors the texture on the selected faces, or on the current one, from top to bottom",
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&FlipTexture, ETextureAxis::kV>},
    {.id = ECommand::kTextureRotate,
     .name = "rotateTexture",
     .text = "&Rotate Texture by 90\u00B0",
     .status = "Turns the texture on the selected faces, or on the current one, by 90 degrees",
     .when = IfCursor<CanEditFaces>,
     .run = WithCursor<&RotateTexture>},
    {.id = ECommand::kTextureOffsetU,
     .name = "offsetU",
     .text = "Offset &U",
     .status = "Offsets the horizontal texture coordinate of current face vertex",
     .view_key = "Ctrl+J",
     .needs = kNeedsCorner,
     .when = IfCursor<CanOffsetCorner>,
     .run = WithCursor<&OffsetCorner, ETextureAxis::kU, true>},
    {.id = ECommand::kTextureOffsetV,
     .name = "offsetV",
     .text = "Offset &V",
     .status = "Offsets the vertical texture coordinate of current face vertex",
     .view_key = "Ctrl+K",
     .needs = kNeedsCorner,
     .when = IfCursor<CanOffsetCorner>,
     .run = WithCursor<&OffsetCorner, ETextureAxis::kV, true>},
    {.id = ECommand::kTextureReverseOffsetU,
     .name = "reverseOffsetU",
     .text = "&Reverse-offset U",
     .status = "Reverse-offsets the horizontal texture coordinate of current face vertex",
     .view_key = "Ctrl+Shift+J",
     .needs = kNeedsCorner,
     .when = IfCursor<CanOffsetCorner>,
     .run = WithCursor<&OffsetCorner, ETextureAxis::kU, false>},
    {.id = ECommand::kTextureReverseOffsetV,
     .name = "reverseOffsetV",
     .text = "R&everse-offset V",
     .status = "Reverse-offsets the vertical texture coordinate of current face vertex",
     .view_key = "Ctrl+Shift+K",
     .needs = kNeedsCorner,
     .when = IfCursor<CanOffsetCorner>,
     .run = WithCursor<&OffsetCorner, ETextureAxis::kV, false>},
    {.id = ECommand::kTextureBrowser,
     .name = "textureBrowser",
     .text = "Texture &Browser",
     .status = "Shows the textures of the model, of the folders and of the archives as pictures",
     .key = "Ctrl+B",
     .when = CanShowMapping,
     .run = WithDocks<&CToolDocks::ShowBrowser>},
    {.id = ECommand::kTextureAssign,
     .name = "assignTexture",
     .text = "Assi&gn to Selected Faces...",
     .status = "Gives the selected faces, or the current one, another texture\nAssign Texture",
     .view_key = "Ctrl+Shift+T",
     .when = IfCursor<CanAssignTexture>,
     .run = AskAssign},
    {.id = ECommand::kTextureLoad,
     .name = "loadTexture",
     .text = "&Load Texture...",
     .status = "Load a new texture into the texture pool",
     .when = IfCursor<CanDefineAnimation>,
     .run = WithDocument<&LoadTextures>},
    {.id = ECommand::kTextureImport,
     .name = "importPicture",
     .text = "&Import Picture...",
     .status = "Makes a texture of a PNG, JPEG, BMP or TGA picture\nImport Picture",
     .when = IfCursor<CanDefineAnimation>,
     .run = ImportPicture},
    {.id = ECommand::kTextureLock,
     .name = "textureLock",
     .text = "&Keep In Place",
     .status = "Textures stay in their place where corners move within their face's plane\nKeep Textures In Place",
     .checked = IsLocked,
     .run = ToggleLock},
    {.id = ECommand::kTexturePaste,
     .name = "pastePicture",
     .text = "Paste Pict&ure...",
     .status = "Makes a texture of the picture on the clipboard\nPaste Picture",
     .key = "Ctrl+V",
     .when = IfCursor<CanDefineAnimation>,
     .run = PastePicture},
    {.id = ECommand::kTextureExport,
     .name = "exportPicture",
     .text = "Ex&port Picture...",
     .status = "Writes a texture as a PNG picture, with its colour table or in true colour\nExport Picture",
     .needs = kNeedsTexture,
     .when = HasTexture,
     .object = NameOfTexture,
     .run = ExportPicture},
    {.id = ECommand::kTextureChange,
     .name = "changeTexture",
     .text = "&Size and Colours...",
     .status = "Gives a texture another width, or the colours of another table\nSize and Colours",
     .needs = kNeedsTexture,
     .when = HasTexture,
     .object = NameOfTexture,
     .run = ChangeTexture},
    {.id = ECommand::kTextureColors,
     .name = "colorTable",
     .text = "Colour &Table...",
     .status = "Shows the colours of a texture, or the default ones, to be changed and exchanged\nColour Table",
     .when = HasDocument,
     .object = NameOfTexture,
     .run = EditColorTable},
    {.id = ECommand::kTextureEdit,
     .name = "editPicture",
     .text = "E&dit in Other Program...",
     .status = "Opens a texture in a program for pictures, and takes in what is saved there\nEdit in Other Program",
     .needs = kNeedsTexture,
     .when = HasTexture,
     .object = NameOfTexture,
     .run = EditPicture},
    {.id = ECommand::kTextureAnimation,
     .name = "defineAnimation",
     .text = "Define &Animation...",
     .status = "Opens the Define Animation dialog",
     .when = IfCursor<CanDefineAnimation>,
     .run = AskAnimation},
};

}  // namespace

std::span<const SCommandRow> TextureCommands() {
  return kTextureRows;
}

}  // namespace veldra

#include "app/commands/commandrows.h"
#include "app/commands/editrules.h"
#include "view/editcommands.h"

namespace veldra {

namespace {

const SCommandRow kRows[] = {
    {.id = ECommand::kTextureMapping,
     .name = "binMapper",
     .text = "Texture &Mapping...",
     .status = "Opens the texture-mapping dialog",
     .view_key = "T",
     .when = If<CanMapTexture>,
     .handler = &CEditCommands::OpenBinMapper},
    {.id = ECommand::kTextureNormalize,
     .name = "normalizeTexture",
     .text = "&Normalize Texture...",
     .status = "Normalizes a texture for all faces",
     .view_key = "Ctrl+T",
     .when = If<CanNormalizeTexture>,
     .handler = &CEditCommands::NormalizeTexture},
    {.id = ECommand::kTextureFlipX,
     .name = "flipTextureX",
     .text = "Flip Texture &X",
     .status = "Mirrors the texture on the selected faces, or on the current one, from left to right",
     .when = If<CanEditFaces>,
     .handler = &CEditCommands::FlipTextureX},
    {.id = ECommand::kTextureFlipY,
     .name = "flipTextureY",
     .text = "Flip Texture &Y",
     .status = "Mirrors the texture on the selected faces, or on the current one, from top to bottom",
     .when = If<CanEditFaces>,
     .handler = &CEditCommands::FlipTextureY},
    {.id = ECommand::kTextureRotate,
     .name = "rotateTexture",
     .text = "&Rotate Texture by 90\u00B0",
     .status = "Turns the texture on the selected faces, or on the current one, by 90 degrees",
     .when = If<CanEditFaces>,
     .handler = &CEditCommands::RotateTexture},
    {.id = ECommand::kTextureOffsetU,
     .name = "offsetU",
     .text = "Offset &U",
     .status = "Offsets the horizontal texture coordinate of current face vertex",
     .view_key = "Ctrl+J",
     .when = If<CanOffsetCorner>,
     .handler = &CEditCommands::OffsetU},
    {.id = ECommand::kTextureOffsetV,
     .name = "offsetV",
     .text = "Offset &V",
     .status = "Offsets the vertical texture coordinate of current face vertex",
     .view_key = "Ctrl+K",
     .when = If<CanOffsetCorner>,
     .handler = &CEditCommands::OffsetV},
    {.id = ECommand::kTextureReverseOffsetU,
     .name = "reverseOffsetU",
     .text = "&Reverse-offset U",
     .status = "Reverse-offsets the horizontal texture coordinate of current face vertex",
     .view_key = "Ctrl+Shift+J",
     .when = If<CanOffsetCorner>,
     .handler = &CEditCommands::ReverseOffsetU},
    {.id = ECommand::kTextureReverseOffsetV,
     .name = "reverseOffsetV",
     .text = "R&everse-offset V",
     .status = "Reverse-offsets the vertical texture coordinate of current face vertex",
     .view_key = "Ctrl+Shift+K",
     .when = If<CanOffsetCorner>,
     .handler = &CEditCommands::ReverseOffsetV},
    {.id = ECommand::kTextureLoad,
     .name = "loadTexture",
     .text = "&Load Texture...",
     .status = "Adds textures to the model",
     .when = If<CanDefineAnimation>,
     .handler = &CEditCommands::LoadTexture},
    {.id = ECommand::kTextureAnimation,
     .name = "defineAnimation",
     .text = "Define &Animation...",
     .status = "Opens the Define Animation dialog",
     .when = If<CanDefineAnimation>,
     .handler = &CEditCommands::DefineAnimation},
};

}  // namespace

std::span<const SCommandRow> TextureCommands() {
  return kRows;
}

}  // namespace veldra

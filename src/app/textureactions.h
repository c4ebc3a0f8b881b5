#pragma once

#include <optional>

#include "app/commands/commandtarget.h"
#include "editing/texturefilecommands.h"

/// What the Texture menu does with the files of one texture.
namespace veldra {

/// The texture that is chosen in the open browser, else that in the open mapping editor, else that of the current face,
/// else of the first selected one.
std::optional<STextureSource> ChosenTexture(const SCommandTarget& on);

void ImportPicture(const SCommandTarget& on);
void PastePicture(const SCommandTarget& on);
void ExportPicture(const SCommandTarget& on);
void ChangeTexture(const SCommandTarget& on);
/// Of that texture; without one the default table.
void EditColorTable(const SCommandTarget& on);
void EditPicture(const SCommandTarget& on);

}  // namespace veldra

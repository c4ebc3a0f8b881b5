#pragma once

#include <QMimeData>
#include <QWidget>
#include <vector>

#include "editing/pictureimport.h"

/// Pictures that are dropped onto the main window or pasted.
namespace veldra {

/// DATA has pictures, in files or by itself.
bool HasPicture(const QMimeData& data);
/// Those that can be read; the user has been told of the others.
std::vector<SOpenPicture> PicturesIn(const QMimeData& data, CTarnDoc& document);
/// The dialog that makes a texture of PICTURE, and what follows.
void AskAndImport(CTarnDoc& document, const SOpenPicture& picture, QWidget* parent);

}  // namespace veldra

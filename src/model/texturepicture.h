#pragma once

#include <QComboBox>
#include <QImage>
#include <QPainter>
#include <QPixmap>

#include "model/binmodel.h"
#include "platform/png.h"
#include "textures/texturefiles.h"

namespace veldra {

/// The texture, upright and without holes, SIDE pixels a side on SCREEN_OF's screen.
QPixmap TexturePicture(const STextureImage& image, int side, const QWidget& screen_of);
/// At most SIDE pixels a side; null when PICTURE has no pixels.
QPixmap PictureOf(const SImage& picture, int side, const QWidget& screen_of);
/// Upright, a pixel a texel; those that the game lets through have no alpha, but keep their colours.
QImage ImageOf(const SIndexedTexture& texture);
QImage ImageOf(const STextureImage& image);
/// "136 colours, 2,493 texels transparent"
QString TexelCounts(const SIndexedTexture& texture);
/// What shows through where a texel is transparent.
void PaintChecks(QPainter& painter, const QRect& area);

/// "METAL.RAW, 256 x 256, used by 12 faces", with what an animation has beyond that.
QString TextureText(const CBinTexture& texture);

/// All texture entries of MODEL with small pictures, in its order; the data of each item is its position.
void FillWithTextures(QComboBox& box, const CBinModel& model);

}  // namespace veldra

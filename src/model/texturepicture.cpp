#include "model/texturepicture.h"

#include <QCoreApplication>

#include "platform/text.h"
#include "textures/nearblack.h"
#include "textures/rawtexture.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kIconSide = 24;

QPixmap Scaled(const QImage& image, int side, const QWidget& screen_of) {
  const qreal ratio = screen_of.devicePixelRatioF();
  const QSize room = QSize(side, side) * ratio;
  QPixmap pixmap = QPixmap::fromImage(image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(ratio);
  return pixmap;
}

}  // namespace

QPixmap TexturePicture(const STextureImage& image, int side, const QWidget& screen_of) {
  const QImage upside_down(image.rgb.data(), image.size, image.size, qsizetype{3} * image.size, QImage::Format_RGB888);
  return Scaled(upside_down.mirrored(), side, screen_of);
}

QPixmap PictureOf(const SImage& picture, int side, const QWidget& screen_of) {
  if (picture.rgba.empty()) return {};
  const QImage image(picture.rgba.data(), picture.width, picture.height, qsizetype{4} * picture.width,
                     QImage::Format_RGBA8888);
  return Scaled(image, side, screen_of);
}

QImage ImageOf(const SIndexedTexture& texture) {
  const int side = TextureSizeOfLength(texture.indices.size());
  const QImage indexed = [&] {
    QImage image(texture.indices.data(), side, side, side, QImage::Format_Indexed8);
    for (int i = 0; i < 256; ++i) {
      const uint8_t* const color = &texture.colors[size_t{3} * static_cast<size_t>(i)];
      const int alpha = IsNearBlack(color[0], color[1], color[2]) ? 0 : 255;
      image.setColor(i, qRgba(color[0], color[1], color[2], alpha));
    }
    return image;
  }();
  return indexed.convertToFormat(QImage::Format_ARGB32);
}

QImage ImageOf(const STextureImage& image) {
  const QImage view(image.rgba.data(), image.size, image.size, qsizetype{4} * image.size, QImage::Format_RGBA8888);
  return view.convertToFormat(QImage::Format_ARGB32);
}

QString TexelCounts(const SIndexedTexture& texture) {
  return QObject::tr("%1 colours, %L2 texels transparent").arg(ColorCount(texture)).arg(TransparentCount(texture));
}

void PaintChecks(QPainter& painter, const QRect& area) {
  constexpr int kCheck = 8;
  painter.save();
  painter.setClipRect(area, Qt::IntersectClip);
  painter.fillRect(area, QColor(150, 150, 150));
  for (int y = 0; y < area.height(); y += kCheck)
    for (int x = y / kCheck % 2 * kCheck; x < area.width(); x += 2 * kCheck)
      painter.fillRect(area.x() + x, area.y() + y, kCheck, kCheck, QColor(190, 190, 190));
  painter.restore();
}

QString TextureText(const CBinTexture& texture) {
  std::string text = DisplayName(texture.Name());
  const bool is_animated = texture.Kind() == ETextureKind::kAnimated;
  if (is_animated) text += Format(", animation of %zu frames", texture.Frames().size());
  text += Format(", %d x %d, ", texture.Width(), texture.Width());
  const int32_t count = texture.UseCount();
  text += count == 0 ? "not used" : Format("used by %d %s", count, count == 1 ? "face" : "faces");
  return ToQString(text);
}

void FillWithTextures(QComboBox& box, const CBinModel& model) {
  box.setIconSize({kIconSide, kIconSide});
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& texture = model.Texture(i);
    box.addItem(TexturePicture(*texture.Image(), kIconSide, box), TextureText(texture), i);
  }
}

}  // namespace veldra

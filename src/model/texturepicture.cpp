#include "model/texturepicture.h"

#include <QCoreApplication>

#include "platform/text.h"
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

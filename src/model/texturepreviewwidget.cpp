#include "model/texturepreviewwidget.h"

#include <algorithm>

#include "model/texturepicture.h"

namespace veldra {

CTexturePreview::CTexturePreview(QWidget* parent) : QWidget(parent) {
  setMinimumSize(64, 64);
}

void CTexturePreview::SetImage(const QImage& image) {
  image_ = image;
  update();
}

void CTexturePreview::ShowTransparent(bool is_on) {
  shows_transparent_ = is_on;
  update();
}

void CTexturePreview::paintEvent(QPaintEvent*) {
  if (image_.isNull()) return;
  const int room = std::min(width(), height());
  // Texels of one size, where there is a pixel for each.
  const int side = room >= image_.width() ? room / image_.width() * image_.width() : room;
  const QRect area((width() - side) / 2, (height() - side) / 2, side, side);
  QPainter painter(this);
  PaintChecks(painter, area);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, side < image_.width());
  painter.drawImage(area, shows_transparent_ ? image_ : image_.convertToFormat(QImage::Format_RGB32));
}

}  // namespace veldra

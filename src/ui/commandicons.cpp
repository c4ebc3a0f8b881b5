#include "ui/commandicons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <algorithm>

namespace veldra {

namespace {

constexpr int kSmallestSide = 16;
constexpr int kLargestSide = 128;

/// The two colours of an icon.
struct SInks {
  QColor line;
  QColor accent;
};

/// Made from the icon's SVG file by the build: to read that takes a plugin, and longer.
QString PngPath(const QString& name, int side) {
  return QStringLiteral(":/icons/%1-%2.png").arg(name).arg(side);
}

/// From the smallest of the PNG files that is large enough.
QImage ReadPng(const QString& name, const QSize& size) {
  const int wanted = std::max(size.width(), size.height());
  QString path;
  for (int side = kSmallestSide; side <= kLargestSide; ++side) {
    if (QFile::exists(PngPath(name, side))) path = PngPath(name, side);
    if (side >= wanted && !path.isEmpty()) break;
  }
  const QImage image(path);
  return image.isNull() ? image : image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// A pixel's blue says how much of the accent is in it.
QImage Colored(const QImage& image, const SInks& inks) {
  const auto mix = [](int line, int accent, int share) { return (line * (255 - share) + accent * share) / 255; };
  QImage colored = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < colored.height(); ++y) {
    for (int x = 0; x < colored.width(); ++x) {
      const QRgb pixel = colored.pixel(x, y);
      const int share = qBlue(pixel);
      colored.setPixel(
          x, y,
          qRgba(mix(inks.line.red(), inks.accent.red(), share), mix(inks.line.green(), inks.accent.green(), share),
                mix(inks.line.blue(), inks.accent.blue(), share), qAlpha(pixel)));
    }
  }
  return colored;
}

QColor Mixed(const QColor& a, const QColor& b) {
  return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

/// Draws the icon anew for each size and palette, so that icons are sharp everywhere and follow the theme.
class CLineIconEngine : public QIconEngine {
 public:
  explicit CLineIconEngine(const QString& name) : name_(name) {}

  QIconEngine* clone() const override { return new CLineIconEngine(*this); }
  bool isNull() override { return false; }
  QString key() const override { return QStringLiteral("veldra-line"); }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QPalette palette = QApplication::palette();
    const QColor background = palette.color(QPalette::Button);
    const bool disabled = mode == QIcon::Disabled;
    const QColor active = palette.color(QPalette::Active, QPalette::ButtonText);
    const QColor line = disabled ? Mixed(active, Mixed(active, background)).toRgb() : active;
    const QColor accent = background.lightness() < 128 ? QColor(0x6c, 0xb6, 0xff) : QColor(0x1f, 0x6f, 0xc4);
    const QColor pale = Mixed(Mixed(line, background), background);
    return Kept(size, disabled ? SInks{pale, pale} : SInks{line, accent});
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
  }

 private:
  QPixmap Kept(const QSize& size, const SInks& inks) const {
    const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(inks.line.name(), inks.accent.name());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    pixmap = QPixmap::fromImage(Colored(ReadPng(name_, size), inks));
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }

  QString name_;
};

}  // namespace

QIcon CommandIcon(const QString& name) {
  const bool is_there = QFile::exists(PngPath(name, kSmallestSide));
  return is_there ? QIcon(new CLineIconEngine(name)) : QIcon();
}

QIcon ProgramIcon() {
  QIcon icon;
  for (int side = kSmallestSide; side <= kLargestSide; side *= 2) {
    const QPixmap picture(PngPath(QStringLiteral("veldra"), side));
    if (!picture.isNull()) icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace veldra

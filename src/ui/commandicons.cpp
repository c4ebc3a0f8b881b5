#include "ui/commandicons.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

namespace veldra {

namespace {

constexpr const char* kLineColor = "#000000";
constexpr const char* kAccentColor = "#0000ff";
constexpr int kSmallestSide = 16;

QString IconPath(const QString& name) {
  return QStringLiteral(":/icons/%1.svg").arg(name);
}

QPixmap RenderSvg(QByteArray svg, const QSize& size) {
  QBuffer buffer(&svg);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer, "svg");
  reader.setScaledSize(size);
  return QPixmap::fromImage(reader.read());
}

QColor Mixed(const QColor& a, const QColor& b) {
  return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

/// Renders the SVG text anew for each size and palette, so that icons are sharp everywhere and follow the theme.
class CSvgIconEngine : public QIconEngine {
 public:
  explicit CSvgIconEngine(const QString& path) : path_(path) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) svg_ = file.readAll();
  }

  QIconEngine* clone() const override { return new CSvgIconEngine(*this); }
  bool isNull() override { return svg_.isEmpty(); }
  QString key() const override { return QStringLiteral("veldra-svg"); }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const QPalette palette = QApplication::palette();
    const QColor background = palette.color(QPalette::Button);
    const bool disabled = mode == QIcon::Disabled;
    const QColor active = palette.color(QPalette::Active, QPalette::ButtonText);
    const QColor line = disabled ? Mixed(active, Mixed(active, background)).toRgb() : active;
    const QColor accent = background.lightness() < 128 ? QColor(0x6c, 0xb6, 0xff) : QColor(0x1f, 0x6f, 0xc4);
    return Draw(size, disabled ? Mixed(Mixed(line, background), background) : line,
                disabled ? Mixed(Mixed(line, background), background) : accent);
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(rect.size() * ratio, mode, state));
  }

 private:
  QPixmap Draw(const QSize& size, const QColor& line, const QColor& accent) const {
    const QString key = QStringLiteral("%1 %2x%3 %4 %5")
                            .arg(path_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(line.name(), accent.name());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    QByteArray svg = svg_;
    svg.replace(kAccentColor, accent.name().toUtf8());
    svg.replace(kLineColor, line.name().toUtf8());
    pixmap = RenderSvg(svg, size);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }

  QString path_;
  QByteArray svg_;
};

bool CanReadSvg() {
  static const bool can_read = QImageReader::supportedImageFormats().contains("svg");
  return can_read;
}

}  // namespace

QIcon CommandIcon(const QString& name) {
  if (!CanReadSvg() || !QFile::exists(IconPath(name))) return {};
  return QIcon(new CSvgIconEngine(IconPath(name)));
}

QIcon ProgramIcon() {
  QIcon icon;
  if (!CanReadSvg()) return icon;
  QFile file(IconPath(QStringLiteral("veldra")));
  if (!file.open(QIODevice::ReadOnly)) return icon;
  const QByteArray svg = file.readAll();
  for (int side = kSmallestSide; side <= 256; side *= 2)
    icon.addPixmap(RenderSvg(svg, QSize(side, side)));
  return icon;
}

}  // namespace veldra

#pragma once

#include <QImage>
#include <QWidget>

namespace veldra {

/// A texture as large as there is room for, over checks where it is transparent.
class CTexturePreview : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kSide = 256;

  explicit CTexturePreview(QWidget* parent = nullptr);
  /// As ImageOf makes it; a null one for nothing.
  void SetImage(const QImage& image);
  const QImage& Image() const { return image_; }
  /// Switched off, texels that the game lets through are shown in their colours.
  void ShowTransparent(bool is_on);

  QSize sizeHint() const override { return {kSide, kSide}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image_;
  bool shows_transparent_ = true;
};

}  // namespace veldra

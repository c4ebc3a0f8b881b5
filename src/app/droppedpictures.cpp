#include "app/droppedpictures.h"

#include <QImage>
#include <QUrl>

#include "editing/importpicturedlg.h"
#include "platform/paths.h"
#include "platform/picture.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

QStringList PictureFiles(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile() && IsPictureName(url.fileName().toStdString())) files.append(url.toLocalFile());
  return files;
}

SImage ImageFrom(const QImage& image) {
  const QImage rgba = image.convertToFormat(QImage::Format_RGBA8888);
  SImage made = {rgba.width(), rgba.height(), {}};
  for (int y = 0; y < rgba.height(); ++y)
    made.rgba.insert(made.rgba.end(), rgba.constScanLine(y), rgba.constScanLine(y) + qsizetype{4} * rgba.width());
  return made;
}

bool IsSuitable(const QImage& image) {
  return !image.isNull() && image.width() <= kLargestImageSide && image.height() <= kLargestImageSide;
}

}  // namespace

bool HasPicture(const QMimeData& data) {
  return data.hasImage() || !PictureFiles(data).isEmpty();
}

std::vector<SOpenPicture> PicturesIn(const QMimeData& data, CTarnDoc& document) {
  std::vector<SOpenPicture> pictures;
  for (const QString& file : PictureFiles(data))
    if (auto picture = OpenPicture(document, ToNativePath(file))) pictures.push_back(std::move(*picture));
  if (!pictures.empty() || !data.hasImage()) return pictures;
  const auto image = qvariant_cast<QImage>(data.imageData());
  if (IsSuitable(image)) pictures.push_back({{}, ImageFrom(image)});
  return pictures;
}

void AskAndImport(CTarnDoc& document, const SOpenPicture& picture, QWidget* parent) {
  CImportPictureDialog dialog(picture, document.Services().textures.DefaultColors(), parent);
  if (dialog.exec() == QDialog::Accepted) SaveTextureOfPicture(document, picture.path, dialog.Texture());
}

}  // namespace veldra

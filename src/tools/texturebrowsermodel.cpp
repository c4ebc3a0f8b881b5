#include "tools/texturebrowsermodel.h"

#include <QElapsedTimer>
#include <QFont>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "model/texturepicture.h"
#include "packing/modeltextures.h"
#include "platform/text.h"
#include "textures/rawtexture.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kMemory = 32 << 20;  ///< bytes of pictures that are kept
constexpr size_t kMostWanted = 400;
constexpr int kSliceMs = 10;
constexpr int kMarkSide = 20;

QString NumberOfFaces(int faces) {
  return ToQString(Counted(faces, "face", "faces"));
}

}  // namespace

STextureFiles SBrowserTexture::Read() const {
  if (image != nullptr) return image->is_stand_in ? STextureFiles{} : FilesOf(*image);
  return source ? ReadTextureSource(source->raw, source->colors) : STextureFiles{};
}

QString DetailsOf(const SBrowserTexture& texture) {
  QStringList lines = {NameToQString(texture.name)};
  if (texture.is_animation) lines += QObject::tr("Animation; its first frame is shown");
  if (texture.size > 0) lines += QObject::tr("%1 x %1 texels").arg(texture.size);
  lines += texture.has_own_colors ? QObject::tr("Colour table of its own") : QObject::tr("Default colour table");
  if (texture.IsOfModel())
    lines += texture.faces == 0 ? QObject::tr("Of the model, not used")
                                : QObject::tr("Used by %1").arg(NumberOfFaces(texture.faces));
  if (!texture.place.empty()) lines += ToQString(texture.place);
  if (!texture.fault.empty()) lines += ToQString(texture.fault);
  return lines.join('\n');
}

CTextureBrowserRows::CTextureBrowserRows(const QWidget& owner, std::function<ColorTable()> defaults)
    : owner_(owner), defaults_(std::move(defaults)), pictures_(kMemory) {
  making_.setSingleShot(true);
  connect(&making_, &QTimer::timeout, this, &CTextureBrowserRows::MakeSome);
}

QSize CTextureBrowserRows::CellSize() const {
  const QFontMetrics metrics = owner_.fontMetrics();
  const int width = std::max(kPictureSide + 16, metrics.horizontalAdvance("MMMMMMMM.RAW"));
  return {width, kPictureSide + 2 * metrics.lineSpacing() + 14};
}

void CTextureBrowserRows::SetTextures(std::vector<SBrowserTexture> textures) {
  beginResetModel();
  textures_ = std::move(textures);
  wanted_.clear();
  endResetModel();
}

void CTextureBrowserRows::ForgetPictures() {
  pictures_.clear();
  if (!textures_.empty()) emit dataChanged(index(0), index(rowCount({}) - 1), {Qt::DecorationRole});
}

const SBrowserTexture* CTextureBrowserRows::Texture(int row) const {
  return row < 0 || row >= rowCount({}) ? nullptr : &textures_[static_cast<size_t>(row)];
}

int CTextureBrowserRows::RowOf(const std::string& name) const {
  const auto found = std::ranges::find(textures_, name, &SBrowserTexture::name);
  return found == textures_.end() ? -1 : static_cast<int>(found - textures_.begin());
}

QVariant CTextureBrowserRows::data(const QModelIndex& index, int role) const {
  const SBrowserTexture* const texture = Texture(index.row());
  if (texture == nullptr) return {};
  if (role == Qt::ToolTipRole) return ToolTipText(DetailsOf(*texture));
  if (role == Qt::SizeHintRole) return CellSize();
  if (role == Qt::DecorationRole) return Picture(index.row());
  if (role == Qt::FontRole && texture->IsOfModel()) {
    QFont font = owner_.font();
    font.setBold(true);
    return font;
  }
  if (role != Qt::DisplayRole) return {};
  const QString below = texture->IsOfModel() ? NumberOfFaces(texture->faces) : tr("%1 x %1").arg(texture->size);
  return NameToQString(texture->name) + '\n' + below;
}

// --- Pictures --------------------------------------------------------------------------------------------------------

/// Other texels under the same name are another picture.
QString CTextureBrowserRows::KeyOf(const SBrowserTexture& texture) const {
  if (texture.image != nullptr) return QString::number(texture.image->id.Number());
  return texture.source ? ToQString(CTexturePlaces::PathOf(texture.source->raw)) : QString();
}

QPixmap CTextureBrowserRows::Picture(int row) const {
  const SBrowserTexture& texture = *Texture(row);
  if (const QPixmap* picture = pictures_.object(KeyOf(texture))) return *picture;
  // What has scrolled by meanwhile is asked for again when it comes back.
  if (wanted_.size() >= kMostWanted) wanted_.erase(wanted_.begin(), wanted_.begin() + kMostWanted / 2);
  wanted_.push_back(row);
  if (!making_.isActive()) making_.start(0);
  QPixmap none(QSize(kPictureSide, kPictureSide) * owner_.devicePixelRatioF());
  none.setDevicePixelRatio(owner_.devicePixelRatioF());
  none.fill(Qt::transparent);
  return none;
}

QPixmap CTextureBrowserRows::MakePicture(const SBrowserTexture& texture) const {
  const qreal ratio = owner_.devicePixelRatioF();
  QPixmap picture(QSize(kPictureSide, kPictureSide) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  const QRect area(0, 0, kPictureSide, kPictureSide);
  const auto raw = texture.image != nullptr ? std::nullopt : RawTextureOf(texture.Read(), defaults_(), nullptr);
  const QImage image = texture.image != nullptr ? ImageOf(*texture.image) : raw ? ImageOf(raw->texels) : QImage();
  if (!image.isNull()) {
    PaintChecks(painter, area);
    painter.drawImage(area, image.scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  if (!texture.fault.empty() || image.isNull()) {
    const QIcon mark = owner_.style()->standardIcon(QStyle::SP_MessageBoxWarning);
    mark.paint(&painter, area.right() - kMarkSide, area.bottom() - kMarkSide, kMarkSide, kMarkSide);
  }
  return picture;
}

void CTextureBrowserRows::MakeSome() {
  QElapsedTimer time;
  time.start();
  while (!wanted_.empty() && time.elapsed() < kSliceMs) {
    const int row = wanted_.back();
    wanted_.pop_back();
    const SBrowserTexture* const texture = Texture(row);
    if (texture == nullptr || pictures_.contains(KeyOf(*texture))) continue;
    auto* picture = new QPixmap(MakePicture(*texture));
    ++made_;
    pictures_.insert(KeyOf(*texture), picture, qsizetype{4} * picture->width() * picture->height());
    emit dataChanged(index(row), index(row), {Qt::DecorationRole});
  }
  if (!wanted_.empty()) making_.start(0);
}

}  // namespace veldra

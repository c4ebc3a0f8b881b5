#include "editing/importpicturedlg.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "model/texturepicture.h"
#include "platform/paths.h"
#include "textures/nearblack.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kResultSide = 256;
enum EPalette { kOwn, kDefault, kFile };

/// What shows through where a texel is transparent.
void PaintChecks(QPainter& painter, int side) {
  constexpr int kCheck = 8;
  for (int y = 0; y < side; y += kCheck)
    for (int x = 0; x < side; x += kCheck)
      painter.fillRect(x, y, kCheck, kCheck, (x + y) / kCheck % 2 == 0 ? QColor(150, 150, 150) : QColor(190, 190, 190));
}

QImage ImageOf(const SIndexedTexture& texture, int size) {
  QImage image(size, size, QImage::Format_ARGB32);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const uint8_t index =
          texture.indices[static_cast<size_t>(y) * static_cast<size_t>(size) + static_cast<size_t>(x)];
      const uint8_t* const color = &texture.colors[size_t{3} * index];
      const int alpha = IsNearBlack(color[0], color[1], color[2]) ? 0 : 255;
      image.setPixelColor(x, y, QColor(color[0], color[1], color[2], alpha));
    }
  }
  return image;
}

}  // namespace

// --- The original ----------------------------------------------------------------------------------------------------

CCropView::CCropView(const SImage& picture)
    : size_(picture.width, picture.height), band_(new QRubberBand(QRubberBand::Rectangle, this)) {
  setObjectName("original");
  setPixmap(PictureOf(picture, kSide, *this));
  const QSizeF shown = pixmap().deviceIndependentSize();
  scale_ = shown.width() / std::max(1, picture.width);
  setFixedSize(shown.toSize().expandedTo({32, 32}));
  setAlignment(Qt::AlignTop | Qt::AlignLeft);
  setCursor(Qt::CrossCursor);
  setToolTip(tr("Drag over the part that is wanted, with Shift a square; a click takes all of it again"));
}

void CCropView::SetCrop(const std::optional<SPictureCrop>& crop) {
  crop_ = crop;
  ShowCrop();
  emit CropChanged();
}

void CCropView::ShowCrop() {
  band_->setVisible(crop_.has_value());
  if (!crop_) return;
  const QRectF shown(crop_->left * scale_, crop_->top * scale_, crop_->width * scale_, crop_->height * scale_);
  band_->setGeometry(shown.toRect());
}

void CCropView::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  ShowCrop();
}

void CCropView::mousePressEvent(QMouseEvent* event) {
  from_ = event->pos();
}

void CCropView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  QPoint by = event->pos() - from_;
  if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    const int side = std::max(std::abs(by.x()), std::abs(by.y()));
    by = {by.x() < 0 ? -side : side, by.y() < 0 ? -side : side};
  }
  const QRect whole(QPoint(0, 0), size_);
  const QRectF dragged = QRectF(QPointF(from_) / scale_, QPointF(from_ + by) / scale_).normalized();
  const QRect part = dragged.toRect() & whole;
  if (part.width() < 2 || part.height() < 2) return;
  crop_ = SPictureCrop{part.x(), part.y(), part.width(), part.height()};
  ShowCrop();
}

void CCropView::mouseReleaseEvent(QMouseEvent* event) {
  constexpr int kClick = 3;
  const bool is_click = (event->pos() - from_).manhattanLength() <= kClick;
  SetCrop(is_click ? std::nullopt : crop_);
}

// --- The dialog ------------------------------------------------------------------------------------------------------

CImportPictureDialog::CImportPictureDialog(const SOpenPicture& picture, const ColorTable& default_colors,
                                           QWidget* parent)
    : CFieldDialog("importPicture", tr("Import Picture"), parent),
      picture_(picture),
      default_colors_(default_colors),
      original_(new CCropView(picture.image)),
      result_(new QLabel),
      counts_(new QLabel),
      size_(new QComboBox),
      scaling_(new QComboBox),
      palette_(new QComboBox),
      table_(new CPathField(CPathField::EKind::kFile)),
      transparent_(new QComboBox) {
  result_->setObjectName("result");
  counts_->setObjectName("counts");
  auto* pictures = new QHBoxLayout;
  const auto add = [&](const QString& title, QWidget* widget) {
    auto* column = new QVBoxLayout;
    column->addWidget(new QLabel(title));
    column->addWidget(widget);
    column->addStretch();
    pictures->addLayout(column);
  };
  add(tr("%1, %2 x %3")
          .arg(NameToQString(FileNamePart(picture.path)))
          .arg(picture.image.width)
          .arg(picture.image.height),
      original_);
  add(tr("The texture"), result_);
  pictures->addStretch();
  Content()->addLayout(pictures);
  Content()->addLayout(MakeOptions());
  Content()->addWidget(counts_);
  connect(original_, &CCropView::CropChanged, this, &CFieldDialog::Refresh);
  connect(table_, &CPathField::PathChanged, this, &CFieldDialog::Refresh);
  for (QComboBox* box : {size_, scaling_, palette_, transparent_})
    connect(box, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  Refresh();
}

QLayout* CImportPictureDialog::MakeOptions() {
  auto* form = new QFormLayout;
  const auto add = [form](const QString& label, QComboBox* box, const char* name, const QStringList& texts) {
    box->setObjectName(name);
    box->addItems(texts);
    form->addRow(label, box);
  };
  for (const int size : kTextureSizes)
    size_->addItem(size == 64 || size == 256 ? tr("%1 x %1").arg(size) : tr("%1 x %1 (not for the game)").arg(size),
                   size);
  const int best = GameTextureSize(picture_.image.width, picture_.image.height);
  size_->setCurrentIndex(size_->findData(best));
  add(tr("&Size:"), size_, "size", {});
  add(tr("S&caling:"), scaling_, "scaling", {tr("Smooth"), tr("Nearest pixel")});
  add(tr("&Colours:"), palette_, "palette",
      {tr("Made for the picture"), tr("The default colour table"), tr("Of a file:")});
  table_->setObjectName("table");
  table_->SetPrompt(tr("Colour Table"), {{"Colour tables *.act", "*.act"}});
  table_->RemoveNote();
  form->addRow(QString(), table_);
  add(tr("&Transparent:"), transparent_, "transparent",
      {tr("What the picture leaves transparent"), tr("That, and what is nearly black"), tr("Nothing")});
  return form;
}

SPictureInput CImportPictureDialog::Input() const {
  SPictureInput input = {.crop = original_->Crop(),
                         .size = size_->currentData().toInt(),
                         .scaling = static_cast<EScaling>(scaling_->currentIndex()),
                         .transparent = static_cast<SPictureInput::ETransparent>(transparent_->currentIndex())};
  if (palette_->currentIndex() == kDefault) input.colors = default_colors_;
  if (palette_->currentIndex() == kFile) input.colors = ReadColorTable(table_->Path());
  return input;
}

QString CImportPictureDialog::Fault() {
  const bool is_file = palette_->currentIndex() == kFile;
  table_->setEnabled(is_file);
  const SPictureInput input = Input();
  if (is_file && !input.colors) return tr("Please choose a colour table (ACT) of 256 colours.");
  texture_ = TextureFrom(picture_.path, picture_.image, input);
  ShowTexture();
  return {};
}

void CImportPictureDialog::ShowTexture() {
  const int size = size_->currentData().toInt();
  QPixmap shown(kResultSide, kResultSide);
  QPainter painter(&shown);
  PaintChecks(painter, kResultSide);
  painter.drawImage(shown.rect(), ImageOf(texture_, size));
  painter.end();
  result_->setPixmap(shown);
  const STextureCounts counts = CountTexels(texture_);
  counts_->setText(tr("%1 colours, %L2 texels transparent").arg(counts.colors).arg(counts.transparent));
}

}  // namespace veldra

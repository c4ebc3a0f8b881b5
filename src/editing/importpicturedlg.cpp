#include "editing/importpicturedlg.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "model/texturepicture.h"
#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum EPalette { kOwn, kDefault, kFile };

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
      result_(new CTexturePreview),
      counts_(new QLabel),
      size_(new QComboBox),
      scaling_(new QComboBox),
      palette_(new QComboBox),
      table_(new CPathField(CPathField::EKind::kFile)),
      most_colors_(new QSpinBox),
      transparent_(new QComboBox),
      key_(new CColorWell(QColor(255, 0, 255))),
      key_reach_(new QSpinBox) {
  result_->setObjectName("result");
  result_->setFixedSize(CTexturePreview::kSide, CTexturePreview::kSide);
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
          .arg(picture.path.empty() ? tr("Pasted picture") : NameToQString(FileNamePart(picture.path)))
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
  connect(key_, &CColorWell::ColorChanged, this, &CFieldDialog::Refresh);
  for (QSpinBox* box : {most_colors_, key_reach_})
    connect(box, &QSpinBox::valueChanged, this, &CFieldDialog::Refresh);
  Refresh();
}

QWidget* CImportPictureDialog::MakeKey() {
  key_->setObjectName("keyColor");
  key_reach_->setObjectName("keyReach");
  key_reach_->setRange(0, 128);
  key_reach_->setValue(24);
  key_reach_->setToolTip(tr("How far red, green and blue may each be off"));
  auto* widget = new QWidget;
  auto* line = new QHBoxLayout(widget);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(key_);
  line->addWidget(new QLabel(tr("and what is as near as")));
  line->addWidget(key_reach_);
  line->addStretch();
  return widget;
}

QLayout* CImportPictureDialog::MakeOptions() {
  auto* form = new QFormLayout;
  const auto add = [form](const QString& label, QComboBox* box, const char* name, const QStringList& texts) {
    box->setObjectName(name);
    box->addItems(texts);
    form->addRow(label, box);
  };
  for (const int size : kTextureSizes)
    size_->addItem(IsGameTextureSize(size) ? tr("%1 x %1").arg(size) : tr("%1 x %1 (not for the game)").arg(size),
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
  most_colors_->setObjectName("mostColors");
  most_colors_->setRange(2, 256);
  most_colors_->setValue(256);
  form->addRow(tr("At &most:"), most_colors_);
  add(tr("&Transparent:"), transparent_, "transparent",
      {tr("What the picture leaves transparent"), tr("That, and what is nearly black"), tr("Nothing"),
       tr("What the picture leaves transparent, and one colour:")});
  form->addRow(QString(), MakeKey());
  return form;
}

SPictureInput CImportPictureDialog::Input() const {
  SPictureInput input = {.crop = original_->Crop(),
                         .size = size_->currentData().toInt(),
                         .scaling = static_cast<EScaling>(scaling_->currentIndex()),
                         .transparent = static_cast<SPictureInput::ETransparent>(transparent_->currentIndex())};
  const QColor key = key_->Color();
  input.key = {static_cast<uint8_t>(key.red()), static_cast<uint8_t>(key.green()), static_cast<uint8_t>(key.blue())};
  input.key_reach = key_reach_->value();
  input.most_colors = most_colors_->value();
  if (palette_->currentIndex() == kDefault) input.colors = default_colors_;
  if (palette_->currentIndex() == kFile) input.colors = ReadColorTable(table_->Path());
  return input;
}

QString CImportPictureDialog::Fault() {
  const bool is_file = palette_->currentIndex() == kFile;
  table_->setEnabled(is_file);
  most_colors_->setEnabled(palette_->currentIndex() == kOwn);
  const bool has_key = transparent_->currentIndex() == static_cast<int>(SPictureInput::ETransparent::kColor);
  key_->setEnabled(has_key);
  key_reach_->setEnabled(has_key);
  const SPictureInput input = Input();
  if (is_file && !input.colors) return tr("Please choose a colour table (ACT) of 256 colours.");
  texture_ = TextureFrom(picture_.path, picture_.image, input);
  ShowTexture();
  return {};
}

void CImportPictureDialog::ShowTexture() {
  result_->SetImage(ImageOf(texture_));
  counts_->setText(TexelCounts(texture_));
}

}  // namespace veldra

#include "podtools/podpreview.h"

#include <QFontDatabase>
#include <QLocale>
#include <QStackedLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "archive/filetypes.h"
#include "model/binfile.h"
#include "platform/text.h"
#include "podtools/podtextures.h"
#include "ui/qstrings.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

constexpr size_t kLargestPreview = size_t{16} << 20;
constexpr size_t kLargestText = size_t{256} << 10;
constexpr int kSmallestSide = 220;
constexpr int kPaletteSide = 16;

bool LooksLikeText(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code < 0x20 && code != '\r' && code != '\n' && code != '\t' && code != 0x1A;
  });
}

}  // namespace

CPodPreview::CPodPreview(CSettings& settings, QWidget* parent)
    : QWidget(parent),
      default_colors_(ReadColorTable(settings.defpal).value_or(GreyRamp())),
      textures_(nobody_, default_colors_),
      document_(std::make_shared<CTarnDoc>(
          SDocumentServices{.questions = nobody_, .textures = textures_, .settings = settings})),
      pages_(new QStackedWidget),
      message_(new QLabel),
      picture_(new QLabel),
      text_(new QPlainTextEdit),
      view_(new CTarnView(document_)),
      caption_(new QLabel) {
  setObjectName("preview");
  message_->setAlignment(Qt::AlignCenter);
  message_->setWordWrap(true);
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setMinimumSize(1, 1);
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  document_->SetReadOnly(true);
  for (QLabel* page : {message_, picture_})
    page->setAutoFillBackground(true);
  view_->setFocusPolicy(Qt::ClickFocus);
  for (QWidget* page : std::initializer_list<QWidget*>{message_, picture_, text_, view_})
    pages_->addWidget(page);
  // The view is there from the start, and is never hidden but covered by the other pages: the first OpenGL widget in a
  // window that is shown makes that window anew, and one that was hidden for a while can stay black.
  static_cast<QStackedLayout*>(pages_->layout())->setStackingMode(QStackedLayout::StackAll);
  pages_->setMinimumSize(kSmallestSide, kSmallestSide);
  caption_->setObjectName("previewCaption");
  caption_->setTextFormat(Qt::PlainText);
  caption_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(pages_, 1);
  layout->addWidget(caption_);
}

CPodPreview::~CPodPreview() {
  delete view_;  // before the images that its model shows
}

void CPodPreview::ReadDefaultColors() {
  default_colors_ = ReadColorTable(document_->Settings().defpal).value_or(GreyRamp());
}

void CPodPreview::ShowNothing(const QString& text) {
  message_->setText(text);
  caption_->clear();
  pages_->setCurrentWidget(message_);
}

void CPodPreview::ShowEntry(const CPodDocument& archive, size_t entry) {
  const SPodEntry& row = archive.Entries()[entry];
  const QString size = tr("%1 bytes").arg(QLocale().toString(row.length));
  SError error;
  const auto bytes = archive.ReadEntry(entry, &error, kLargestPreview);
  if (!bytes) return ShowNothing(tr("No preview: %1").arg(ToQString(error.what)));
  caption_->setText(size);
  const std::string name(row.FileName());
  const int type = TypeOfFile(name);
  const bool shown = (type == kTypeBin && ShowModel(archive, *bytes)) ||
                     (type == kTypeRaw && ShowTexture(archive, name)) || (type == kTypeAct && ShowColors(*bytes)) ||
                     ShowImage(*bytes) || ShowText(*bytes);
  if (!shown) ShowNothing(tr("No preview for this kind of file (%1)").arg(size));
}

bool CPodPreview::ShowModel(const CPodDocument& archive, const CFileBytes& bytes) {
  document_->Model().Clear();
  CPodTextureFinder finder(archive, default_colors_, textures_, nobody_, document_->Settings().art_dir);
  const SLoadContext context{.textures = finder, .questions = nobody_, .ask_texture_size = false};
  const bool loaded = LoadBin(document_->Model(), bytes.View(), {}, context);
  images_ = finder.TakeImages();
  if (!loaded) return false;
  pages_->setCurrentWidget(view_);  // which gives it its size
  view_->ZoomToFit();
  const CBinModel& model = document_->Model();
  caption_->setText(ToQString(
      Format("%d vertices, %d faces, %d textures", model.VertexCount(), model.FaceCount(), model.TextureCount())));
  return true;
}

bool CPodPreview::ShowTexture(const CPodDocument& archive, const std::string& name) {
  const auto image = ReadPodTexture(archive, name, default_colors_);
  if (image == nullptr) return false;
  const QImage upside_down(image->rgb.data(), image->size, image->size, qsizetype{3} * image->size,
                           QImage::Format_RGB888);
  ShowPicture(upside_down.mirrored());
  caption_->setText(tr("Texture, %1 x %1").arg(image->size));
  return true;
}

bool CPodPreview::ShowColors(const CFileBytes& bytes) {
  const auto colors = bytes.View();
  if (colors.size() < std::tuple_size_v<ColorTable>) return false;
  const QImage table(colors.data(), kPaletteSide, kPaletteSide, qsizetype{3} * kPaletteSide, QImage::Format_RGB888);
  ShowPicture(table.copy());
  caption_->setText(tr("Color table, 256 colors"));
  return true;
}

bool CPodPreview::ShowImage(const CFileBytes& bytes) {
  const QImage image = QImage::fromData(bytes.View().data(), static_cast<int>(bytes.View().size()));
  if (image.isNull()) return false;
  ShowPicture(image);
  caption_->setText(tr("Picture, %1 x %2").arg(image.width()).arg(image.height()));
  return true;
}

bool CPodPreview::ShowText(const CFileBytes& bytes) {
  const std::string_view text = bytes.Text().substr(0, kLargestText);
  if (!LooksLikeText(text)) return false;
  std::string lines(text);
  std::erase(lines, '\r');
  text_->setPlainText(ToQString(DisplayText(lines)));
  pages_->setCurrentWidget(text_);
  return true;
}

void CPodPreview::ShowPicture(const QImage& image) {
  image_ = image;
  FitPicture();
  pages_->setCurrentWidget(picture_);
}

/// Small pictures grow in whole texels: what is looked at are the texels.
void CPodPreview::FitPicture() {
  if (image_.isNull()) return;
  const QSize room = pages_->size() * devicePixelRatioF();
  const int times = std::max(1, std::min(room.width() / image_.width(), room.height() / image_.height()));
  const bool fits = image_.width() <= room.width() && image_.height() <= room.height();
  QPixmap pixmap = QPixmap::fromImage(fits ? image_.scaled(image_.size() * times)
                                           : image_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  pixmap.setDevicePixelRatio(devicePixelRatioF());
  picture_->setPixmap(pixmap);
}

void CPodPreview::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitPicture();
}

}  // namespace veldra

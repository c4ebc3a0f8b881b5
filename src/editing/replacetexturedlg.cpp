#include "editing/replacetexturedlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <algorithm>

#include "model/texturepicture.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kListIconSide = 48;
constexpr int kPictureSide = 96;

/// The texture of the RAW file PATH as it would look; FAULT says why there is none.
std::optional<STextureImage> LoadPreview(const std::string& path, const ColorTable& default_colors, QString& fault) {
  const std::string there = FindAnyCase(path);
  if (!IsFile(there)) {
    fault = path.empty() || IsDirectory(there) ? QObject::tr("Choose the file of the new texture.")
                                               : QObject::tr("There is no such file.");
    return std::nullopt;
  }
  const STextureFiles files = ReadTextureFiles(there);
  fault = files.error.what.empty()
              ? QObject::tr("Not a texture: %1 bytes, not 64, 128, 256 or 512 squared.").arg(files.length.value_or(0))
              : ToQString(files.error.what);
  if (!files.texels) return std::nullopt;
  STextureImage image;
  DecodeTexture(files, default_colors, image);
  fault.clear();
  return image;
}

}  // namespace

CReplaceTextureDialog::CReplaceTextureDialog(const CBinModel& model, const CSettings& settings,
                                             const SReplaceTextureInput& last, QWidget* parent)
    : CFieldDialog("replaceTexture", tr("Replace Texture"), parent),
      model_(model),
      settings_(settings),
      list_(new QListWidget),
      path_(new CPathField(CPathField::EKind::kFile)),
      picture_(new QLabel),
      description_(new QLabel) {
  Content()->addWidget(MakeList(last.texture), 1);
  Content()->addWidget(MakeNewTexture(last.path));
  connect(list_, &QListWidget::currentRowChanged, this, &CFieldDialog::Refresh);
  connect(path_, &CPathField::PathChanged, this, [this] {
    ShowNewTexture();
    Refresh();
  });
  ShowNewTexture();
  Refresh();
}

QWidget* CReplaceTextureDialog::MakeList(int32_t last) {
  auto* box = new QGroupBox(tr("Texture of the model"));
  list_->setObjectName("textures");
  list_->setIconSize({kListIconSide, kListIconSide});
  for (int32_t i = 0; i < model_.TextureCount(); ++i) {
    const CBinTexture& texture = model_.Texture(i);
    list_->addItem(new QListWidgetItem(TexturePicture(*texture.Image(), kListIconSide, *this), TextureText(texture)));
  }
  list_->setCurrentRow(std::min(last, model_.TextureCount() - 1));
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(list_);
  return box;
}

QWidget* CReplaceTextureDialog::MakeNewTexture(const std::string& last_path) {
  auto* box = new QGroupBox(tr("New texture"));
  path_->setObjectName("path");
  path_->SetPrompt(tr("Select the new texture"), {{"MTM Texture *.raw", "*.raw"}, {"All Files *.*", "*.*"}});
  path_->RemoveNote();
  path_->SetPath(last_path.empty() ? settings_.art_dir : last_path);
  picture_->setObjectName("picture");
  picture_->setFixedSize(kPictureSide, kPictureSide);
  description_->setObjectName("description");
  auto* file = new QVBoxLayout;
  file->addWidget(path_);
  file->addWidget(description_);
  file->addStretch();
  auto* line = new QHBoxLayout(box);
  line->addLayout(file, 1);
  line->addWidget(picture_);
  return box;
}

void CReplaceTextureDialog::ShowNewTexture() {
  const ColorTable colors = ReadColorTable(settings_.defpal).value_or(GreyRamp());
  const auto image = LoadPreview(path_->Path(), colors, file_fault_);
  picture_->setPixmap(image ? TexturePicture(*image, kPictureSide, *this) : QPixmap());
  description_->setText(image ? tr("%1 x %1 texels").arg(image->size) : QString());
}

SReplaceTextureInput CReplaceTextureDialog::Input() const {
  return {.texture = list_->currentRow(), .path = FindAnyCase(path_->Path())};
}

QString CReplaceTextureDialog::Fault() {
  return file_fault_.isEmpty() ? ToQString(InputFault(model_, Input())) : file_fault_;
}

}  // namespace veldra

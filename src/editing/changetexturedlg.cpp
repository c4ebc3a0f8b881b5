#include "editing/changetexturedlg.h"

#include <QHBoxLayout>

#include "model/texturepicture.h"

namespace veldra {

CChangeTextureDialog::CChangeTextureDialog(const QString& name, const SRawTexture& texture,
                                           const ColorTable& default_colors, QWidget* parent)
    : CFieldDialog("changeTexture", tr("Size and Colours"), parent),
      texture_(texture),
      default_colors_(default_colors),
      result_(new CTexturePreview),
      counts_(new QLabel),
      warning_(new QLabel),
      size_(new QComboBox),
      scaling_(new QComboBox),
      colors_(new QComboBox),
      table_(new CPathField(CPathField::EKind::kFile)) {
  Content()->addLayout(MakePictures(name), 1);
  Content()->addLayout(MakeOptions());
  warning_->setObjectName("changeWarning");
  warning_->setWordWrap(true);
  Content()->addWidget(warning_);
  connect(table_, &CPathField::PathChanged, this, &CFieldDialog::Refresh);
  for (QComboBox* box : {size_, scaling_, colors_})
    connect(box, &QComboBox::currentIndexChanged, this, &CFieldDialog::Refresh);
  Refresh();
}

QLayout* CChangeTextureDialog::MakePictures(const QString& name) {
  auto* pictures = new QHBoxLayout;
  const auto add = [pictures](const QString& title, CTexturePreview* picture, QLabel* counts) {
    auto* column = new QVBoxLayout;
    column->addWidget(new QLabel(title));
    column->addWidget(picture, 1);
    column->addWidget(counts);
    pictures->addLayout(column, 1);
  };
  auto* original = new CTexturePreview;
  original->SetImage(ImageOf(texture_.texels));
  add(tr("%1, %2 x %2").arg(name).arg(texture_.size), original, new QLabel(TexelCounts(texture_.texels)));
  result_->setObjectName("changedTexture");
  counts_->setObjectName("changedCounts");
  add(tr("What it becomes"), result_, counts_);
  return pictures;
}

QLayout* CChangeTextureDialog::MakeOptions() {
  for (const int size : kTextureSizes)
    size_->addItem(IsGameTextureSize(size) ? tr("%1 x %1").arg(size) : tr("%1 x %1 (not for the game)").arg(size),
                   size);
  size_->setCurrentIndex(size_->findData(texture_.size));
  scaling_->addItems({tr("Smooth"), tr("Nearest texel")});
  colors_->addItems({tr("Stay as they are"), tr("Of the default colour table"), tr("Of a file:")});
  table_->SetPrompt(tr("Colour Table"), {{"Colour tables *.act", "*.act"}});
  table_->RemoveNote();
  const std::pair<QWidget*, const char*> names[] = {
      {size_, "size"}, {scaling_, "scaling"}, {colors_, "colors"}, {table_, "table"}};
  for (const auto& [field, name] : names)
    field->setObjectName(name);
  auto* form = new QFormLayout;
  form->addRow(tr("&Size:"), size_);
  form->addRow(tr("S&caling:"), scaling_);
  form->addRow(tr("C&olours:"), colors_);
  form->addRow(QString(), table_);
  return form;
}

QString CChangeTextureDialog::Fault() {
  const bool is_file = colors_->currentIndex() == kFile;
  STextureChange change = {.size = size_->currentData().toInt(),
                           .scaling = static_cast<EScaling>(scaling_->currentIndex())};
  scaling_->setEnabled(change.size != texture_.size);
  table_->setEnabled(is_file);
  if (colors_->currentIndex() == kDefault) change.colors = default_colors_;
  if (is_file) change.colors = ReadColorTable(table_->Path());
  if (is_file && !change.colors) return tr("Please choose a colour table (ACT) of 256 colours.");
  changed_ = Changed(texture_, change);
  result_->SetImage(ImageOf(changed_));
  counts_->setText(TexelCounts(changed_));
  const bool loses_holes = change.colors && !HasNearBlack(*change.colors) && TransparentCount(texture_.texels) > 0;
  warning_->setText(loses_holes ? tr("That table has no nearly black colour: nothing will be transparent.")
                                : QString());
  return {};
}

}  // namespace veldra

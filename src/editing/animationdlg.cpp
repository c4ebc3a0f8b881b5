#include "editing/animationdlg.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <algorithm>

#include "model/texturepicture.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kPreviewSide = 192;
constexpr int kFrameSide = 32;
constexpr double kFastestPreview = 60.0;  ///< frames per second: what a screen shows

}  // namespace

CAnimationDialog::CAnimationDialog(CTarnDoc& document, const CBinTexture* current, QWidget* parent)
    : CFieldDialog("defineAnimation", tr("Define Animation"), parent),
      document_(document),
      animations_(new QComboBox),
      delete_(MakeButton("delete", tr("&Delete"), &CAnimationDialog::DeleteChosen)),
      name_(new QLineEdit),
      list_(new QListWidget),
      textures_(new QComboBox),
      preview_(new QLabel) {
  Content()->addLayout(MakeChoice());
  auto* line = new QHBoxLayout;
  line->addWidget(MakeFrames(), 1);
  line->addLayout(MakePreview());
  Content()->addLayout(line, 1);
  connect(animations_, &QComboBox::currentIndexChanged, this, &CAnimationDialog::ShowChosen);
  connect(name_, &QLineEdit::textChanged, this, &CFieldDialog::Refresh);
  connect(rate_, &CNumberField::TextChanged, this, &CAnimationDialog::Restart);
  connect(list_, &QListWidget::currentRowChanged, this, &CFieldDialog::Refresh);
  connect(&timer_, &QTimer::timeout, this, &CAnimationDialog::ShowNextFrame);
  FillChoice(current);
}

QLayout* CAnimationDialog::MakeChoice() {
  animations_->setObjectName("animations");
  name_->setObjectName("name");
  auto* choice = new QHBoxLayout;
  choice->addWidget(animations_, 1);
  choice->addWidget(delete_);
  auto* form = new QFormLayout;
  auto* label = new QLabel(tr("&Animation:"));
  label->setBuddy(animations_);
  form->addRow(label, choice);
  form->addRow(tr("&Name:"), name_);
  rate_ = AddNumber(form, tr("&Rate:"), "rate", {.smallest = kSmallestRate, .largest = kLargestRate}, 10);
  rate_->SetSuffix(tr("frames per second"));
  return form;
}

QWidget* CAnimationDialog::MakeFrames() {
  auto* box = new QGroupBox(tr("Frames"));
  list_->setObjectName("frames");
  list_->setIconSize({kFrameSide, kFrameSide});
  list_->setMinimumHeight(3 * kFrameSide);
  textures_->setObjectName("textures");
  add_ = MakeButton("add", tr("Add &Texture"), &CAnimationDialog::AddTexture);
  frame_buttons_ = {MakeButton("remove", tr("Re&move"), &CAnimationDialog::Remove),
                    MakeButton("up", tr("&Up"), &CAnimationDialog::MoveUp),
                    MakeButton("down", tr("D&own"), &CAnimationDialog::MoveDown)};
  auto* adding = new QHBoxLayout;
  adding->addWidget(textures_, 1);
  adding->addWidget(add_);
  adding->addWidget(MakeButton("addFile", tr("Add &Files..."), &CAnimationDialog::AddFiles));
  auto* changing = new QHBoxLayout;
  for (QPushButton* button : frame_buttons_)
    changing->addWidget(button);
  changing->addStretch();
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(list_, 1);
  layout->addLayout(changing);
  layout->addLayout(adding);
  return box;
}

QLayout* CAnimationDialog::MakePreview() {
  preview_->setObjectName("preview");
  preview_->setFixedSize(kPreviewSide, kPreviewSide);
  preview_->setFrameShape(QFrame::StyledPanel);
  preview_->setAlignment(Qt::AlignCenter);
  auto* column = new QVBoxLayout;
  column->addWidget(new QLabel(tr("Preview")));
  column->addWidget(preview_);
  column->addStretch();
  return column;
}

QPushButton* CAnimationDialog::MakeButton(const char* name, const QString& text, void (CAnimationDialog::*action)()) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

void CAnimationDialog::FillTextures() {
  textures_->clear();
  FillWithTextures(*textures_, document_.Model());
  for (int i = textures_->count() - 1; i >= 0; --i)
    if (document_.Model().Texture(i).Kind() != ETextureKind::kPlain) textures_->removeItem(i);
  add_->setEnabled(textures_->count() > 0);
}

void CAnimationDialog::FillChoice(const CBinTexture* current) {
  const CBinModel& model = document_.Model();
  FillTextures();
  const QSignalBlocker quiet(animations_);
  animations_->clear();
  animations_->addItem(tr("New animation"), -1);
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    if (model.Texture(i).Kind() == ETextureKind::kAnimated) animations_->addItem(TextureText(model.Texture(i)), i);
  const int32_t index = current == nullptr ? -1 : model.TextureIndex(current);
  animations_->setCurrentIndex(std::max(0, animations_->findData(index)));
  ShowChosen();
}

CBinTexture* CAnimationDialog::Edited() const {
  const int32_t index = animations_->currentData().toInt();
  return index < 0 ? nullptr : &document_.Model().Texture(index);
}

void CAnimationDialog::ShowChosen() {
  SAnimationInput input;
  input.name = NewAnimationName(document_.Model());
  if (const CBinTexture* const edited = Edited()) input = InputOf(*edited);
  delete_->setEnabled(Edited() != nullptr);
  frames_ = input.frames;
  old_name_ = input.name;
  name_->setText(GameToField(input.name));
  // A file can hold a period of zero, which is a rate without end.
  rate_->SetValue(std::clamp(input.rate, kSmallestRate, kLargestRate));
  FillFrames(0);
}

void CAnimationDialog::FillFrames(int current) {
  list_->clear();
  for (const CBinTexture::SFrame& frame : frames_)
    list_->addItem(new QListWidgetItem(TexturePicture(*frame.image, kFrameSide, *this), NameToQString(frame.name)));
  list_->setCurrentRow(std::min(current, list_->count() - 1));
  Restart();
  Refresh();
}

void CAnimationDialog::DeleteChosen() {
  CBinTexture* const edited = Edited();
  if (edited != nullptr && DeleteAnimation(document_, *edited)) FillChoice(nullptr);
}

void CAnimationDialog::AddTexture() {
  const CBinTexture& texture = document_.Model().Texture(textures_->currentData().toInt());
  Insert(texture.Frames().front());
}

void CAnimationDialog::AddFiles() {
  for (CBinTexture::SFrame& frame : AskFrames(document_))
    Insert(std::move(frame));
  FillTextures();
}

/// Behind the current frame.
void CAnimationDialog::Insert(CBinTexture::SFrame frame) {
  const int row = list_->currentRow() + 1;
  frames_.insert(frames_.begin() + row, std::move(frame));
  FillFrames(row);
}

void CAnimationDialog::Remove() {
  const int row = list_->currentRow();
  frames_.erase(frames_.begin() + row);
  FillFrames(row);
}

void CAnimationDialog::Move(int by) {
  const int row = list_->currentRow();
  std::swap(frames_[static_cast<size_t>(row)], frames_[static_cast<size_t>(row + by)]);
  FillFrames(row + by);
}

void CAnimationDialog::Restart() {
  timer_.stop();
  shown_ = frames_.size();
  ShowNextFrame();
  const std::optional<double> rate = rate_->Value();
  if (rate && frames_.size() > 1) timer_.start(static_cast<int>(1000.0 / std::min(*rate, kFastestPreview)));
}

void CAnimationDialog::ShowNextFrame() {
  if (frames_.empty()) {
    preview_->setPixmap({});
    return;
  }
  shown_ = shown_ + 1 < frames_.size() ? shown_ + 1 : 0;
  preview_->setPixmap(TexturePicture(*frames_[shown_].image, kPreviewSide - 4, *preview_));
}

SAnimationInput CAnimationDialog::Input() const {
  const QString shown = GameToField(old_name_);
  const std::string name = name_->text() == shown ? old_name_ : name_->text().trimmed().toStdString();
  return {name, frames_, rate_->Value().value_or(0.0)};
}

QString CAnimationDialog::Fault() {
  const int row = list_->currentRow();
  const bool can[] = {row >= 0, row > 0, row >= 0 && row + 1 < list_->count()};
  for (size_t i = 0; i < frame_buttons_.size(); ++i)
    frame_buttons_[i]->setEnabled(can[i]);
  return ToQString(InputFault(document_.Model(), Input(), Edited()));
}

}  // namespace veldra

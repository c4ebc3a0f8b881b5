#include "editing/colortabledlg.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "model/texturepicture.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CColorTableDialog::CColorTableDialog(const QString& name, const SIndexedTexture& texture, CTarnDoc& document,
                                     QWidget* parent)
    : QDialog(parent),
      table_(texture),
      document_(document),
      field_(new CColorTableField(table_)),
      preview_(new CTexturePreview),
      entry_(new QLabel),
      color_(new CColorWell),
      transparent_(new QCheckBox(tr("&Transparent in the game"))),
      keeps_picture_(new QCheckBox(tr("The picture &stays as it is when entries are exchanged"))),
      back_(MakeButton(tr("&Undo"), "tableBack", "Ctrl+Z")),
      forward_(MakeButton(tr("&Redo"), "tableForward", "Ctrl+Y")) {
  setObjectName("colorTableDialog");
  setWindowTitle(tr("Colour Table of %1").arg(name));
  auto* pictures = new QHBoxLayout;
  pictures->addWidget(field_, 1);
  pictures->addWidget(MakeSide(), 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* help =
      new QLabel(tr("Drag a colour onto another one, or press Ctrl and an arrow key, to exchange them. Entries "
                    "that no texel uses are small, transparent ones are cut in half."));
  help->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(pictures, 1);
  layout->addWidget(help);
  layout->addWidget(keeps_picture_);
  layout->addLayout(MakeTools());
  layout->addWidget(buttons);
  keeps_picture_->setObjectName("keepsPicture");
  keeps_picture_->setChecked(true);
  keeps_picture_->setVisible(!texture.indices.empty());
  connect(field_, &CColorTableField::EntryChanged, this, &CColorTableDialog::Show);
  connect(field_, &CColorTableField::ColorWanted, color_, &QToolButton::click);
  connect(field_, &CColorTableField::ExchangeWanted, this, [this](int a, int b) {
    table_.Exchange(a, b, keeps_picture_->isChecked());
    Show();
  });
  Show();
}

/// The picture and what is to be said of the chosen entry.
QWidget* CColorTableDialog::MakeSide() {
  entry_->setObjectName("tableEntry");
  color_->setObjectName("entryColor");
  color_->setToolTip(tr("Another colour (double click, Enter)"));
  transparent_->setObjectName("entryTransparent");
  preview_->setObjectName("tablePreview");
  preview_->setVisible(!table_.Texture().indices.empty());
  connect(color_, &CColorWell::ColorChanged, this, [this](const QColor& color) {
    table_.SetColor(field_->Entry(), {static_cast<uint8_t>(color.red()), static_cast<uint8_t>(color.green()),
                                      static_cast<uint8_t>(color.blue())});
    Show();
  });
  connect(transparent_, &QCheckBox::toggled, this, [this](bool on) {
    table_.SetTransparent(field_->Entry(), on);
    Show();
  });
  auto* side = new QWidget;
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(preview_, 1);
  column->addWidget(entry_);
  auto* line = new QHBoxLayout;
  line->addWidget(color_);
  line->addWidget(transparent_, 1);
  column->addLayout(line);
  column->addStretch();
  return side;
}

QPushButton* CColorTableDialog::MakeButton(const QString& text, const char* name, const QString& key) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setAutoDefault(false);
  if (key.isEmpty()) return button;
  button->setShortcut(QKeySequence(key));
  button->setToolTip(key);
  return button;
}

QLayout* CColorTableDialog::MakeTools() {
  QPushButton* load = MakeButton(tr("&Load Table..."), "loadTable", {});
  QPushButton* save = MakeButton(tr("Save Table &As..."), "saveTable", {});
  connect(load, &QPushButton::clicked, this, &CColorTableDialog::Load);
  connect(save, &QPushButton::clicked, this, &CColorTableDialog::Save);
  connect(back_, &QPushButton::clicked, this, [this] {
    table_.StepBack();
    Show();
  });
  connect(forward_, &QPushButton::clicked, this, [this] {
    table_.StepForward();
    Show();
  });
  auto* tools = new QHBoxLayout;
  for (QPushButton* button : {back_, forward_, load, save})
    tools->addWidget(button);
  tools->addStretch();
  return tools;
}

void CColorTableDialog::Show() {
  const int entry = field_->Entry();
  const auto [red, green, blue] = table_.ColorOf(entry);
  const QSignalBlocker quiet_color(color_);
  const QSignalBlocker quiet_transparent(transparent_);
  color_->SetColor(QColor(red, green, blue));
  transparent_->setChecked(table_.IsTransparent(entry));
  const bool has_texels = !table_.Texture().indices.empty();
  entry_->setText(has_texels
                      ? tr("Entry %1, %2").arg(entry).arg(ToQString(Counted(table_.UseCount(entry), "texel", "texels")))
                      : tr("Entry %1").arg(entry));
  if (has_texels) preview_->SetImage(ImageOf(table_.Texture()));
  back_->setEnabled(table_.CanStepBack());
  forward_->setEnabled(table_.CanStepForward());
  ok_->setEnabled(has_texels && table_.IsChanged());
  field_->update();
}

void CColorTableDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  field_->setFocus();
}

void CColorTableDialog::Load() {
  SFilePrompt prompt;
  prompt.title = "Load Colour Table";
  prompt.filters = {{"Adobe Color Table *.act", "*.act"}};
  prompt.directory = document_.Settings().art_dir;
  const auto path = document_.Services().questions.AskOpenFile(prompt);
  if (!path) return;
  SError error;
  const auto colors = ReadColorTable(*path, &error);
  if (!colors) {
    document_.ShowError(Format("\"%s\" could not be opened.", path->c_str()),
                        error.what.empty() ? "It has fewer than 256 colours." : error.what);
    return;
  }
  table_.SetTable(*colors);
  Show();
}

void CColorTableDialog::Save() {
  SFilePrompt prompt;
  prompt.title = "Save Colour Table";
  prompt.filters = {{"Adobe Color Table *.act", "*.act"}};
  prompt.directory = document_.Settings().art_dir;
  prompt.default_extension = "ACT";
  const auto target = document_.Services().questions.AskSaveFile(prompt);
  if (!target) return;
  SError error;
  if (!ReplaceFile(target->path, table_.Texture().colors, &error))
    document_.ShowError(Format("\"%s\" could not be written.", target->path.c_str()), error.what);
  else
    document_.Say("Saved " + target->path);
}

}  // namespace veldra

#include "editing/editpicturedlg.h"

#include "ui/qstrings.h"

namespace veldra {

CEditPictureDialog::CEditPictureDialog(const STextureSource& source, const std::string& program,
                                       CPictureEdits::EColors last, QWidget* parent)
    : CFieldDialog("editPicture", tr("Edit in Other Program"), parent), colors_(new QComboBox) {
  auto* text =
      new QLabel(tr("%1 is opened as a PNG picture. Whenever it is saved there, the texture becomes what was saved.")
                     .arg(NameToQString(source.name)));
  text->setWordWrap(true);
  Content()->addWidget(text);
  colors_->setObjectName("colors");
  colors_->addItems({tr("Those that the texture has now"), tr("Made for the picture")});
  colors_->setCurrentIndex(static_cast<int>(last));
  auto* form = new QFormLayout;
  form->addRow(tr("&Colours:"), colors_);
  auto* with = new QLabel(program.empty() ? tr("the system's program for pictures") : ToQString(program));
  with->setWordWrap(true);
  form->addRow(tr("Program:"), with);
  Content()->addLayout(form);
  auto* note = new QLabel(tr(
      "A picture that comes back with a table of colours keeps it. File > Preferences > Folders names the program."));
  note->setWordWrap(true);
  Content()->addWidget(note);
  Refresh();
}

}  // namespace veldra

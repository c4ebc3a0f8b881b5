#include "app/qtquestions.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "app/qtprogress.h"
#include "app/scalefactordlg.h"
#include "app/unknownfacedlg.h"
#include "app/unusedverticesdlg.h"
#include "model/texturepicture.h"
#include "platform/files.h"
#include "platform/opendialog.h"
#include "platform/paths.h"
#include "ui/pathfield.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

QMessageBox::Icon BoxIcon(EIcon icon) {
  switch (icon) {
    case EIcon::kNone:
      return QMessageBox::NoIcon;
    case EIcon::kInformation:
      return QMessageBox::Information;
    case EIcon::kWarning:
      return QMessageBox::Warning;
    case EIcon::kError:
      return QMessageBox::Critical;
    case EIcon::kQuestion:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton ButtonOf(EAnswer answer) {
  if (answer == EAnswer::kCancel) return QMessageBox::Cancel;
  return answer == EAnswer::kYes ? QMessageBox::Yes : QMessageBox::No;
}

EAnswer AnswerOf(int button) {
  for (const EAnswer answer : {EAnswer::kYes, EAnswer::kNo})
    if (ButtonOf(answer) == button) return answer;
  return EAnswer::kCancel;
}

void SetUp(QMessageBox& box, const SMessage& message, const std::string& details) {
  box.setIcon(BoxIcon(message.icon));
  box.setWindowTitle(ToQString(message.caption));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQString(DisplayText(message.text)));
  box.setInformativeText(ToQString(DisplayText(details)));
  // The box tells its format to the first of its texts only.
  for (QLabel* label : box.findChildren<QLabel*>())
    label->setTextFormat(Qt::PlainText);
}

/// For the dialogs whose texts have no room for the file that they are about.
void NameInTitle(QDialog& dialog, const std::string& file) {
  if (!file.empty()) dialog.setWindowTitle(dialog.windowTitle() + " - " + NameToQString(FileNamePart(file)));
}

/// SELECTED is a filter as it was set or, from Qt's own dialog, as it is shown.
size_t FilterIndex(const SFilePrompt& prompt, const QString& selected) {
  for (size_t i = 0; i < prompt.filters.size(); ++i) {
    const SFileFilter& filter = prompt.filters[i];
    if (selected == FileDialogFilter(filter) || selected == ToQString(filter.label)) return i;
  }
  return 0;
}

void SetDirectory(QFileDialog& dialog, const std::string& wanted, const QString& last_directory) {
  const std::string directory = FindAnyCase(wanted);
  if (IsDirectory(directory)) {
    dialog.setDirectory(ToQString(NativePath(directory)));
  } else if (!last_directory.isEmpty()) {
    dialog.setDirectory(last_directory);
  }
}

void SetUp(QFileDialog& dialog, const SFilePrompt& prompt, const QString& last_directory) {
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  QStringList filters;
  for (const SFileFilter& filter : prompt.filters)
    filters.append(FileDialogFilter(filter));
  dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(ToQString(prompt.default_extension));
  SetDirectory(dialog, prompt.directory, last_directory);
}

/// The systems' own dialogs have no place for it, so Qt's stands in.
QCheckBox* AddReadOnlyBox(QFileDialog& dialog) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  auto* box = new QCheckBox(QObject::tr("Open as &read-only"), &dialog);
  box->setObjectName("readOnly");
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
    grid->addWidget(box, grid->rowCount(), 0, 1, grid->columnCount());
  return box;
}

/// What the file looks like that is chosen in DIALOG, beside the files.
void AddPicture(QFileDialog& dialog, const SFilePrompt& prompt) {
  constexpr int kSide = 160;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  auto* picture = new QLabel(&dialog);
  picture->setObjectName("picture");
  picture->setFixedSize(kSide, kSide);
  picture->setAlignment(Qt::AlignCenter);
  picture->setFrameShape(QFrame::StyledPanel);
  picture->setWordWrap(true);
  const bool is_texture = prompt.no_picture.empty();
  const QString none = is_texture ? QObject::tr("This file is not a texture.") : ToQString(prompt.no_picture);
  const auto show = [picture, make_picture = prompt.make_picture, is_texture, none](const QString& path) {
    const SImage image = path.isEmpty() ? SImage() : make_picture(ToNativePath(path));
    picture->setToolTip(is_texture ? QObject::tr("%1 x %2 texels").arg(image.width).arg(image.height) : QString());
    if (image.width > 0) return picture->setPixmap(PictureOf(image, kSide, *picture));
    picture->setToolTip({});
    picture->setText(QFileInfo(path).isFile() ? none : QString());
  };
  QObject::connect(&dialog, &QFileDialog::currentChanged, picture, show);
  if (auto* name = dialog.findChild<QLineEdit*>("fileNameEdit")) {
    QObject::connect(name, &QLineEdit::textChanged, picture,
                     [show, &dialog] { show(dialog.selectedFiles().value(0)); });
  }
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
    grid->addWidget(picture, 1, grid->columnCount(), Qt::AlignTop);
}

void AddNote(QFileDialog& dialog, const std::string& text) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  auto* note = new QLabel(ToQString(DisplayText(text)), &dialog);
  note->setObjectName("note");
  note->setTextFormat(Qt::PlainText);
  if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
    grid->addWidget(note, grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace

QWidget* CQtQuestions::Parent() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  // The window that the user works in may be one of an archive or a truck. When its dialog closes, it must not be the
  // main window that comes to the front. Between two questions no window is active for a moment.
  if (QWidget* active = QApplication::activeWindow()) last_active_ = active;
  return last_active_ != nullptr && last_active_->isVisible() ? last_active_.data() : parent_.data();
}

EAnswer CQtQuestions::Ask(const SMessage& question, QMessageBox::StandardButtons buttons) {
  const CNormalCursor cursor;
  QMessageBox box(Parent());
  box.setObjectName("messageBox");
  SetUp(box, question, DetailsOf(question));
  box.setStandardButtons(buttons);
  box.setDefaultButton(ButtonOf(question.usual));
  const auto name = [&](QMessageBox::StandardButton button, const std::string& text) {
    if (!text.empty()) box.button(button)->setText(ToQString(text));
  };
  name(QMessageBox::Yes, question.yes);
  name(QMessageBox::No, question.no);
  return AnswerOf(box.exec());
}

void CQtQuestions::Message(const SMessage& message) {
  Ask(message, QMessageBox::Ok);
}

EAnswer CQtQuestions::AskYesNo(const SMessage& question) {
  const EAnswer answer = Ask(question, QMessageBox::Yes | QMessageBox::No);
  return answer == EAnswer::kYes ? answer : EAnswer::kNo;
}

EAnswer CQtQuestions::AskYesNoCancel(const SMessage& question) {
  return Ask(question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

EReplaceAnswer CQtQuestions::AskReplace(const SMessage& question) {
  const CNormalCursor cursor;
  QMessageBox box(Parent());
  box.setObjectName("YesToAll");
  SetUp(box, question, DetailsOf(question));
  const std::pair<QAbstractButton*, EReplaceAnswer> answers[] = {
      {box.addButton(QStringLiteral("&Yes"), QMessageBox::YesRole), EReplaceAnswer::kYes},
      {box.addButton(QStringLiteral("Yes To &All"), QMessageBox::YesRole), EReplaceAnswer::kYesToAll},
      {box.addButton(QStringLiteral("&No"), QMessageBox::NoRole), EReplaceAnswer::kNo}};
  QPushButton* cancel = box.addButton(QStringLiteral("&Cancel"), QMessageBox::RejectRole);
  box.setDefaultButton(cancel);
  box.setEscapeButton(cancel);
  box.exec();
  for (const auto& [button, answer] : answers)
    if (box.clickedButton() == button) return answer;
  return EReplaceAnswer::kCancel;
}

std::optional<SOpenFiles> CQtQuestions::RunSystemDialog(const SFilePrompt& prompt, bool several) {
  // It counts as open for the toolkit, which keeps the other windows out of the way.
  QDialog standing_in(Parent());
  standing_in.setAttribute(Qt::WA_DontShowOnScreen);
  standing_in.setWindowModality(Qt::ApplicationModal);
  const WindowId owner = Parent() != nullptr ? Parent()->window()->winId() : 0;
  standing_in.show();
  const std::string wanted = FindAnyCase(prompt.directory);
  const std::string folder = IsDirectory(wanted) ? AbsolutePath(wanted) : last_directory_.toStdString();
  auto files = CSystemOpenDialog(prompt, owner, folder).Ask(several);
  if (files) last_directory_ = ToQString(DirectoryPart(files->paths.front()));
  return files;
}

std::optional<SOpenFiles> CQtQuestions::RunOpenDialog(const SFilePrompt& prompt, QFileDialog::FileMode mode) {
  const CNormalCursor cursor;
  const bool has_extras = prompt.offers_read_only || !prompt.note.empty();
  if (has_extras && !prompt.make_picture && CSystemOpenDialog::IsThere() &&
      !QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs))
    return RunSystemDialog(prompt, mode == QFileDialog::ExistingFiles);
  QFileDialog dialog(Parent(), ToQString(prompt.title));
  dialog.setObjectName("openFile");
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(mode);
  SetUp(dialog, prompt, last_directory_);
  const QCheckBox* read_only = prompt.offers_read_only ? AddReadOnlyBox(dialog) : nullptr;
  if (prompt.make_picture) AddPicture(dialog, prompt);
  if (!prompt.note.empty()) AddNote(dialog, prompt.note);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_directory_ = dialog.directory().absolutePath();
  SOpenFiles files;
  files.read_only = read_only != nullptr && read_only->isChecked();
  for (const QString& path : dialog.selectedFiles())
    files.paths.push_back(ToNativePath(path));
  return files;
}

std::optional<std::string> CQtQuestions::AskOpenFile(const SFilePrompt& prompt) {
  const auto files = RunOpenDialog(prompt, QFileDialog::ExistingFile);
  if (!files) return std::nullopt;
  return files->paths.front();
}

std::optional<SOpenFiles> CQtQuestions::AskOpenFiles(const SFilePrompt& prompt) {
  return RunOpenDialog(prompt, QFileDialog::ExistingFiles);
}

std::optional<std::string> CQtQuestions::AskFolder(const std::string& title, const std::string& directory) {
  const CNormalCursor cursor;
  QFileDialog dialog(Parent(), ToQString(title));
  dialog.setObjectName("openFolder");
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  SetDirectory(dialog, directory, last_directory_);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return ToNativePath(dialog.selectedFiles().constFirst());
}

std::optional<SSavePath> CQtQuestions::AskSaveFile(const SFilePrompt& prompt) {
  const CNormalCursor cursor;
  QFileDialog dialog(Parent(), ToQString(prompt.title));
  dialog.setObjectName("saveFile");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !prompt.asks_to_replace);
  SetUp(dialog, prompt, last_directory_);
  dialog.selectFile(ToQString(prompt.name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_directory_ = dialog.directory().absolutePath();
  return SSavePath{.path = ToNativePath(dialog.selectedFiles().constFirst()),
                   .filter = FilterIndex(prompt, dialog.selectedNameFilter())};
}

SUnknownFaceAnswer CQtQuestions::AskUnknownFace(uint32_t type) {
  const CNormalCursor cursor;
  CUnknownFaceDialog dialog(type, Parent());
  NameInTitle(dialog, About());
  dialog.exec();
  return dialog.Answer();
}

SUnusedVerticesAnswer CQtQuestions::AskUnusedVertices() {
  const CNormalCursor cursor;
  CUnusedVerticesDialog dialog(Parent());
  NameInTitle(dialog, About());
  dialog.exec();
  return dialog.Answer();
}

STextureAnswer CQtQuestions::AskTexture(const SMessage& message, const SFilePrompt& prompt) {
  using EChoice = STextureAnswer::EChoice;
  for (;;) {
    const EChoice choice = AskStandIn(message);
    if (choice == EChoice::kGiveUp) return {};
    // The finest grid of those that the game takes: coordinates come back unchanged once the texture is there.
    if (choice == EChoice::kBlankForAll) return {.choice = choice, .width = 256};
    if (choice == EChoice::kFile) {
      const auto path = AskOpenFile(prompt);
      return path ? STextureAnswer{.choice = choice, .path = *path} : STextureAnswer();
    }
    if (const auto folder = AskFolder("Select Folder of Textures", prompt.directory))
      return {.choice = choice, .path = *folder};
  }
}

STextureAnswer::EChoice CQtQuestions::AskStandIn(const SMessage& message) {
  using EChoice = STextureAnswer::EChoice;
  const CNormalCursor cursor;
  QMessageBox box(Parent());
  box.setObjectName("missingTexture");
  SetUp(box, message, DetailsOf(message));
  const auto add = [&](const char* name, const QString& text, const QString& tip) {
    QPushButton* button = box.addButton(text, QMessageBox::AcceptRole);
    button->setObjectName(name);
    button->setToolTip(tip);
    return button;
  };
  QPushButton* file =
      add("file", QObject::tr("Select &File..."), QObject::tr("Another file stands in for this texture"));
  QPushButton* folder = add("folder", QObject::tr("Folder for &All..."),
                            QObject::tr("Takes this texture and all others that are missing from a folder"));
  QPushButton* blank = add("blank", QObject::tr("&Stand-Ins for All"),
                           QObject::tr("Opens the model without its missing textures; it keeps their names"));
  box.addButton(QMessageBox::Cancel);
  box.setDefaultButton(file);
  box.exec();
  if (box.clickedButton() == file) return EChoice::kFile;
  if (box.clickedButton() == folder) return EChoice::kFolder;
  return box.clickedButton() == blank ? EChoice::kBlankForAll : EChoice::kGiveUp;
}

std::optional<double> CQtQuestions::AskScaleFactor(double offered) {
  const CNormalCursor cursor;
  CScaleFactorDialog dialog(offered, Parent());
  NameInTitle(dialog, About());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Factor();
}

std::unique_ptr<CProgress> CQtQuestions::BeginWork(const std::string& title, bool cancellable) {
  return std::make_unique<CQtProgress>(ToQString(DisplayText(title)), cancellable, Parent());
}

}  // namespace veldra

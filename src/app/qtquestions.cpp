#include "app/qtquestions.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "app/qtprogress.h"
#include "app/scalefactordlg.h"
#include "app/unknownfacedlg.h"
#include "app/unusedverticesdlg.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "ui/pathfield.h"

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

QMessageBox::StandardButton RunBox(const SMessage& message, QMessageBox::StandardButtons buttons, QWidget* parent) {
  const CNormalCursor cursor;
  QMessageBox box(BoxIcon(message.icon), QString::fromStdString(message.caption), QString::fromStdString(message.text),
                  buttons, parent);
  box.setObjectName("messageBox");
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(QString::fromStdString(message.details));
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

/// SELECTED is a filter as it was set or, from Qt's own dialog, as it is shown.
size_t FilterIndex(const SFilePrompt& prompt, const QString& selected) {
  for (size_t i = 0; i < prompt.filters.size(); ++i) {
    const SFileFilter& filter = prompt.filters[i];
    if (selected == FileDialogFilter(filter) || selected == QString::fromStdString(filter.label)) return i;
  }
  return 0;
}

void SetDirectory(QFileDialog& dialog, const std::string& wanted, const QString& last_directory) {
  const std::string directory = FindAnyCase(wanted);
  if (IsDirectory(directory)) {
    dialog.setDirectory(QString::fromStdString(NativePath(directory)));
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
  dialog.setDefaultSuffix(QString::fromStdString(prompt.default_extension));
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

void AddNote(QFileDialog& dialog, const std::string& text) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  auto* note = new QLabel(QString::fromStdString(text), &dialog);
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

void CQtQuestions::Message(const SMessage& message) {
  RunBox(message, QMessageBox::Ok, Parent());
}

EAnswer CQtQuestions::AskYesNo(const SMessage& question) {
  const auto pressed = RunBox(question, QMessageBox::Yes | QMessageBox::No, Parent());
  return pressed == QMessageBox::Yes ? EAnswer::kYes : EAnswer::kNo;
}

EAnswer CQtQuestions::AskYesNoCancel(const SMessage& question) {
  const auto pressed = RunBox(question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, Parent());
  if (pressed == QMessageBox::Yes) return EAnswer::kYes;
  return pressed == QMessageBox::No ? EAnswer::kNo : EAnswer::kCancel;
}

EReplaceAnswer CQtQuestions::AskReplace(const SMessage& question) {
  const CNormalCursor cursor;
  QMessageBox box(BoxIcon(question.icon), QString::fromStdString(question.caption),
                  QString::fromStdString(question.text), QMessageBox::NoButton, Parent());
  box.setObjectName("YesToAll");
  box.setTextFormat(Qt::PlainText);
  const std::pair<QAbstractButton*, EReplaceAnswer> answers[] = {
      {box.addButton(QStringLiteral("&Yes"), QMessageBox::YesRole), EReplaceAnswer::kYes},
      {box.addButton(QStringLiteral("Yes To &All"), QMessageBox::YesRole), EReplaceAnswer::kYesToAll},
      {box.addButton(QStringLiteral("&No"), QMessageBox::NoRole), EReplaceAnswer::kNo}};
  QPushButton* cancel = box.addButton(QStringLiteral("&Cancel"), QMessageBox::RejectRole);
  box.setEscapeButton(cancel);
  box.exec();
  for (const auto& [button, answer] : answers)
    if (box.clickedButton() == button) return answer;
  return EReplaceAnswer::kCancel;
}

std::optional<SOpenFiles> CQtQuestions::RunOpenDialog(const SFilePrompt& prompt, QFileDialog::FileMode mode) {
  const CNormalCursor cursor;
  QFileDialog dialog(Parent(), QString::fromStdString(prompt.title));
  dialog.setObjectName("openFile");
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(mode);
  SetUp(dialog, prompt, last_directory_);
  const QCheckBox* read_only = prompt.offers_read_only ? AddReadOnlyBox(dialog) : nullptr;
  if (!prompt.note.empty()) AddNote(dialog, prompt.note);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_directory_ = dialog.directory().absolutePath();
  SOpenFiles files;
  files.read_only = read_only != nullptr && read_only->isChecked();
  for (const QString& path : dialog.selectedFiles())
    files.paths.push_back(path.toStdString());
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
  QFileDialog dialog(Parent(), QString::fromStdString(title));
  dialog.setObjectName("openFolder");
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  SetDirectory(dialog, directory, last_directory_);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().constFirst().toStdString();
}

std::optional<SSavePath> CQtQuestions::AskSaveFile(const SFilePrompt& prompt) {
  const CNormalCursor cursor;
  QFileDialog dialog(Parent(), QString::fromStdString(prompt.title));
  dialog.setObjectName("saveFile");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  SetUp(dialog, prompt, last_directory_);
  dialog.selectFile(QString::fromStdString(prompt.name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_directory_ = dialog.directory().absolutePath();
  return SSavePath{.path = dialog.selectedFiles().constFirst().toStdString(),
                   .filter = FilterIndex(prompt, dialog.selectedNameFilter())};
}

SUnknownFaceAnswer CQtQuestions::AskUnknownFace(uint32_t type) {
  const CNormalCursor cursor;
  CUnknownFaceDialog dialog(type, Parent());
  dialog.exec();
  return dialog.Answer();
}

SUnusedVerticesAnswer CQtQuestions::AskUnusedVertices() {
  const CNormalCursor cursor;
  CUnusedVerticesDialog dialog(Parent());
  dialog.exec();
  return dialog.Answer();
}

STextureAnswer CQtQuestions::AskTexture(const SMessage& message, const SFilePrompt& prompt) {
  Message(message);
  const auto path = AskOpenFile(prompt);
  if (!path) return {};
  return {.choice = STextureAnswer::EChoice::kFile, .path = *path};
}

std::optional<double> CQtQuestions::AskScaleFactor(double offered) {
  const CNormalCursor cursor;
  CScaleFactorDialog dialog(offered, Parent());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Factor();
}

std::unique_ptr<CProgress> CQtQuestions::BeginWork(const std::string& title, bool cancellable) {
  return std::make_unique<CQtProgress>(QString::fromStdString(title), cancellable, Parent());
}

}  // namespace veldra

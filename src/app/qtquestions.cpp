#include "app/qtquestions.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "app/qtprogress.h"
#include "app/scalefactordlg.h"
#include "app/unknownfacedlg.h"
#include "app/unusedverticesdlg.h"
#include "platform/files.h"
#include "platform/paths.h"

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

/// Qt hides what stands in brackets, so that a filter shows as its label alone.
QString NameFilter(const SFileFilter& filter) {
  const QString pattern = filter.pattern == "*.*" ? QStringLiteral("*") : QString::fromStdString(filter.pattern);
  const QString upper = pattern.toUpper();
  return QStringLiteral("%1 (%2)").arg(QString::fromStdString(filter.label),
                                       upper == pattern ? pattern : pattern + ' ' + upper);
}

/// SELECTED is a filter as it was set or, from Qt's own dialog, as it is shown.
size_t FilterIndex(const SFilePrompt& prompt, const QString& selected) {
  for (size_t i = 0; i < prompt.filters.size(); ++i) {
    const SFileFilter& filter = prompt.filters[i];
    if (selected == NameFilter(filter) || selected == QString::fromStdString(filter.label)) return i;
  }
  return 0;
}

void SetUp(QFileDialog& dialog, const SFilePrompt& prompt, const QString& last_directory) {
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  QStringList filters;
  for (const SFileFilter& filter : prompt.filters)
    filters.append(NameFilter(filter));
  dialog.setNameFilters(filters);
  dialog.setDefaultSuffix(QString::fromStdString(prompt.default_extension));
  const std::string directory = FindAnyCase(prompt.directory);
  if (IsDirectory(directory)) {
    dialog.setDirectory(QString::fromStdString(NativePath(directory)));
  } else if (!last_directory.isEmpty()) {
    dialog.setDirectory(last_directory);
  }
}

}  // namespace

QWidget* CQtQuestions::Parent() const {
  QWidget* active = QApplication::activeModalWidget();
  return active != nullptr ? active : parent_.data();
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

std::optional<std::string> CQtQuestions::AskOpenFile(const SFilePrompt& prompt) {
  const CNormalCursor cursor;
  QFileDialog dialog(Parent(), QString::fromStdString(prompt.title));
  dialog.setObjectName("openFile");
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  SetUp(dialog, prompt, last_directory_);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  last_directory_ = dialog.directory().absolutePath();
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

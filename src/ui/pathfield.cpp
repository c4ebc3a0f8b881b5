#include "ui/pathfield.h"

#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/files.h"
#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

QString FileDialogFilter(const SFileFilter& filter) {
  const QString pattern = filter.pattern == "*.*" ? QStringLiteral("*") : ToQString(filter.pattern);
  const QString upper = pattern.toUpper();
  return QStringLiteral("%1 (%2)").arg(ToQString(filter.label), upper == pattern ? pattern : pattern + ' ' + upper);
}

CPathField::CPathField(EKind kind, QWidget* parent)
    : QWidget(parent), kind_(kind), edit_(new QLineEdit), note_(new QLabel) {
  constexpr int kUsualWidth = 320;
  constexpr int kGap = 8;
  edit_->setMinimumWidth(kUsualWidth);
  setFocusProxy(edit_);
  setFocusPolicy(edit_->focusPolicy());  // else a label's "&" would not lead to it
  note_->setObjectName("note");
  note_->setForegroundRole(QPalette::PlaceholderText);  // paler than what the user typed
  note_->setText(kind == EKind::kFile ? tr("There is no such file.") : tr("There is no such folder."));
  QSizePolicy policy = note_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  note_->setSizePolicy(policy);
  auto* browse = new QPushButton(tr("Browse..."));
  browse->setObjectName("browse");
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &CPathField::Browse);
  connect(this, &QObject::objectNameChanged, edit_, [this](const QString& name) { edit_->setObjectName(name); });
  connect(edit_, &QLineEdit::textChanged, this, [this] {
    if (note_ != nullptr) note_->setVisible(!IsThere());
    emit PathChanged();
  });

  auto* line = new QHBoxLayout;
  line->setSpacing(kGap);
  line->addWidget(edit_, 1);
  line->addWidget(browse);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(line);
  layout->addWidget(note_);
}

void CPathField::SetPrompt(const QString& title, const std::vector<SFileFilter>& filters) {
  title_ = title;
  filters_.clear();
  for (const SFileFilter& filter : filters)
    filters_.append(FileDialogFilter(filter));
}

void CPathField::SetPath(const std::string& path) {
  edit_->setText(ToQString(path));
  edit_->home(false);
}

void CPathField::RemoveNote() {
  delete note_;
}

bool CPathField::IsThere() const {
  const std::string path = FindAnyCase(Path());
  return kind_ == EKind::kFile ? IsFile(path) : IsDirectory(path);
}

void CPathField::Browse() {
  QFileDialog dialog(this, title_);
  dialog.setObjectName(kind_ == EKind::kFile ? "openFile" : "openFolder");
  dialog.setFileMode(kind_ == EKind::kFile ? QFileDialog::ExistingFile : QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly, kind_ == EKind::kFolder);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  if (!filters_.isEmpty()) dialog.setNameFilters(filters_);
  const std::string there = FindAnyCase(Path());
  const std::string folder = kind_ == EKind::kFolder ? there : DirectoryPart(there);
  if (IsDirectory(folder)) dialog.setDirectory(ToQString(NativePath(folder)));
  if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
    edit_->setText(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

}  // namespace veldra

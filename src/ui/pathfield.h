#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "platform/questions.h"

namespace veldra {

/// A line with the path of a file or folder, and a button that looks for one. Nothing at the path is no fault, but the
/// field says so.
class CPathField : public QWidget {
  Q_OBJECT

 public:
  enum class EKind { kFile, kFolder };
  explicit CPathField(EKind kind, QWidget* parent = nullptr);

  /// What the browsing shows; FILTERS for files only.
  void SetPrompt(const QString& title, const std::vector<SFileFilter>& filters = {});
  void SetPath(const std::string& path);
  std::string Path() const { return edit_->text().toStdString(); }
  /// For a dialog that says itself what is wrong.
  void RemoveNote();
  /// A file or folder of this kind is there.
  bool IsThere() const;
  QLineEdit* Edit() const { return edit_; }

 signals:
  void PathChanged();

 private:
  void Browse();

  EKind kind_;
  QString title_;
  QStringList filters_;
  QLineEdit* edit_;
  QPointer<QLabel> note_;
};

/// How Qt's file dialogs want FILTER: what stands in brackets matches in both letter cases and is hidden with
/// QFileDialog::HideNameFilterDetails, so that the label shows as it is.
QString FileDialogFilter(const SFileFilter& filter);

}  // namespace veldra

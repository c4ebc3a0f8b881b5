#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include "platform/questions.h"

namespace veldra {

/// The questions as dialogs. Each has an object name, for tests and for who drives the program from outside.
class CQtQuestions : public CQuestions {
 public:
  /// The window that dialogs stand over; none while the program starts.
  void SetParent(QWidget* parent) { parent_ = parent; }

  void Message(const SMessage& message) override;
  EAnswer AskYesNo(const SMessage& question) override;
  EAnswer AskYesNoCancel(const SMessage& question) override;
  EReplaceAnswer AskReplace(const SMessage& question) override;
  std::optional<std::string> AskOpenFile(const SFilePrompt& prompt) override;
  std::optional<SOpenFiles> AskOpenFiles(const SFilePrompt& prompt) override;
  std::optional<std::string> AskFolder(const std::string& title, const std::string& directory) override;
  std::optional<SSavePath> AskSaveFile(const SFilePrompt& prompt) override;
  SUnknownFaceAnswer AskUnknownFace(uint32_t type) override;
  SUnusedVerticesAnswer AskUnusedVertices() override;
  STextureAnswer AskTexture(const SMessage& message, const SFilePrompt& prompt) override;
  std::optional<double> AskScaleFactor(double offered) override;
  std::unique_ptr<CProgress> BeginWork(const std::string& title, bool cancellable) override;

 private:
  QWidget* Parent() const;
  EAnswer Ask(const SMessage& question, QMessageBox::StandardButtons buttons);
  STextureAnswer::EChoice AskStandIn(const SMessage& message);
  std::optional<SOpenFiles> RunSystemDialog(const SFilePrompt& prompt, bool several);
  std::optional<SOpenFiles> RunOpenDialog(const SFilePrompt& prompt, QFileDialog::FileMode mode);

  QPointer<QWidget> parent_;
  mutable QPointer<QWidget> last_active_;  ///< over which a question stood last
  QString last_directory_;                 ///< where a file was picked last
};

}  // namespace veldra

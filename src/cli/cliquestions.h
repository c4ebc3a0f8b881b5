#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "cli/globaloptions.h"
#include "cli/terminalprogress.h"
#include "platform/questions.h"

namespace veldra {

/// Prints what the editor would show in a box as "CAPTION: TEXT" (and its details as a line behind it), and answers
/// with what the options say.
class CCliQuestions : public CQuestions {
 public:
  CCliQuestions(const SGlobalOptions& options, std::ostream& err) : options_(options), err_(err) {}

  /// The answer to AskScaleFactor; until it is set, what is offered is taken.
  void SetScaleFactor(double factor) { scale_factor_ = factor; }
  /// The answer to AskReplace; until it is set, cancel.
  void SetReplaceAnswer(EReplaceAnswer answer) { replace_answer_ = answer; }
  /// How far long work is shows on a terminal, and nowhere else.
  void ShowProgressOn(std::ostream& terminal) { line_ = std::make_unique<CTerminalLine>(terminal); }
  /// Messages and questions so far.
  int PrintedCount() const { return printed_count_; }

  void Message(const SMessage& message) override { Print(message); }
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
  void Print(const SMessage& message);

  const SGlobalOptions& options_;
  std::ostream& err_;
  std::unique_ptr<CTerminalLine> line_;  ///< null: no terminal
  std::optional<double> scale_factor_;
  EReplaceAnswer replace_answer_ = EReplaceAnswer::kCancel;
  std::set<std::string> replaced_textures_;  ///< requests that were answered with the stand-in file
  int printed_count_ = 0;
};

}  // namespace veldra

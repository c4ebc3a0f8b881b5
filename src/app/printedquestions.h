#pragma once

#include "platform/questions.h"

namespace veldra {

/// For runs that only look: messages and questions go to standard error. Whether to go on is answered Yes, whether to
/// keep changes Cancel; no file is picked and no face reinterpreted.
class CPrintedQuestions : public CQuestions {
 public:
  void Message(const SMessage& message) override;
  EAnswer AskYesNo(const SMessage& question) override;
  EAnswer AskYesNoCancel(const SMessage& question) override;
  std::optional<std::string> AskOpenFile(const SFilePrompt&) override { return std::nullopt; }
  std::optional<SSavePath> AskSaveFile(const SFilePrompt&) override { return std::nullopt; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t type) override;
  SUnusedVerticesAnswer AskUnusedVertices() override { return {}; }
  STextureAnswer AskTexture(const SMessage& message, const SFilePrompt& prompt) override;
  std::optional<double> AskScaleFactor(double) override { return std::nullopt; }
  std::unique_ptr<CProgress> BeginWork(const std::string& title, bool cancellable) override;
};

}  // namespace veldra

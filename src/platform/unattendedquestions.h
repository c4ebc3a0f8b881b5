#pragma once

#include "platform/questions.h"

namespace veldra {

/// Nobody is there to ask: messages and questions go to standard error, and every question gets the answer that changes
/// least.
class CUnattendedQuestions : public CQuestions {
 public:
  void Message(const SMessage& message) override;
  EAnswer AskYesNo(const SMessage& question) override;
  EAnswer AskYesNoCancel(const SMessage& question) override;
  EReplaceAnswer AskReplace(const SMessage& question) override;
  std::optional<std::string> AskOpenFile(const SFilePrompt&) override { return std::nullopt; }
  std::optional<SOpenFiles> AskOpenFiles(const SFilePrompt&) override { return std::nullopt; }
  std::optional<std::string> AskFolder(const std::string&, const std::string&) override { return std::nullopt; }
  std::optional<SSavePath> AskSaveFile(const SFilePrompt&) override { return std::nullopt; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t type) override;
  SUnusedVerticesAnswer AskUnusedVertices() override { return {}; }
  STextureAnswer AskTexture(const SMessage& message, const SFilePrompt& prompt) override;
  std::optional<double> AskScaleFactor(double) override { return std::nullopt; }
  std::unique_ptr<CProgress> BeginWork(const std::string& title, bool cancellable) override;
};

/// Progress that nobody sees and nobody stops.
class CUnseenProgress : public CProgress {
 public:
  bool Step(uint64_t, uint64_t) override { return true; }
};

}  // namespace veldra

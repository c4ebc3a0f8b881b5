#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/questions.h"

namespace veldra::testing {

/// Answers what a test expects to be asked, in that order, and fails the test on anything else. Messages that need no
/// answer are collected; a test that gets one it does not look at should say ExpectNoMessages().
class CScriptedQuestions : public CQuestions {
 public:
  ~CScriptedQuestions() override;  ///< fails the test when an expected question never came

  /// The next question must contain TEXT (in its message or prompt title) and gets the answer.
  CScriptedQuestions& OnYesNo(std::string text, EAnswer answer);
  CScriptedQuestions& OnYesNoCancel(std::string text, EAnswer answer);
  CScriptedQuestions& OnReplace(std::string text, EReplaceAnswer answer);
  CScriptedQuestions& OnOpenFiles(std::string text, std::optional<SOpenFiles> answer);
  CScriptedQuestions& OnFolder(std::string text, std::optional<std::string> answer);
  CScriptedQuestions& OnOpenFile(std::string text, std::optional<std::string> answer);
  CScriptedQuestions& OnSaveFile(std::string text, std::optional<SSavePath> answer);
  CScriptedQuestions& OnUnknownFace(uint32_t type, SUnknownFaceAnswer answer);
  CScriptedQuestions& OnUnusedVertices(SUnusedVerticesAnswer answer);
  CScriptedQuestions& OnTexture(std::string text, STextureAnswer answer);
  CScriptedQuestions& OnScaleFactor(double offered, std::optional<double> answer);

  const std::vector<SMessage>& Messages() const { return messages_; }
  /// The texts of the messages so far, taken out.
  std::vector<std::string> TakeMessageTexts();
  /// The progress asks for a stop once this many steps were reported; -1 for never.
  void CancelWorkAfter(int steps) { cancel_after_ = steps; }

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
  struct SExpected {
    std::string kind;
    std::string text;
    EAnswer answer = EAnswer::kCancel;
    std::optional<std::string> path = {};
    std::optional<SSavePath> save_path = {};
    SUnknownFaceAnswer face = {};
    SUnusedVerticesAnswer unused = {};
    STextureAnswer texture = {};
    std::optional<double> number = {};
    EReplaceAnswer replace = EReplaceAnswer::kCancel;
    std::optional<SOpenFiles> files = {};
  };
  SExpected Next(const std::string& kind, const std::string& text);

  std::deque<SExpected> expected_;
  std::vector<SMessage> messages_;
  int cancel_after_ = -1;
};

}  // namespace veldra::testing

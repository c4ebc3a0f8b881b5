#pragma once

#include <any>
#include <deque>
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
  CScriptedQuestions& OnYesNo(std::string text, EAnswer answer) { return On("yes/no", std::move(text), answer); }
  CScriptedQuestions& OnYesNoCancel(std::string text, EAnswer answer) {
    return On("yes/no/cancel", std::move(text), answer);
  }
  CScriptedQuestions& OnReplace(std::string text, EReplaceAnswer answer) {
    return On("replace", std::move(text), answer);
  }
  CScriptedQuestions& OnOpenFiles(std::string text, std::optional<SOpenFiles> answer) {
    return On("open files", std::move(text), std::move(answer));
  }
  CScriptedQuestions& OnFolder(std::string text, std::optional<std::string> answer) {
    return On("folder", std::move(text), std::move(answer));
  }
  CScriptedQuestions& OnOpenFile(std::string text, std::optional<std::string> answer) {
    return On("open file", std::move(text), std::move(answer));
  }
  CScriptedQuestions& OnSaveFile(std::string text, std::optional<SSavePath> answer) {
    return On("save file", std::move(text), std::move(answer));
  }
  CScriptedQuestions& OnUnknownFace(uint32_t type, SUnknownFaceAnswer answer);
  CScriptedQuestions& OnUnusedVertices(SUnusedVerticesAnswer answer) { return On("unused vertices", "", answer); }
  CScriptedQuestions& OnTexture(std::string text, STextureAnswer answer) {
    return On("texture", std::move(text), std::move(answer));
  }
  CScriptedQuestions& OnScaleFactor(double offered, std::optional<double> answer);

  /// Whether every expected question has come.
  bool IsDone() const { return expected_.empty(); }
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
    std::any answer;
  };
  CScriptedQuestions& On(std::string kind, std::string text, std::any answer);
  /// The next question's answer, or OTHERWISE when it is not of this kind.
  template <typename T>
  T Next(const std::string& kind, const std::string& text, T otherwise = {});

  std::deque<SExpected> expected_;
  std::vector<SMessage> messages_;
  int cancel_after_ = -1;
};

}  // namespace veldra::testing

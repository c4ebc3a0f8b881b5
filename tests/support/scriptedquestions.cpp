#include "support/scriptedquestions.h"

#include <gtest/gtest.h>

#include "platform/text.h"

namespace veldra::testing {

namespace {

class CScriptedProgress : public CProgress {
 public:
  explicit CScriptedProgress(int cancel_after) : left_(cancel_after) {}
  bool Step(uint64_t done, uint64_t total) override {
    EXPECT_LE(done, total);
    if (left_ > 0) return --left_, true;
    return left_ < 0;
  }

 private:
  int left_;
};

}  // namespace

CScriptedQuestions::~CScriptedQuestions() {
  for (const SExpected& left : expected_)
    ADD_FAILURE() << "never asked: " << left.kind << " \"" << left.text << '"';
}

CScriptedQuestions& CScriptedQuestions::On(std::string kind, std::string text, std::any answer) {
  expected_.push_back({std::move(kind), std::move(text), std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnUnknownFace(uint32_t type, SUnknownFaceAnswer answer) {
  return On("unknown face", Format("0x%x", type), answer);
}

CScriptedQuestions& CScriptedQuestions::OnScaleFactor(double offered, std::optional<double> answer) {
  return On("scale factor", Format("%.9g", offered), answer);
}

template <typename T>
T CScriptedQuestions::Next(const std::string& kind, const std::string& text, T otherwise) {
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected question: " << kind << " \"" << text << '"';
    return otherwise;
  }
  const SExpected next = std::move(expected_.front());
  expected_.pop_front();
  EXPECT_EQ(next.kind, kind) << "asked: \"" << text << '"';
  EXPECT_NE(text.find(next.text), std::string::npos) << "asked: \"" << text << "\", expected: \"" << next.text << '"';
  const T* const answer = std::any_cast<T>(&next.answer);
  return answer != nullptr ? *answer : otherwise;
}

std::vector<std::string> CScriptedQuestions::TakeMessageTexts() {
  std::vector<std::string> texts;
  for (const SMessage& message : messages_)
    texts.push_back(message.text);
  messages_.clear();
  return texts;
}

void CScriptedQuestions::Message(const SMessage& message) {
  messages_.push_back(message);
  messages_.back().details = DetailsOf(message);
}

EAnswer CScriptedQuestions::AskYesNo(const SMessage& question) {
  return Next("yes/no", question.text, EAnswer::kCancel);
}

EAnswer CScriptedQuestions::AskYesNoCancel(const SMessage& question) {
  return Next("yes/no/cancel", question.text, EAnswer::kCancel);
}

EReplaceAnswer CScriptedQuestions::AskReplace(const SMessage& question) {
  return Next("replace", question.text, EReplaceAnswer::kCancel);
}

std::optional<SOpenFiles> CScriptedQuestions::AskOpenFiles(const SFilePrompt& prompt) {
  return Next<std::optional<SOpenFiles>>("open files", prompt.title);
}

std::optional<std::string> CScriptedQuestions::AskFolder(const std::string& title, const std::string&) {
  return Next<std::optional<std::string>>("folder", title);
}

std::optional<std::string> CScriptedQuestions::AskOpenFile(const SFilePrompt& prompt) {
  return Next<std::optional<std::string>>("open file", prompt.title);
}

std::optional<SSavePath> CScriptedQuestions::AskSaveFile(const SFilePrompt& prompt) {
  return Next<std::optional<SSavePath>>("save file", prompt.title);
}

SUnknownFaceAnswer CScriptedQuestions::AskUnknownFace(uint32_t type) {
  return Next<SUnknownFaceAnswer>("unknown face", Format("0x%x", type));
}

SUnusedVerticesAnswer CScriptedQuestions::AskUnusedVertices() {
  return Next<SUnusedVerticesAnswer>("unused vertices", "");
}

STextureAnswer CScriptedQuestions::AskTexture(const SMessage& message, const SFilePrompt&) {
  return Next<STextureAnswer>("texture", message.text);
}

std::optional<double> CScriptedQuestions::AskScaleFactor(double offered) {
  return Next<std::optional<double>>("scale factor", Format("%.9g", offered));
}

std::unique_ptr<CProgress> CScriptedQuestions::BeginWork(const std::string&, bool) {
  return std::make_unique<CScriptedProgress>(cancel_after_);
}

}  // namespace veldra::testing

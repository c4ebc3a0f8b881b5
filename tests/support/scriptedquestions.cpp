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
    return left_ < 0 || left_-- > 0;
  }

 private:
  int left_;
};

}  // namespace

CScriptedQuestions::~CScriptedQuestions() {
  for (const SExpected& left : expected_)
    ADD_FAILURE() << "never asked: " << left.kind << " \"" << left.text << '"';
}

CScriptedQuestions& CScriptedQuestions::OnYesNo(std::string text, EAnswer answer) {
  expected_.push_back({.kind = "yes/no", .text = std::move(text), .answer = answer});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnYesNoCancel(std::string text, EAnswer answer) {
  expected_.push_back({.kind = "yes/no/cancel", .text = std::move(text), .answer = answer});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnReplace(std::string text, EReplaceAnswer answer) {
  expected_.push_back({.kind = "replace", .text = std::move(text), .replace = answer});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnOpenFiles(std::string text, std::optional<SOpenFiles> answer) {
  expected_.push_back({.kind = "open files", .text = std::move(text), .files = std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnFolder(std::string text, std::optional<std::string> answer) {
  expected_.push_back({.kind = "folder", .text = std::move(text), .path = std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnOpenFile(std::string text, std::optional<std::string> answer) {
  expected_.push_back({.kind = "open file", .text = std::move(text), .path = std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnSaveFile(std::string text, std::optional<SSavePath> answer) {
  expected_.push_back({.kind = "save file", .text = std::move(text), .save_path = std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnUnknownFace(uint32_t type, SUnknownFaceAnswer answer) {
  expected_.push_back({.kind = "unknown face", .text = Format("0x%x", type), .face = answer});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnUnusedVertices(SUnusedVerticesAnswer answer) {
  expected_.push_back({.kind = "unused vertices", .text = "", .unused = answer});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnTexture(std::string text, STextureAnswer answer) {
  expected_.push_back({.kind = "texture", .text = std::move(text), .texture = std::move(answer)});
  return *this;
}

CScriptedQuestions& CScriptedQuestions::OnScaleFactor(double offered, std::optional<double> answer) {
  expected_.push_back({.kind = "scale factor", .text = Format("%.9g", offered), .number = answer});
  return *this;
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
  return Next("yes/no", question.text).answer;
}

EAnswer CScriptedQuestions::AskYesNoCancel(const SMessage& question) {
  return Next("yes/no/cancel", question.text).answer;
}

EReplaceAnswer CScriptedQuestions::AskReplace(const SMessage& question) {
  return Next("replace", question.text).replace;
}

std::optional<SOpenFiles> CScriptedQuestions::AskOpenFiles(const SFilePrompt& prompt) {
  return Next("open files", prompt.title).files;
}

std::optional<std::string> CScriptedQuestions::AskFolder(const std::string& title, const std::string&) {
  return Next("folder", title).path;
}

std::optional<std::string> CScriptedQuestions::AskOpenFile(const SFilePrompt& prompt) {
  return Next("open file", prompt.title).path;
}

std::optional<SSavePath> CScriptedQuestions::AskSaveFile(const SFilePrompt& prompt) {
  return Next("save file", prompt.title).save_path;
}

SUnknownFaceAnswer CScriptedQuestions::AskUnknownFace(uint32_t type) {
  return Next("unknown face", Format("0x%x", type)).face;
}

SUnusedVerticesAnswer CScriptedQuestions::AskUnusedVertices() {
  return Next("unused vertices", "").unused;
}

STextureAnswer CScriptedQuestions::AskTexture(const SMessage& message, const SFilePrompt&) {
  return Next("texture", message.text).texture;
}

std::optional<double> CScriptedQuestions::AskScaleFactor(double offered) {
  return Next("scale factor", Format("%.9g", offered)).number;
}

std::unique_ptr<CProgress> CScriptedQuestions::BeginWork(const std::string&, bool) {
  return std::make_unique<CScriptedProgress>(cancel_after_);
}

CScriptedQuestions::SExpected CScriptedQuestions::Next(const std::string& kind, const std::string& text) {
  if (expected_.empty()) {
    ADD_FAILURE() << "unexpected question: " << kind << " \"" << text << '"';
    return {};
  }
  SExpected next = std::move(expected_.front());
  expected_.pop_front();
  EXPECT_EQ(next.kind, kind) << "asked: \"" << text << '"';
  EXPECT_NE(text.find(next.text), std::string::npos) << "asked: \"" << text << "\", expected: \"" << next.text << '"';
  return next;
}

}  // namespace veldra::testing

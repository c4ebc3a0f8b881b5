#include "app/printedquestions.h"

#include <cstdio>

#include "platform/text.h"

namespace veldra {

namespace {

class CNoProgress : public CProgress {
 public:
  bool Step(uint64_t, uint64_t) override { return true; }
};

}  // namespace

void CPrintedQuestions::Message(const SMessage& message) {
  const std::string details = message.details.empty() ? "" : " (" + message.details + ")";
  std::fprintf(stderr, "%s: %s%s\n", message.caption.c_str(), message.text.c_str(), details.c_str());
}

EAnswer CPrintedQuestions::AskYesNo(const SMessage& question) {
  Message(question);
  return EAnswer::kYes;
}

EAnswer CPrintedQuestions::AskYesNoCancel(const SMessage& question) {
  Message(question);
  return EAnswer::kCancel;
}

SUnknownFaceAnswer CPrintedQuestions::AskUnknownFace(uint32_t type) {
  Message({.text = Format("This model contains the unknown face type (0x%x).", type)});
  return {};
}

STextureAnswer CPrintedQuestions::AskTexture(const SMessage& message, const SFilePrompt&) {
  Message(message);
  return {};
}

std::unique_ptr<CProgress> CPrintedQuestions::BeginWork(const std::string&, bool) {
  return std::make_unique<CNoProgress>();
}

}  // namespace veldra

#include "platform/unattendedquestions.h"

#include <cstdio>

#include "platform/text.h"

namespace veldra {

void CUnattendedQuestions::Message(const SMessage& message) {
  const std::string details = DetailsOf(message);
  const std::string in_brackets = details.empty() ? "" : " (" + details + ")";
  std::fprintf(stderr, "%s\n", DisplayText(message.caption + ": " + message.text + in_brackets).c_str());
}

EAnswer CUnattendedQuestions::AskYesNo(const SMessage& question) {
  Message(question);
  return EAnswer::kNo;
}

EAnswer CUnattendedQuestions::AskYesNoCancel(const SMessage& question) {
  Message(question);
  return EAnswer::kCancel;
}

EReplaceAnswer CUnattendedQuestions::AskReplace(const SMessage& question) {
  Message(question);
  return EReplaceAnswer::kCancel;
}

SUnknownFaceAnswer CUnattendedQuestions::AskUnknownFace(uint32_t type) {
  Message({.text = Format("This model contains the unknown face type (0x%x).", type)});
  return {};
}

STextureAnswer CUnattendedQuestions::AskTexture(const SMessage& message, const SFilePrompt&) {
  Message(message);
  return {};
}

std::unique_ptr<CProgress> CUnattendedQuestions::BeginWork(const std::string&, bool) {
  return std::make_unique<CUnseenProgress>();
}

}  // namespace veldra

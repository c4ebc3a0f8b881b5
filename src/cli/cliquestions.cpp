#include "cli/cliquestions.h"

#include <ostream>

#include "document/tarn2doc.h"
#include "platform/text.h"
#include "platform/unattendedquestions.h"

namespace veldra {

void CCliQuestions::Print(const SMessage& message) {
  ++printed_count_;
  if (line_ != nullptr) line_->Clear();
  err_ << DisplayText(message.caption + ": " + message.text) << '\n';
  const std::string details = DetailsOf(message);
  if (!details.empty()) err_ << DisplayText(details) << '\n';
  err_.flush();
}

EAnswer CCliQuestions::AskYesNo(const SMessage& question) {
  Print(question);
  return options_.answer == EAnswer::kYes ? EAnswer::kYes : EAnswer::kNo;
}

EAnswer CCliQuestions::AskYesNoCancel(const SMessage& question) {
  Print(question);
  return options_.answer;
}

EReplaceAnswer CCliQuestions::AskReplace(const SMessage& question) {
  Print(question);
  return replace_answer_;
}

std::optional<std::string> CCliQuestions::AskOpenFile(const SFilePrompt& prompt) {
  Print({.text = prompt.title});
  return std::nullopt;
}

std::optional<SOpenFiles> CCliQuestions::AskOpenFiles(const SFilePrompt& prompt) {
  Print({.text = prompt.title});
  return std::nullopt;
}

std::optional<std::string> CCliQuestions::AskFolder(const std::string& title, const std::string&) {
  Print({.text = title});
  return std::nullopt;
}

std::optional<SSavePath> CCliQuestions::AskSaveFile(const SFilePrompt& prompt) {
  Print({.text = prompt.title});
  return std::nullopt;
}

SUnknownFaceAnswer CCliQuestions::AskUnknownFace(uint32_t type) {
  Print({.text = Format("This model contains the unknown face\ntype (0x%x). What would you like to do?", type),
         .caption = "Veldra - Unknown Face"});
  return options_.unknown_face;
}

SUnusedVerticesAnswer CCliQuestions::AskUnusedVertices() {
  using EChoice = SUnusedVerticesAnswer::EChoice;
  Print({.text = kUnusedVerticesText});
  switch (options_.answer) {
    case EAnswer::kYes:
      return {EChoice::kDelete};
    case EAnswer::kNo:
      return {EChoice::kSaveAnyway};
    case EAnswer::kCancel:
      break;
  }
  return {EChoice::kCancel};
}

STextureAnswer CCliQuestions::AskTexture(const SMessage& message, const SFilePrompt&) {
  using EChoice = STextureAnswer::EChoice;
  Print(message);
  // Asked for the same texture again, the stand-in cannot be loaded: it will not get better.
  const bool is_first_request = replaced_textures_.insert(message.text).second;
  if (!options_.missing_texture.empty() && is_first_request) return {EChoice::kFile, options_.missing_texture};
  if (options_.blank_texture != 0) return {.choice = EChoice::kBlank, .width = options_.blank_texture};
  return {};
}

std::optional<double> CCliQuestions::AskScaleFactor(double offered) {
  return scale_factor_.value_or(offered);
}

std::unique_ptr<CProgress> CCliQuestions::BeginWork(const std::string& title, bool) {
  if (line_ != nullptr) return std::make_unique<CTerminalProgress>(*line_, title);
  return std::make_unique<CUnseenProgress>();
}

}  // namespace veldra

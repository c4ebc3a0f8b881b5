#include "platform/questions.h"

namespace veldra {

bool CQuestions::Fail(std::string text, std::string details) {
  Message({.text = std::move(text), .caption = kErrorCaption, .icon = EIcon::kError, .details = std::move(details)});
  return false;
}

std::string CQuestions::DetailsOf(const SMessage& message) const {
  const auto says = [&](const std::string& text) { return text.find(about_) != std::string::npos; };
  if (about_.empty() || says(message.text) || says(message.details)) return message.details;
  return message.details.empty() ? about_ : about_ + "\n" + message.details;
}

}  // namespace veldra

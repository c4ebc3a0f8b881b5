#pragma once

#include <string>

#include "platform/questions.h"
#include "settings/settings.h"

namespace veldra {

/// "Pod *.pod" and all files.
SFilePrompt PodFilePrompt(const std::string& title, const CSettings& settings);

}  // namespace veldra

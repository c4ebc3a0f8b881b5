#pragma once

#include <QString>
#include <string_view>

#include "platform/text.h"

namespace veldra {

/// TEXT in UTF-8, as texts are everywhere in the program.
inline QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// TEXT as the game's files hold it, a byte a letter.
inline QString GameToQString(std::string_view text) {
  return ToQString(ToUtf8(text));
}

}  // namespace veldra

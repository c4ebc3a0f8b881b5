#pragma once

#include <QDir>
#include <QString>
#include <string>
#include <string_view>

#include "platform/text.h"

namespace veldra {

/// TEXT in UTF-8, as texts are everywhere in the program.
inline QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A path that the window toolkit gives, which has its separators, as the system writes it.
inline std::string ToNativePath(const QString& path) {
  return QDir::toNativeSeparators(path).toStdString();
}

/// TEXT as the game's files hold it, a byte a letter, for a field that it is edited in: every character as it is.
inline QString GameToField(std::string_view text) {
  return ToQString(ToUtf8(text));
}

/// TEXT as a tool tip, which would take "<b>" for a request.
inline QString ToolTipText(const QString& text) {
  return text.contains('<') ? QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()) : text;
}

/// The name of anything out of a file, or of a file, for a label, a list or a title; see DisplayName.
inline QString NameToQString(std::string_view name) {
  return ToQString(DisplayName(name));
}

}  // namespace veldra

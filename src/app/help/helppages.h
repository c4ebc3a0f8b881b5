#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace veldra {

/// A page of the help, all of which is part of the program.
struct SHelpPage {
  const char* file;  ///< "guide.md"
  const char* title;
};

/// A headline and what stands below it, up to the next one.
struct SHelpSection {
  QString file;
  QString title;
  QString anchor;  ///< "first-steps"; "" for the page's own headline
  int level = 1;   ///< 1 for the page's own headline
  QString text;
};

inline constexpr const char* kGuidePage = "guide.md";
inline constexpr const char* kCommandLinePage = "command-line.md";
inline constexpr const char* kNewsPage = "CHANGELOG.md";

/// In the order of the contents.
QList<SHelpPage> HelpPages();
/// Of all pages, in order.
QList<SHelpSection> HelpSections();
/// Those of SECTIONS that have all words of TEXT, in any letter case; the ones that have them in their headline first.
QList<SHelpSection> FindInHelp(const QList<SHelpSection>& sections, const QString& text);

/// "What protects your work" -> "what-protects-your-work", as links have it.
QString HelpAnchor(const QString& title);
QUrl HelpUrl(const QString& file, const QString& anchor);

/// The page for the window of that object name; that of the guide's beginning where there is none of its own.
QUrl HelpFor(const QString& window_name);
/// The names of windows that have one.
QStringList WindowsWithHelp();

}  // namespace veldra

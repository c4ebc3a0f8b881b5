#include "app/help/helppages.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

namespace veldra {

namespace {

struct STopic {
  const char* window;
  const char* file;
  const char* anchor;
};

constexpr const char* kEditing = "guide-editing.md";
constexpr const char* kTextures = "guide-textures.md";
constexpr const char* kModelling = "guide-modelling.md";
constexpr const char* kTrucks = "guide-trucks.md";
constexpr const char* kArchives = "guide-archives.md";

constexpr STopic kTopics[] = {
    {"setUp", kGuidePage, "where-things-are"},
    {"missingTexture", kGuidePage, "where-things-are"},
    {"preferences", kGuidePage, "preferences"},
    {"translate", kGuidePage, "the-whole-model"},
    {"resize", kGuidePage, "the-whole-model"},
    {"rotate", kGuidePage, "the-whole-model"},
    {"mirror", kGuidePage, "the-whole-model"},
    {"mergeCloseVertices", kGuidePage, "the-whole-model"},
    {"replaceTexture", kGuidePage, "the-whole-model"},
    {"saveFile", kGuidePage, "saving"},
    {"unusedVertices", kGuidePage, "saving"},
    {"scaleFactor", kGuidePage, "saving"},
    {"recovery", kGuidePage, "what-protects-your-work"},
    {"earlierStates", kGuidePage, "what-protects-your-work"},
    {"importOptions", kGuidePage, "bringing-meshes-in"},
    {"podExtractor", kArchives, "the-window"},
    {"podViewer", kArchives, "opening-what-is-inside"},
    {"podModels", kArchives, "opening-what-is-inside"},
    {"podCompare", kArchives, "comparing-and-checking"},
    {"podCreator", kGuidePage, "archives"},
    {"selectByFacing", kEditing, "faces"},
    {"addFace", kEditing, "faces"},
    {"editFace", kEditing, "faces"},
    {"groupFaces", kEditing, "groups"},
    {"groupName", kEditing, "groups"},
    {"jumpTo", kEditing, "what-a-command-works-on"},
    {"vertexCoordinates", kEditing, "vertices"},
    {"addVertex", kEditing, "vertices"},
    {"setToPlane", kEditing, "vertices"},
    {"binMapper", kEditing, "textures"},
    {"normalizeTexture", kEditing, "textures"},
    {"importPicture", kTextures, "textures-from-pictures"},
    {"textureBrowserTool", kTextures, "the-texture-browser"},
    {"changeTexture", kTextures, "size-colours-and-other-programs"},
    {"editPicture", kTextures, "size-colours-and-other-programs"},
    {"colorTableDialog", kTextures, "colour-tables"},
    {"assignTexture", kTextures, "giving-faces-another-texture"},
    {"defineAnimation", kEditing, "textures"},
    {"problemsTool", kModelling, "finding-what-is-wrong"},
    {"insertShape", kModelling, "a-ramp-in-a-minute"},
    {"newTruck", kTrucks, "a-new-truck-step-by-step"},
    {"truckEditor", kTrucks, "2-write-the-truck-file"},
};

QString Read(const QString& file) {
  QFile page(":/help/" + file);
  return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

/// What is typed to make words bold or lead somewhere, taken away.
QString PlainText(QString markdown) {
  static const QRegularExpression link(R"(!?\[([^\]]*)\]\([^)]*\))");
  static const QRegularExpression marks(R"([*`|]|^[-#]+ )", QRegularExpression::MultilineOption);
  return markdown.replace(link, "\\1").remove(marks).simplified();
}

void AddSections(const QString& file, QList<SHelpSection>& sections) {
  static const QRegularExpression headline("^(#+) (.*)$");
  bool is_code = false;
  for (const QString& line : Read(file).split('\n')) {
    if (line.startsWith("```")) is_code = !is_code;
    const QRegularExpressionMatch found = headline.match(line);
    if (found.hasMatch() && !is_code) {
      const QString title = PlainText(found.captured(2));
      const int level = static_cast<int>(found.capturedLength(1));
      sections.append({file, title, level == 1 ? QString() : HelpAnchor(title), level, {}});
    } else if (!sections.isEmpty()) {
      sections.last().text += line + "\n";
    }
  }
}

bool HasAll(const QString& text, const QStringList& words) {
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

QList<SHelpPage> HelpPages() {
  return {{kGuidePage, "Guide"},
          {kEditing, "Editing a model"},
          {kModelling, "Making things"},
          {kTextures, "Textures and mapping"},
          {kTrucks, "From a mesh to a truck"},
          {kArchives, "Working in archives"},
          {kCommandLinePage, "The command line"},
          {"file-formats.md", "File formats"},
          {kNewsPage, "What is new"}};
}

QList<SHelpSection> HelpSections() {
  QList<SHelpSection> sections;
  for (const SHelpPage& page : HelpPages())
    AddSections(page.file, sections);
  for (SHelpSection& section : sections)
    section.text = PlainText(section.text);
  return sections;
}

QList<SHelpSection> FindInHelp(const QList<SHelpSection>& sections, const QString& text) {
  const QStringList words = text.simplified().split(' ', Qt::SkipEmptyParts);
  QList<SHelpSection> in_titles;
  QList<SHelpSection> in_texts;
  for (const SHelpSection& section : sections) {
    if (HasAll(section.title, words))
      in_titles.append(section);
    else if (HasAll(section.title + " " + section.text, words))
      in_texts.append(section);
  }
  return in_titles + in_texts;
}

QString HelpAnchor(const QString& title) {
  static const QRegularExpression dropped("[^a-z0-9 -]");
  return title.toLower().remove(dropped).replace(' ', '-');
}

QUrl HelpUrl(const QString& file, const QString& anchor) {
  QUrl url("qrc:/help/" + file);
  if (!anchor.isEmpty()) url.setFragment(anchor);
  return url;
}

QUrl HelpFor(const QString& window_name) {
  for (const STopic& topic : kTopics)
    if (window_name == topic.window) return HelpUrl(topic.file, topic.anchor);
  return HelpUrl(kGuidePage, {});
}

QStringList WindowsWithHelp() {
  QStringList names;
  for (const STopic& topic : kTopics)
    names.append(topic.window);
  return names;
}

}  // namespace veldra

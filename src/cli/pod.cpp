#include <memory>
#include <nlohmann/json.hpp>

#include "archive/podextract.h"
#include "archive/podfile.h"
#include "archive/podwriter.h"
#include "archive/stockbuilder.h"
#include "cli/command.h"
#include "cli/podload.h"
#include "cli/session.h"
#include "packing/dependencies.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "settings/coptools.h"

namespace veldra {

namespace {

// --- list -----------------------------------------------------------------------------------------------------------

struct SListOptions {
  std::string pod;
  bool json = false;
};

std::string ListJson(const CMTMPODFile& archive) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const PODDirEntry& entry : archive.Entries()) {
    list.push_back({{"name", ToUtf8(entry.Name())},
                    {"trailingName", ToUtf8(entry.TrailingName())},
                    {"offset", entry.offset},
                    {"size", archive.ComputedSize(entry)},
                    {"storedSize", entry.stored_size}});
  }
  return DisplayJson(list.dump(1)) + "\n";
}

/// As "%10u", which for thousands of lines takes most of their time.
void AppendColumn(std::string& text, uint32_t number) {
  constexpr size_t kWidth = 10;
  const std::string digits = std::to_string(number);
  text.append(kWidth - digits.size(), ' ').append(digits);
}

std::string ListText(const CMTMPODFile& archive) {
  std::string text = "      size     offset  name\n";
  for (const PODDirEntry& entry : archive.Entries()) {
    AppendColumn(text, archive.ComputedSize(entry));
    AppendColumn(text += ' ', entry.offset);
    text += "  " + DisplayName(entry.Name());
    text += '\n';
  }
  return text;
}

int List(CSession& session, const SListOptions& options) {
  const CQuestions::CAbout about(session.Questions(), options.pod);
  CMTMPODFile archive(session.Questions());
  const std::string path = session.InputPath(options.pod);
  if (path.empty() || !archive.ReadDirectory(path)) return kFailed;
  return session.Print(options.json ? ListJson(archive) : ListText(archive));
}

SCommandRow ListCommand() {
  const auto options = std::make_shared<SListOptions>();
  return {.name = "list",
          .help = "Print the directory of an archive",
          .options = {Argument("POD", "Archive", options->pod), Flag("--json", "As JSON", options->json)},
          .run = [options](CSession& session) { return List(session, *options); }};
}

// --- extract --------------------------------------------------------------------------------------------------------

struct SExtractOptions {
  std::string pod;
  std::string destination;
  std::vector<std::string> names;
  bool folders = false;
  bool dependencies = false;
  EReplaceAnswer overwrite = EReplaceAnswer::kCancel;
};

const Words<EReplaceAnswer> kReplaceAnswers = {{"yes", EReplaceAnswer::kYes},
                                               {"all", EReplaceAnswer::kYesToAll},
                                               {"no", EReplaceAnswer::kNo},
                                               {"cancel", EReplaceAnswer::kCancel}};

/// The entries that NAMES mean, all for none; kDone, or kFailed for a name that means none.
int Select(CSession& session, const CPodDocument& archive, const std::vector<std::string>& names,
           std::vector<size_t>& entries) {
  for (const std::string& name : names) {
    const std::vector<size_t> found = archive.FindMatching(name);
    if (found.empty()) return session.Fail(Format("\"%s\" is not in the archive.", name.c_str()));
    entries.insert(entries.end(), found.begin(), found.end());
  }
  for (size_t i = 0; names.empty() && i < archive.Entries().size(); ++i)
    entries.push_back(i);
  return kDone;
}

void ShowNotes(CSession& session, const std::vector<std::string>& notes) {
  if (notes.empty()) return;
  std::string text = "Files that are needed and not in the archive:";
  for (const std::string& note : notes)
    text += "\n" + note;
  session.Questions().Message({.text = text});
}

int Extract(CSession& session, const SExtractOptions& options) {
  const CQuestions::CAbout about(session.Questions(), options.pod);
  CPodDocument archive;
  SExtractRequest request{.destination = options.destination, .folders = options.folders};
  if (LoadPod(session, options.pod, archive) != kDone) return kFailed;
  if (options.destination == kStandardStream && options.names.size() == 1)
    return PrintEntry(session, archive, options.names.front());
  if (Select(session, archive, options.names, request.entries) != kDone) return kFailed;
  std::vector<std::string> notes;
  if (options.dependencies) {
    request.add_dependencies = [&](std::vector<size_t>& entries) {
      const SSearchPlaces places = PlacesBeside(options.pod, session.Settings(), CopTools::InstallationDirectory());
      notes = AddOwnDependencies(archive, places, CStockFiles(session.SettingsFolder()), entries);
    };
  }
  session.Questions().SetReplaceAnswer(options.overwrite);
  const SExtractResult result = ExtractPod(session.Questions(), archive, request);
  ShowNotes(session, notes);
  if (!result.started) return kFailed;
  if (session.Print(result.Text() + "\n") != kDone) return kFailed;
  return result.done && result.refused == 0 ? kDone : kFailed;
}

SCommandRow ExtractCommand() {
  const auto options = std::make_shared<SExtractOptions>();
  return {
      .name = "extract",
      .help = "Write the files of an archive into a folder",
      .options =
          {Argument("POD", "Archive", options->pod),
           Argument("DEST", "Folder to write into; it must be there", options->destination),
           Arguments("NAME",
                     "Only these entries, in any letter case, with * and ?; a name without a folder is found in all of "
                     "them",
                     options->names),
           Flag("--folders", "Recreate the archive's folders", options->folders),
           Flag("--deps", "The files that these need, too, where the archive has them", options->dependencies),
           Choice("--overwrite", kReplaceAnswers, "What to do with files that exist (default: cancel)",
                  options->overwrite)},
      .run = [options](CSession& session) { return Extract(session, *options); }};
}

// --- create ---------------------------------------------------------------------------------------------------------

struct SCreateOptions {
  std::string pod;
  std::vector<std::string> files;
  bool skip_stock = false;
};

int Create(CSession& session, const SCreateOptions& options) {
  const CStockFiles stock(session.SettingsFolder());
  std::vector<SPodSource> sources;
  std::string left_out;
  for (const std::string& file : options.files) {
    const std::string name = FileNamePart(file);
    if (options.skip_stock && stock.IsStockFile(name)) {
      left_out += "Left out " + name + "\n";
    } else {
      sources.push_back({file, {file}});
    }
  }
  if (sources.empty()) return session.Fail("Every installation has all of these files.");
  if (!CreatePod(session.Questions(), options.pod, sources)) return kFailed;
  return session.Print(left_out);
}

SCommandRow CreateCommand() {
  const auto options = std::make_shared<SCreateOptions>();
  return {.name = "create",
          .help = "Put files into a new archive",
          .options = {Output("POD", "Archive to write; one that is there is replaced", options->pod),
                      Required(Arguments("FILE", "Files, in this order", options->files)),
                      Flag("--skip-stock", "Leave out files that every installation has. " + StockNote(),
                           options->skip_stock)},
          .run = [options](CSession& session) { return Create(session, *options); }};
}

// --- stock files ----------------------------------------------------------------------------------------------------

int PrintStock(CSession& session, const std::vector<std::string>& names) {
  const CStockFiles stock(session.SettingsFolder());
  std::string text;
  for (const std::string& name : names)
    text += name + (stock.IsStockFile(name) ? ": yes\n" : ": no\n");
  return session.Print(text);
}

SCommandRow IsStockCommand() {
  const auto names = std::make_shared<std::vector<std::string>>();
  return {.name = "is-stock",
          .help = "Say which files every installation of the game has",
          .options = {Required(Arguments("NAME", "File names without folders. " + StockNote(), *names))},
          .run = [names](CSession& session) { return PrintStock(session, *names); }};
}

struct SStockListOptions {
  std::string game_folder;
  std::string out;
};

int MakeStockList(CSession& session, const SStockListOptions& options) {
  SStockList list;
  if (!WriteStockList(session.Questions(), options.game_folder, options.out, list)) return kFailed;
  return session.Print(list.CountsText());
}

SCommandRow StockListCommand() {
  const auto options = std::make_shared<SStockListOptions>();
  const std::string place = std::string(kStockFileName) + " beside the settings file";
  return {.name = "stock-list",
          .help = "Make the list of stock files from the archives of an installed game",
          .options = {Argument("GAMEDIR", "Folder of the game", options->game_folder),
                      Output("OUT", "List to write; " + place + " takes the place of the built-in list", options->out)},
          .run = [options](CSession& session) { return MakeStockList(session, *options); }};
}

}  // namespace

std::string StockNote() {
  return std::string(kShippedListNote) + " pod stock-list makes the whole list.";
}

SCommandRow PodCommands() {
  SCommandRow pod = {
      .name = "pod",
      .help = "Archives",
      .commands = {ListCommand(), ExtractCommand(), CreateCommand(), IsStockCommand(), StockListCommand()}};
  for (SCommandRow& command : PodEditCommands())
    pod.commands.push_back(std::move(command));
  return pod;
}

}  // namespace veldra

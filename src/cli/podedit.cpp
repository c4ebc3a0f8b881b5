#include "archive/podedit.h"

#include <memory>
#include <nlohmann/json.hpp>

#include "archive/podextract.h"
#include "cli/podload.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

struct SPodOptions {
  std::string pod;
  std::vector<std::string> names;  ///< of entries, or of files to be added
  std::string name;
  std::string new_name;  ///< or the file
};

int PodStatus(bool done) {
  return done ? kDone : kFailed;
}

int Cat(CSession& session, const CPodDocument& archive, const SPodOptions& options) {
  return PrintEntry(session, archive, options.name);
}

int Add(CSession& session, const CPodDocument& archive, const SPodOptions& options) {
  std::vector<SPodSource> sources;
  for (const std::string& file : options.names) {
    const std::string path = session.InputPath(file);
    if (path.empty()) return kFailed;
    sources.push_back({options.new_name.empty() ? file : options.new_name, {path}});
  }
  return PodStatus(AddToPod(session.Questions(), archive, sources));
}

int Remove(CSession& session, const CPodDocument& archive, const SPodOptions& options) {
  return PodStatus(RemoveFromPod(session.Questions(), archive, options.names));
}

int Rename(CSession& session, const CPodDocument& archive, const SPodOptions& options) {
  return PodStatus(RenameInPod(session.Questions(), archive, options.name, options.new_name));
}

int Replace(CSession& session, const CPodDocument& archive, const SPodOptions& options) {
  const std::string path = session.InputPath(options.new_name);
  return PodStatus(!path.empty() && ReplaceInPod(session.Questions(), archive, options.name, path));
}

using PodAction = int (*)(CSession& session, const CPodDocument& archive, const SPodOptions& options);

SCommandRow PodCommand(const char* name, const char* help, PodAction action, const std::shared_ptr<SPodOptions>& values,
                       const std::vector<SOptionRow>& options) {
  SCommandRow command = {.name = name,
                         .help = help,
                         .options = {Argument("POD", "Archive", values->pod)},
                         .run = [values, action](CSession& session) {
                           CPodDocument archive;
                           return LoadPod(session, values->pod, archive) == kDone ? action(session, archive, *values)
                                                                                  : kFailed;
                         }};
  command.options.insert(command.options.end(), options.begin(), options.end());
  return command;
}

/// For what is written: standard input is no archive that could be.
SCommandRow Change(SCommandRow command, const std::shared_ptr<SPodOptions>& values) {
  command.check = [values] {
    if (values->pod == kStandardStream) return std::string("POD: standard input cannot be changed");
    const bool is_ambiguous = !values->new_name.empty() && values->names.size() > 1;
    return std::string(is_ambiguous ? "--as: names one file, and there are more" : "");
  };
  return command;
}

struct STestOptions {
  std::vector<std::string> pods;
  bool json = false;
};

struct STestReport {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  std::string text;
};

void AddFindings(const CPodDocument& archive, const std::string& pod, STestReport& report) {
  for (const SPodFinding& finding : TestPod(archive)) {
    report.text += pod + ": " + finding.kind + ": " + finding.text + "\n";
    std::vector<std::string> names;
    names.reserve(finding.entries.size());
    for (const size_t entry : finding.entries)
      names.push_back(ToUtf8(archive.Entries()[entry].Name()));
    report.list.push_back({{"pod", ToUtf8(pod)},
                           {"kind", finding.kind},
                           {"text", ToUtf8(finding.text)},
                           {"entries", finding.entries},
                           {"names", names}});
  }
}

/// One that cannot be read does not keep the others from being looked at.
int Test(CSession& session, const STestOptions& options) {
  STestReport report;
  bool is_read = true;
  for (const std::string& pod : options.pods) {
    CPodDocument archive;
    if (LoadPod(session, pod, archive) == kDone) {
      AddFindings(archive, pod, report);
    } else {
      is_read = false;
    }
  }
  if (!is_read && options.pods.size() == 1) return kFailed;
  if (session.Print(options.json ? DisplayJson(report.list.dump(1)) + "\n" : report.text) != kDone) return kFailed;
  return PodStatus(is_read && report.list.empty());
}

SCommandRow TestCommand() {
  const auto options = std::make_shared<STestOptions>();
  return {.name = "test",
          .help = "List what is wrong with archives; status 1 if there is anything",
          .options = {Required(Arguments("POD", "Archives", options->pods)), Flag("--json", "As JSON", options->json)},
          .run = [options](CSession& session) { return Test(session, *options); }};
}

}  // namespace

int LoadPod(CSession& session, const std::string& name, CPodDocument& archive) {
  const std::string path = session.InputPath(name);
  if (path.empty()) return kFailed;
  SError error;
  if (!CInputFile().Open(path, &error)) return session.Fail(kFailedToOpenPod, name + ": " + error.what);
  return archive.Load(path, &error) ? kDone : session.Fail(kFailedToLoadPod, name + ": " + error.what);
}

int PrintEntry(CSession& session, const CPodDocument& archive, const std::string& name) {
  const auto entry = FindOneEntry(session.Questions(), archive, name);
  if (!entry) return kFailed;
  SError error;
  const auto bytes = archive.ReadEntry(*entry, &error, kLargestFile);
  if (!bytes) return session.Fail(Format("\"%s\" could not be read.", name.c_str()), error.what);
  return session.Pass(bytes->Text());
}

std::vector<SCommandRow> PodEditCommands() {
  const auto values = std::make_shared<SPodOptions>();
  const char* const name_help = "Entry, in any letter case, with * and ?; a name without a folder is found in all";
  const SOptionRow name = Argument("NAME", name_help, values->name);
  return {
      PodCommand("cat", "Write one entry to standard output", Cat, values, {name}),
      Change(PodCommand(
                 "add", "Add files behind the other entries", Add, values,
                 {Required(Arguments("FILE", "Files, in this order", values->names)),
                  Option("--as", "NAME", "Name of the one file in the archive (default: its own)", values->new_name)}),
             values),
      Change(PodCommand("remove", "Take entries out", Remove, values,
                        {Required(Arguments("NAME", name_help, values->names))}),
             values),
      Change(PodCommand("rename", "Give an entry another name", Rename, values,
                        {Argument("OLD", name_help, values->name), Argument("NEW", "Its new name", values->new_name)}),
             values),
      Change(PodCommand("replace", "Give an entry the bytes of a file", Replace, values,
                        {name, Argument("FILE", "File to take", values->new_name)}),
             values),
      TestCommand(),
  };
}

}  // namespace veldra

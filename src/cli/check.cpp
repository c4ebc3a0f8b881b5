#include <memory>

#include "cli/command.h"
#include "cli/findings.h"
#include "cli/session.h"
#include "model/binfile.h"
#include "packing/modeltextures.h"
#include "platform/files.h"
#include "platform/text.h"

namespace veldra {

namespace {

struct SCheckOptions {
  std::vector<std::string> models;
  bool json = false;
};

bool CheckFile(CSession& session, const std::string& model, CFindings& findings) {
  SError error;
  const auto file = ReadBinBytes(session.InputPath(model), &error);
  if (!file) {
    session.Fail(Format("\"%s\" could not be opened.", model.c_str()), error.what);
    return false;
  }
  CTexturePlaces places(session.Settings(), model == kStandardStream ? "" : model);
  const auto width = [&places](const std::string& name) -> std::optional<int> {
    const auto found = places.Find(name);
    const auto length = !found                ? std::nullopt
                        : found->bytes.length ? found->bytes.length
                                              : FileLength(found->bytes.path);
    return length ? std::optional<int>(TextureSizeOfLength(*length)) : std::nullopt;
  };
  return CheckModelBytes(session, model, file->View(), width, findings);
}

int Check(CSession& session, const SCheckOptions& options) {
  CFindings findings;
  bool all_read = true;
  const auto progress = session.Questions().BeginWork("Checking models", false);
  for (size_t i = 0; i < options.models.size(); ++i) {
    progress->Step(i, options.models.size());
    all_read = CheckFile(session, options.models[i], findings) && all_read;
  }
  const int status = findings.Print(session, options.json);
  return all_read ? status : kFailed;
}

}  // namespace

SCommandRow CheckCommand() {
  const auto options = std::make_shared<SCheckOptions>();
  return {.name = "check",
          .help = "List what is wrong with models, or may become so in the game; status 1 if there is anything",
          .options = {Required(Arguments("MODEL", "Model files", options->models)),
                      Flag("--json", "As JSON", options->json)},
          .run = [options](CSession& session) { return Check(session, *options); }};
}

}  // namespace veldra

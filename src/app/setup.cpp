#include "app/setup.h"

#include "archive/stockbuilder.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/userfolders.h"
#include "samples/truckfile.h"
#include "samples/workspace.h"

namespace veldra {

namespace {

constexpr const char* kSampleName = "Veldra Sample";

/// No game: the sample's folders where there is a sample, and greys for what has no colours.
void TakeNoGame(const std::string& sample, CSettings& settings) {
  const auto folder = [&](const char* name) { return sample.empty() ? "" : JoinPath(sample, name); };
  settings.defpal = sample.empty() ? "" : FindAnyCase(JoinPath(folder("ART"), kGamePalette));
  settings.art_dir = folder("ART");
  settings.bin_dir = folder("MODELS");
  settings.trk_dir = folder("TRUCK");
  settings.pod_dir = settings.pod_dest_dir = sample;
}

}  // namespace

std::string SampleFolder() {
  const std::string home = HomeDirectory();
  const std::string documents = JoinPath(home, "Documents");
  return JoinPath(IsDirectory(documents) ? documents : home, kSampleName);
}

std::string WriteSample(const std::string& folder, CQuestions& questions) {
  constexpr const char* kFailed = "The sample project could not be written.";
  std::string truck = JoinPath(JoinPath(folder, "MODELS"), "TRUCK.BIN");
  if (IsFile(truck)) return truck;
  SError error = {.what = "There are other files in the folder."};
  const auto work = questions.BeginWork("Writing the sample project", false);
  if (ListDirectory(folder).empty() && samples::WriteWorkspace(folder, questions, &error)) return truck;
  questions.Fail(kFailed, folder + ": " + error.what);
  return "";
}

std::string WriteSampleTruck(const std::string& folder, CQuestions& questions) {
  return WriteSample(folder, questions).empty() ? "" : JoinPath(JoinPath(folder, "TRUCK"), samples::kTruckFileName);
}

SSetUp ProposeSetUp(const std::vector<std::string>& files) {
  SSetUp offer;
  offer.game = LookIntoGameFolder(FindGame(files));
  offer.has_game = offer.game.HasAny();
  offer.sample_folder = SampleFolder();
  offer.wants_sample = !offer.has_game && files.empty();
  return offer;
}

SSetUp ProposeSetUp(const CSettings& settings) {
  SSetUp offer = ProposeSetUp(std::vector<std::string>{JoinPath(settings.pod_dir, "x")});
  const SGameFolder game = LookIntoGameFolder(settings.pod_dir);
  if (game.HasAny()) offer.game = game;
  offer.has_game = offer.game.HasAny();
  offer.wants_sample = false;
  return offer;
}

void ApplySetUp(const SSetUp& choice, const std::string& settings_folder, CSettings& settings, CQuestions& questions,
                std::string* first_file) {
  SError error;
  const std::string sample = choice.sample_folder;
  *first_file = choice.wants_sample ? WriteSample(sample, questions) : "";
  if (!choice.has_game) return TakeNoGame(first_file->empty() ? "" : sample, settings);
  if (!TakeGameFolder(choice.game, settings_folder, settings, &error))
    questions.Fail("The colour table could not be taken out of its archive.", error.what);
  SStockList list;
  if (choice.builds_stock_list && choice.game.archives > 0 && MakeDirectories(settings_folder))
    WriteStockList(questions, choice.game.path, JoinPath(settings_folder, kStockFileName), list);
}

}  // namespace veldra

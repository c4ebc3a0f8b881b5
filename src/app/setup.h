#pragma once

#include <string>

#include "packing/gamefolder.h"
#include "platform/questions.h"
#include "settings/settings.h"

namespace veldra {

/// What the user says about where things are.
struct SSetUp {
  bool has_game = false;
  SGameFolder game;                ///< with has_game only
  bool builds_stock_list = false;  ///< likewise; offered where that is the whole game
  bool wants_sample = false;       ///< the sample project, in
  std::string sample_folder;       ///< this folder
};

/// What is offered at a first start with FILES to open.
SSetUp ProposeSetUp(const std::vector<std::string>& files);
/// The same for who has SETTINGS.
SSetUp ProposeSetUp(const CSettings& settings);

/// Where the sample project goes unless the user says otherwise.
std::string SampleFolder();
/// Writes it into FOLDER, where it is left as it is when it is there already; the model to begin with, or "" when that
/// has failed and the user has been told. A folder with other files is refused.
std::string WriteSample(const std::string& folder, CQuestions& questions);
/// The same for the truck of it.
std::string WriteSampleTruck(const std::string& folder, CQuestions& questions);

/// Makes SETTINGS, whose file lies in SETTINGS_FOLDER, those that CHOICE means, and what goes with them: the stock-file
/// list, the sample project. What fails is said, and the rest done. FIRST_FILE becomes the model to begin with, ""
/// when there is none.
void ApplySetUp(const SSetUp& choice, const std::string& settings_folder, CSettings& settings, CQuestions& questions,
                std::string* first_file);

}  // namespace veldra

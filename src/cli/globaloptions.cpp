#include "cli/globaloptions.h"

#include <CLI/CLI.hpp>

#include "cli/values.h"

namespace veldra {

namespace {

void TakeUnknownFaceAnswer(const std::string& text, SUnknownFaceAnswer& answer) {
  using EChoice = SUnknownFaceAnswer::EChoice;
  const auto type = ParseFaceType(text, false);
  if (text == "ignore") {
    answer = {EChoice::kIgnore};
  } else if (text == "abort") {
    answer = {EChoice::kAbort};
  } else if (type) {
    answer = {EChoice::kChange, *type};
  } else {
    throw CLI::ValidationError("--unknown-face",
                               "\"" + text +
                                   "\" is neither ignore nor abort nor a face type (0x0E, 0x11, 0x18, 0x19, "
                                   "0x29, 0x33)");
  }
}

void AddAnswers(CLI::App& app, SGlobalOptions& options) {
  auto* const yes = app.add_flag_callback(
      "--yes", [&] { options.answer = EAnswer::kYes; },
      "Answer every question with Yes; delete unused vertices and save");
  auto* const no = app.add_flag_callback(
      "--no", [&] { options.answer = EAnswer::kNo; },
      "Answer every question with No; save unused vertices as they are");
  yes->disable_flag_override();
  no->disable_flag_override()->excludes(yes);
}

}  // namespace

void AddGlobalOptions(CLI::App& app, SGlobalOptions& options) {
  app.add_option("--cfg", options.settings_file, "Settings file (default: Veldra.cfg in the current directory)")
      ->type_name("FILE");
  app.add_option("--art", options.art_directory, "Texture directory in place of the setting ARTDIR")->type_name("DIR");
  app.add_option("--palette", options.palette, "Default colour table in place of the setting DEFPAL")
      ->type_name("FILE");
  AddAnswers(app, options);
  app.add_option_function<std::string>(
         "--unknown-face", [&](const std::string& text) { TakeUnknownFaceAnswer(text, options.unknown_face); },
         "What becomes of faces of an unknown type (default: abort)")
      ->type_name("ignore|abort|TYPE");
  app.add_option("--missing-texture", options.missing_texture, "File that stands in for every texture not found")
      ->type_name("RAW");
  app.add_option("--blank-texture", options.blank_texture, "Take a blank texture of this width for one not found")
      ->type_name("WIDTH")
      ->check(CLI::IsMember({"64", "128", "256", "512"}));
}

}  // namespace veldra

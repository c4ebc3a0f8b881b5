#include "cli/globaloptions.h"

#include "cli/values.h"

namespace veldra {

namespace {

std::optional<SUnknownFaceAnswer> ParseUnknownFaceAnswer(const std::string& text) {
  using EChoice = SUnknownFaceAnswer::EChoice;
  if (EqualNoCase(text, "ignore")) return SUnknownFaceAnswer{EChoice::kIgnore};
  if (EqualNoCase(text, "abort")) return SUnknownFaceAnswer{EChoice::kAbort};
  const auto type = ParseFaceType(text, false);
  return type ? std::optional(SUnknownFaceAnswer{EChoice::kChange, *type}) : std::nullopt;
}

/// --yes and --no, of which only one can be given.
TakeValue Answering(EAnswer& answer, EAnswer given, EAnswer opposite) {
  return [&answer, given, opposite](const std::string&) -> std::string {
    if (answer == opposite) return "--yes and --no exclude each other";
    answer = given;
    return "";
  };
}

}  // namespace

std::vector<SOptionRow> GlobalOptions(SGlobalOptions& options) {
  const Words<int> widths = {{"64", 64}, {"128", 128}, {"256", 256}, {"512", 512}};
  return {
      Option("--cfg", "FILE", "Settings file (default: Veldra.cfg in the current directory)", options.settings_file),
      Option("--art", "DIR", "Texture directory in place of the setting ARTDIR", options.art_directory),
      Option("--palette", "FILE", "Default colour table in place of the setting DEFPAL", options.palette),
      Option("--yes", "", "Answer every question with Yes; delete unused vertices and save",
             Answering(options.answer, EAnswer::kYes, EAnswer::kNo)),
      Option("--no", "", "Answer every question with No; save unused vertices as they are",
             Answering(options.answer, EAnswer::kNo, EAnswer::kYes)),
      Option("--unknown-face", "ignore|abort|TYPE", "What becomes of faces of an unknown type (default: abort)",
             Parsed(options.unknown_face, ParseUnknownFaceAnswer,
                    "is neither ignore nor abort nor a face type (0x0E, 0x11, 0x18, 0x19, 0x29, 0x33)")),
      Option("--missing-texture", "RAW", "File that stands in for every texture not found", options.missing_texture),
      Choice("--blank-texture", widths, "Take a blank texture of this width for one not found", options.blank_texture),
  };
}

}  // namespace veldra

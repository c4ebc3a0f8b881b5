#include "cli/session.h"

#include <ostream>

#include "cli/commandrow.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/standardinput.h"
#include "platform/text.h"
#include "settings/coptools.h"

namespace veldra {

namespace {

std::string SettingsPath(const SGlobalOptions& options) {
  return options.settings_file.empty() ? kSettingsFileName : options.settings_file;
}

CSettings ReadSettings(const SGlobalOptions& options, const std::string& path) {
  SettingsMap texts;
  CopTools::ReadCfgFile(path, texts);
  CSettings settings;
  settings.Take(texts);
  if (!options.art_directory.empty()) settings.art_dir = options.art_directory;
  return settings;
}

/// Of the two tables the one that is named. Nobody is there to be asked for another than the setting's.
ColorTable ChosenColors(const std::string& given, const std::string& setting) {
  const std::string& path = given.empty() ? setting : given;
  return (path.empty() ? std::nullopt : ReadColorTable(path)).value_or(GreyRamp());
}

}  // namespace

CSession::CSession(const SGlobalOptions& options, std::ostream& out, std::ostream& err)
    : options_(options),
      questions_(options, err),
      out_(out),
      settings_(ReadSettings(options, SettingsPath(options))),
      settings_folder_(DirectoryPart(AbsolutePath(SettingsPath(options)))),
      default_colors_(ChosenColors(options.palette, settings_.defpal)),
      textures_(questions_, default_colors_) {}

void CSession::TakeEditorSettings() {
  if (!options_.settings_file.empty()) return;
  settings_ = ReadSettings(options_, CopTools::SettingsPath(CurrentDirectory()));
  default_colors_ = ChosenColors(options_.palette, settings_.defpal);
}

int CSession::CheckSettings() {
  SettingsMap texts;
  SError error;
  const std::string& path = options_.settings_file;
  if (!path.empty() && !CopTools::ReadCfgFile(path, texts, &error))
    return Fail(Format("\"%s\" could not be read.", path.c_str()), error.what);
  const std::string& colors = options_.palette;
  if (colors.empty() || ReadColorTable(colors)) return kDone;
  return Fail(Format("\"%s\" is not a colour table that can be read.", colors.c_str()));
}

std::unique_ptr<CTarnDoc> CSession::NewDocument() {
  return std::make_unique<CTarnDoc>(SDocumentServices{questions_, textures_, settings_});
}

std::string CSession::InputPath(const std::string& path) {
  if (path != kStandardStream) return path;
  SError error;
  const std::string kept = StandardInputFile(&error);
  if (kept.empty()) Fail("Standard input could not be read.", error.what);
  return kept;
}

std::unique_ptr<CTarnDoc> CSession::Open(const std::string& name) {
  const std::string path = InputPath(name);
  if (path.empty()) return nullptr;
  auto document = NewDocument();
  const int printed_before = questions_.PrintedCount();
  SDiagnosis diagnosis;
  if (document->OnOpenDocument(path, &diagnosis)) return document;
  // Some faults show no box in the editor, where the user sees that nothing opens. A script needs the reason.
  if (questions_.PrintedCount() == printed_before) {
    questions_.Message({.text = name + ": " + diagnosis.Text(), .caption = kErrorCaption});
  }
  return nullptr;
}

int CSession::Fail(const std::string& text, const std::string& details) {
  questions_.Message({.text = text, .caption = kErrorCaption, .icon = EIcon::kError, .details = details});
  return kFailed;
}

int CSession::FailToWrite(const std::string& path, const std::string& reason) {
  return Fail(Format("\"%s\" could not be written.", path.c_str()), reason);
}

int CSession::Print(std::string_view text) {
  return Pass(DisplayText(text));
}

int CSession::Pass(std::string_view bytes) {
  out_ << bytes << std::flush;
  return out_ ? kDone : Fail("Standard output could not be written.");
}

int CSession::PrintOrWrite(std::string_view text, const std::string& out_path) {
  if (out_path.empty()) return Print(text);
  if (out_path == kStandardStream) return Pass(text);
  SError error;
  if (CheckWritable(out_path) != kDone) return kFailed;
  return ReplaceFile(out_path, text, &error) ? kDone : FailToWrite(out_path, error.what);
}

int CSession::CheckWritable(const std::string& path) {
  return !FileExists(path) || IsWritable(path) ? kDone : FailToWrite(path, "It cannot be opened for writing.");
}

}  // namespace veldra

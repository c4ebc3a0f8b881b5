#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "cli/cliquestions.h"
#include "cli/globaloptions.h"
#include "document/tarn2doc.h"
#include "settings/settings.h"
#include "textures/texturestore.h"

namespace veldra {

/// As a file to read standard input, as one to write standard output.
inline constexpr const char* kStandardStream = "-";

/// What a command works with: settings, colour table and textures as the options before it say, and the way to the
/// user. The settings file is read and never written.
class CSession {
 public:
  CSession(const SGlobalOptions& options, std::ostream& out, std::ostream& err);

  /// kDone, or kFailed when the settings file or the colour table that the options name cannot be read; the user has
  /// been told.
  int CheckSettings();

  /// The settings that the editor would have, unless the options name a file: for what goes on behind the user's back.
  void TakeEditorSettings();

  CCliQuestions& Questions() { return questions_; }
  const CSettings& Settings() const { return settings_; }
  /// Where the settings file lies, and with it what else the user keeps for the program.
  const std::string& SettingsFolder() const { return settings_folder_; }
  CTextureStore& Textures() { return textures_; }
  /// Of textures that have none of their own.
  const ColorTable& DefaultColors() const { return default_colors_; }

  /// Empty, and without a file.
  std::unique_ptr<CTarnDoc> NewDocument();
  /// Null when PATH cannot be loaded; the user has been told why.
  std::unique_ptr<CTarnDoc> Open(const std::string& path);

  /// Where what the user calls PATH can be read: for "-" a file that holds standard input, "" after a message when that
  /// cannot be read; any other path itself.
  std::string InputPath(const std::string& path);

  /// Shows an error; returns kFailed.
  int Fail(const std::string& text, const std::string& details = {});
  int FailToWrite(const std::string& path, const std::string& reason);

  // Each returns the exit status.
  int Print(std::string_view text);
  /// The content of a file, as it is, to standard output: that is what was asked for.
  int Pass(std::string_view bytes);
  /// To the file OUT_PATH, which is replaced as a whole, or to standard output when it is "" or "-".
  int PrintOrWrite(std::string_view text, const std::string& out_path);
  /// kDone, or kFailed when there is a file at PATH that cannot be written to; the user has been told.
  int CheckWritable(const std::string& path);

 private:
  const SGlobalOptions& options_;
  CCliQuestions questions_;
  std::ostream& out_;
  CSettings settings_;
  std::string settings_folder_;
  ColorTable default_colors_;
  CTextureStore textures_;
};

}  // namespace veldra

#pragma once

#include <string>
#include <vector>

#include "cli/commandrow.h"
#include "platform/questions.h"

namespace veldra {

/// What the options before the command say.
struct SGlobalOptions {
  std::string settings_file;          ///< "" for kSettingsFileName in the current directory
  std::string art_directory;          ///< "" for that of the settings
  std::string palette;                ///< "" for that of the settings
  EAnswer answer = EAnswer::kCancel;  ///< to every Yes/No and Yes/No/Cancel question
  SUnknownFaceAnswer unknown_face;    ///< abort
  std::string missing_texture;        ///< "" for none
  int blank_texture = 0;              ///< 0 for none
};

/// Their rows, which fill OPTIONS.
std::vector<SOptionRow> GlobalOptions(SGlobalOptions& options);

}  // namespace veldra

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "archive/podwriter.h"
#include "settings/settings.h"

/// Finding the game, and what a folder has of it.
namespace veldra {

/// The colour table that the game's own textures are made for.
inline constexpr const char* kGamePalette = "METALCR2.ACT";

/// What a folder has of the game, in files of their own and in archives.
struct SGameFolder {
  std::string path;  ///< "" when there is no such folder
  std::string art;   ///< where files of each kind are, or would be
  std::string models;
  std::string trucks;
  size_t archives = 0;
  size_t texture_count = 0;
  size_t model_count = 0;
  size_t truck_count = 0;
  std::optional<SPodSource> palette;  ///< kGamePalette, else any colour table beside textures

  bool HasAny() const { return archives + texture_count + model_count + truck_count > 0; }
  /// The game itself, and not somebody's project: it has thousands of textures.
  bool IsWhole() const { return archives > 0 && texture_count >= 1000; }
  /// "3 archives, 120 textures, 14 models, 2 trucks" and where the colour table is.
  std::string Text() const;
};

/// PATH may also be one of the folders within the game's.
SGameFolder LookIntoGameFolder(const std::string& path);

/// The first of the usual places, and of the folders of FILES and those above them, that has something of the game:
/// what the game's installer registered, Windows' program folders (elsewhere those of each Wine prefix), the user's
/// own. "" for none.
std::string FindGame(const std::vector<std::string>& files);

/// Makes SETTINGS those of who has the game at GAME. A colour table that is in an archive is taken out, into KEEP_IN;
/// false with ERROR filled when that fails.
bool TakeGameFolder(const SGameFolder& game, const std::string& keep_in, CSettings& settings, SError* error);

}  // namespace veldra

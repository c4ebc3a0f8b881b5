#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/commandrow.h"
#include "cli/session.h"
#include "render/viewstate.h"

/// What the commands that draw have in common.
namespace veldra {

struct SPictureOptions {
  std::pair<int, int> size = {800, 600};
  std::optional<ERenderMode> mode;
  std::optional<std::vector<double>> rotation;
  std::optional<SColor> background;
  bool axes = false;
  bool transparency = false;
};

/// Their rows, which fill OPTIONS.
std::vector<SOptionRow> PictureRows(SPictureOptions& options);

/// Draws MODEL into the PNG file OUT so that all within BOUNDS is seen. Returns the exit status.
int DrawPicture(CSession& session, const CBinModel& model, const SBounds& bounds, const SPictureOptions& options,
                const std::string& out);

}  // namespace veldra

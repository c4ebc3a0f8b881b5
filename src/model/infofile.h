#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

/// What a model's ".info" sidecar holds: what the model file itself has no place for.
struct SModelInfo {
  std::string path;  ///< of the file, for complaints; may be ""
  struct SGroup {
    std::string name;
    std::vector<int32_t> members;
  };
  std::vector<SGroup> face_groups;
  std::vector<SGroup> vertex_groups;
  /// One for each animated texture record of the model file, in its order.
  std::vector<std::string> animations;
  /// What could not be understood, with line numbers; empty for a good file. The rest is kept.
  std::vector<std::string> complaints;
};

/// Line ends may be LF, CR LF or CR. A count that is no number or larger than the lines left, and members that are no
/// numbers, become complaints; what follows a count in doubt is not taken.
SModelInfo ParseInfo(std::string_view text);

/// Adds INFO's groups to MODEL. Members outside the model are left out and names that are taken get a number, both with
/// a complaint added to INFO.
void AddInfoGroups(CBinModel& model, SModelInfo& info);

/// The sidecar of MODEL; ANIMATIONS as in SModelInfo.
std::string WriteInfo(const CBinModel& model, std::span<const std::string> animations);

}  // namespace veldra

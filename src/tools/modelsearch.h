#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

/// What a user who types a few words looks for in a model. A word that is a number stands for the face or vertex of
/// that number; any other one for a part of a face type's label, of a texture's name or of a group's name, without
/// regard to case. All words must fit.
class CModelSearch {
 public:
  explicit CModelSearch(std::string_view text);
  bool IsEmpty() const { return words_.empty(); }

  // Positions in the model's arrays, ascending. Every one for an empty search.
  std::vector<int32_t> Faces(const CBinModel& model) const;
  std::vector<int32_t> Vertices(const CBinModel& model) const;
  std::vector<int32_t> Textures(const CBinModel& model) const;
  std::vector<int32_t> Groups(const CBinModel& model, EGroupKind kind) const;

 private:
  struct SWord {
    std::string text;               ///< lower case
    std::optional<int32_t> number;  ///< when it is one
  };
  bool FitsName(std::string_view name) const;
  bool FitsFace(const std::string& label, const std::string& texture) const;

  std::vector<SWord> words_;
  std::optional<int32_t> number_;  ///< that all numbers in the search are
  bool is_only_number_ = false;
  bool is_contradiction_ = false;  ///< two different numbers
};

}  // namespace veldra

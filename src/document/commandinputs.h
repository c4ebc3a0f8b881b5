#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/binmodel.h"
#include "model/geometry.h"

/// What the dialogs of the document's commands ask, as plain values: the dialogs bind fields to them, the document
/// carries them out, and everything about them can be checked without a window.
namespace veldra {

/// What a number field takes.
struct SNumberRule {
  bool integer = false;
  double smallest = -2147483648.0;
  double largest = 2147483647.0;
};

/// What is wrong with TEXT for a field under RULE, in words to stand beside it, or "": empty, not a number, a fraction
/// where a whole number is needed, out of range. Blanks around it do not matter.
std::string NumberFault(std::string_view text, const SNumberRule& rule);
/// The number of a text without fault, else nothing.
std::optional<double> FieldNumber(std::string_view text, const SNumberRule& rule);

struct SResizeInput {
  double x = 1.0;  ///< factors
  double y = 1.0;
  double z = 1.0;
  SScope::EKind scope = SScope::EKind::kAll;
};

struct STranslateInput {
  int32_t x = 0;
  int32_t y = 0;
  int32_t z = 0;
  SScope::EKind scope = SScope::EKind::kAll;
};

struct SRotateInput {
  double angle = 0.0;
  bool radians = false;
  EAxis axis = EAxis::kY;
  SScope::EKind scope = SScope::EKind::kAll;
};

struct SMirrorInput {
  bool x = false;  ///< the axes whose coordinate is negated
  bool y = false;
  bool z = false;
  SScope::EKind scope = SScope::EKind::kAll;
};

struct SAddVertexInput {
  SPoint position;
};

struct SAddFaceInput {
  std::array<int32_t, 4> corners = {0, 1, 2, -1};  ///< vertex indices, the fourth -1 for a triangle
  uint32_t type = kFaceTextured;
  int32_t texture = 0;  ///< position among the model's texture entries; -1 for none, with type 0x19 only
};

struct SMergeInput {
  int32_t threshold = 0;  ///< model units, not negative
};

struct SReplaceTextureInput {
  int32_t texture = 0;  ///< position among the model's texture entries
  std::string path;     ///< of the RAW file that takes its place
};

// What stands in the way of carrying INPUT out on MODEL, in words, or "".
std::string InputFault(const CBinModel& model, const SAddFaceInput& input);

/// The bounds that MODEL would have afterwards; nothing when the operation would be refused or the model has no
/// vertices. SELECTION: the selected vertices or faces that the input's scope means.
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SResizeInput& input);
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const STranslateInput& input);
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SRotateInput& input);

}  // namespace veldra

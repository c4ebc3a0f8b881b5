#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"
#include "model/geometry.h"
#include "platform/numberrule.h"

/// What the dialogs of the document's commands ask, as plain values: the dialogs bind fields to them, the document
/// carries them out, and everything about them can be checked without a window.
namespace veldra {

/// The point that stays where it is when something is turned, resized or mirrored.
struct SPivotInput {
  enum class EKind { kMiddle, kOrigin, kVertex, kPoint } kind = EKind::kOrigin;  ///< kMiddle: of what moves
  int32_t vertex = -1;                                                           ///< kVertex
  Vector3 point = {};                                                            ///< kPoint
};

struct SResizeInput {
  double x = 1.0;  ///< factors
  double y = 1.0;
  double z = 1.0;
  SScope::EKind scope = SScope::EKind::kAll;
  SPivotInput pivot = {};
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
  SPivotInput pivot = {};
};

struct SMirrorInput {
  bool x = false;  ///< the axes whose coordinate is negated
  bool y = false;
  bool z = false;
  SScope::EKind scope = SScope::EKind::kAll;
  SPivotInput pivot = {};
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

/// The scope that the rotate dialog's target stands for: 0 all vertices, 1 selected vertices, 2 vertices of selected
/// faces. SScope counts the last two the other way round.
SScope::EKind ScopeOfRotateTarget(int target);

/// The selected vertices or faces that KIND means; empty for kAll.
std::vector<int32_t> SelectionOf(const CBinModel& model, SScope::EKind kind);

/// Where INPUT is, for an operation that moves VERTICES of MODEL. Their middle is that of their bounds, and may lie on
/// half units.
Vector3 PivotPoint(const CBinModel& model, std::span<const int32_t> vertices, const SPivotInput& input);

// What stands in the way of carrying INPUT out on MODEL, in words, or "".
/// Of any operation: nothing is selected that KIND could mean.
std::string ScopeFault(const CBinModel& model, SScope::EKind kind);
std::string PivotFault(const CBinModel& model, const SPivotInput& input);
std::string InputFault(const CBinModel& model, const SAddFaceInput& input);
std::string InputFault(const CBinModel& model, const SMergeInput& input);
std::string InputFault(const CBinModel& model, const SReplaceTextureInput& input);

/// The bounds that MODEL would have afterwards; nothing when the operation would be refused or the model has no
/// vertices. SELECTION: the selected vertices or faces that the input's scope means.
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SResizeInput& input);
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const STranslateInput& input);
std::optional<SBounds> ResultingBounds(const CBinModel& model, std::span<const int32_t> selection,
                                       const SRotateInput& input);

}  // namespace veldra

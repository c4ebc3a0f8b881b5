#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"
#include "platform/questions.h"

/// The numeric services of the editing commands. Vertices stay integers: what is computed in floating point is
/// truncated toward zero.
namespace veldra {

/// The vertices that an operation acts on.
struct SScope {
  /// kAll leaves out what is hidden.
  enum class EKind { kAll = 0, kSelectedFaces = 1, kSelectedVertices = 2 } kind = EKind::kAll;
  std::span<const int32_t> selection = {};  ///< face or vertex indices

  static SScope All() { return {}; }
  static SScope OfFaces(std::span<const int32_t> faces) { return {EKind::kSelectedFaces, faces}; }
  static SScope OfVertices(std::span<const int32_t> vertices) { return {EKind::kSelectedVertices, vertices}; }
};

/// Ascending, each once.
std::vector<int32_t> VerticesInScope(const CBinModel& model, const SScope& scope);

enum class EAxis { kX = 0, kY = 1, kZ = 2 };
/// POINT's place on AXIS.
constexpr int32_t& Coordinate(SPoint& point, EAxis axis) {
  constexpr int32_t SPoint::*kMembers[] = {&SPoint::x, &SPoint::y, &SPoint::z};
  return point.*kMembers[static_cast<size_t>(axis)];
}
constexpr int32_t Coordinate(const SPoint& point, EAxis axis) {
  SPoint copy = point;
  return Coordinate(copy, axis);
}

/// "" when done, else what stood in the way; the model is unchanged then. Resize and rotate refuse what would not fit
/// in 32 bits.
using GeometryFault = std::string;

// PIVOT is the point that stays where it is, in model units.
/// Each coordinate times its factor.
GeometryFault Resize(CBinModel& model, const SScope& scope, double sx, double sy, double sz, const Vector3& pivot = {});
/// In wrapping 32-bit arithmetic. Nothing happens when all three are zero.
void Translate(CBinModel& model, const SScope& scope, int32_t dx, int32_t dy, int32_t dz);
/// An explicit list, by the offsets or, with FORWARD false, by their negation.
void TranslateVertices(CBinModel& model, std::span<const int32_t> vertices, int32_t dx, int32_t dy, int32_t dz,
                       bool forward);
/// Counter-clockwise for who looks against the axis. Multiples of 90 degrees are exact.
GeometryFault Rotate(CBinModel& model, const SScope& scope, EAxis axis, double angle, bool radians,
                     const Vector3& pivot = {});
/// POINTS resized or turned, in the same order; MOVED means nothing after a fault.
GeometryFault ResizedPoints(std::span<const SPoint> points, double sx, double sy, double sz, const Vector3& pivot,
                            std::vector<SPoint>& moved);
GeometryFault RotatedPoints(std::span<const SPoint> points, EAxis axis, double angle, bool radians,
                            const Vector3& pivot, std::vector<SPoint>& moved);
/// Where Resize and Rotate would bring VERTICES, in the same order; POSITIONS means nothing after a fault.
GeometryFault ResizedPositions(const CBinModel& model, std::span<const int32_t> vertices, double sx, double sy,
                               double sz, std::vector<SPoint>& positions, const Vector3& pivot = {});
GeometryFault RotatedPositions(const CBinModel& model, std::span<const int32_t> vertices, EAxis axis, double angle,
                               bool radians, std::vector<SPoint>& positions, const Vector3& pivot = {});
/// Mirrors one coordinate (wrapping) about PIVOT, which is taken to the nearest half unit, and turns round the faces
/// whose corners all moved, so that they still face outwards.
void Mirror(CBinModel& model, const SScope& scope, EAxis axis, const Vector3& pivot = {});
/// Moves all vertices by -(min + max) / 2 of the bounds on one axis.
void Center(CBinModel& model, EAxis axis);

/// The root of dx² + dy² + dz², truncated; the sum is computed in wrapping 32-bit arithmetic, and one that wraps to a
/// negative number is farther than everything: 0x7FFFFFFF. Both vertices belong to the same model.
int32_t Distance(const CBinVertex& a, const CBinVertex& b);
bool IsSamePosition(const CBinVertex& a, const CBinVertex& b);

/// Merges vertices that lie within THRESHOLD model units of a seed: in index order each vertex not taken yet becomes a
/// seed and takes every later one whose Distance to it is at most THRESHOLD; one whose sum wraps to a negative number
/// is never taken. The seeds stay, in order. Faces take the seed in place of the merged corner; one that becomes the
/// same polygon as another goes, a quad of which two corners fall together becomes a triangle, a triangle goes. Returns
/// the number of vertices merged away; 0 leaves the model untouched, as does -1: PROGRESS (may be null) was stopped.
int32_t MergeVertices(CBinModel& model, int32_t threshold, CProgress* progress = nullptr);

/// Whether a model with these BOUNDS has distances whose square leaves 32 bits, so that Distance wraps.
bool MergeDistancesWrap(const SBounds& bounds);
/// What the user should know then.
inline constexpr const char* kMergeDistancesWrapText =
    "This model is so large that distances above 46340 units wrap round: vertices far from each other may be merged.";

}  // namespace veldra

#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "model/binmodel.h"

/// What editing meshes is made of (meshedit.h).
namespace veldra::facedraft {

/// From one vertex to the next corner of a face.
using DirectedEdge = std::pair<int32_t, int32_t>;

/// A face that is about to be made.
struct SDraft {
  std::vector<int32_t> corners;
  std::vector<STexCoord> coords;
};

bool IsAmong(std::span<const int32_t> sorted, int32_t index);
Vector3 PositionOf(const CBinModel& model, int32_t vertex);
/// Within the 32-bit numbers.
SPoint Nearest(const Vector3& point);
/// Which corner of FACE is VERTEX; -1 for none.
int CornerOf(const CBinFace& face, int32_t vertex);

/// The texture of FACE, carried on from its edge at CORNER by as much as LENGTH is of that edge: outward, or back over
/// the face where the texture ends. What comes to lie beside CORNER and beside the next one.
std::array<STexCoord, 2> CarriedOn(const CBinFace& face, int corner, double length);

SDraft DraftOf(const CBinFace& face);
/// The directed edges of FACES that no other of them runs back over, each with its face.
std::map<DirectedEdge, int32_t> RimOf(const CBinModel& model, std::span<const int32_t> faces);
/// A face outside the model, with the type and the texture of LIKE.
std::unique_ptr<CBinFace> Made(CBinModel& model, const SDraft& draft, const CBinFace& like);
/// FACE becomes DRAFT, and stays in its groups.
void Become(CBinModel& model, int32_t face, const SDraft& draft);
/// Behind all others.
void Append(CBinModel& model, CBinModel::Faces faces);

}  // namespace veldra::facedraft

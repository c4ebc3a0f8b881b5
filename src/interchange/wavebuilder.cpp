#include "interchange/wavebuilder.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr double kCoordTolerance = 1e-4;  // a tenth of a texel and less

/// Moves the coordinates of one face by whole textures into 0..1. Where the face shows more than the whole texture they
/// are cut off; true then.
bool Wrap(std::span<STexCoord> coords, double STexCoord::*part) {
  double min = coords[0].*part;
  double max = min;
  for (const STexCoord& coord : coords) {
    min = std::min(min, coord.*part);
    max = std::max(max, coord.*part);
  }
  const bool is_inside = min >= -kCoordTolerance && max <= 1 + kCoordTolerance;
  const double step = is_inside ? 0 : std::floor(min + kCoordTolerance);
  const bool is_cut = max - step > 1 + kCoordTolerance;
  // What shows a part of the first texture keeps that part.
  const double shift = is_cut && min < 1 && max > 0 ? 0 : step;
  for (STexCoord& coord : coords)
    coord.*part = std::clamp(coord.*part - shift, 0.0, 1.0);
  return is_cut;
}

/// On a texel where VALUE is one but for the digits that a file has: between two a model file takes the lower one.
double OnTexel(double value, const CBinTexture& texture) {
  constexpr double kTolerance = 0.02;
  const double last = texture.Width() - 1;
  const double texel = std::round(value * last);
  return std::abs(value * last - texel) < kTolerance ? texel / last : value;
}

}  // namespace

bool WrapCoords(std::span<STexCoord> coords) {
  const bool is_u_cut = Wrap(coords, &STexCoord::u);
  return Wrap(coords, &STexCoord::v) || is_u_cut;
}

// --- Coordinates -----------------------------------------------------------------------------------------------------

CWaveTransform::CWaveTransform(const SWaveMesh& mesh, const SWaveOptions& options) : options_(options) {
  if (options.fit > 0) {
    FitTo(mesh);
  } else if (options.scale == 1.0 && options.undo_own_scale && mesh.own_scale != 1.0) {
    options_.scale = 1 / mesh.own_scale;
    rounds_ = true;
  }
  if (!options.center) return;
  const SWavePoint min = Turned(mesh.min);
  const SWavePoint max = Turned(mesh.max);
  // By whole units, which leaves a model of whole numbers its shape.
  for (size_t axis = 0; axis < middle_.size(); ++axis)
    middle_[axis] = std::trunc(min[axis] / 2 + max[axis] / 2);
}

void CWaveTransform::FitTo(const SWaveMesh& mesh) {
  size_t largest = 0;
  SWavePoint size = {};
  for (size_t axis = 0; axis < size.size(); ++axis) {
    size[axis] = mesh.max[axis] - mesh.min[axis];
    if (size[axis] > size[largest]) largest = axis;
  }
  options_.scale = options_.fit / size[largest];
  // Cutting off can take nearly a unit at either end.
  const double left = Whole(mesh.max[largest] * options_.scale) - Whole(mesh.min[largest] * options_.scale);
  rounds_ = std::abs(left - options_.fit) > 1;
}

/// A number that is whole but for the error of scaling stays that number.
double CWaveTransform::Whole(double coordinate) const {
  constexpr double kError = 1e-6;
  const double nearest = std::round(coordinate);
  const bool is_nearest = rounds_ || (options_.fit > 0 && std::abs(coordinate - nearest) < kError);
  return is_nearest ? nearest : std::trunc(coordinate);
}

SWavePoint CWaveTransform::Turned(const SWavePoint& p) const {
  const double s = options_.scale;
  return options_.swap_yz ? SWavePoint{p[0] * s, p[2] * s, p[1] * s} : SWavePoint{p[0] * s, p[1] * s, p[2] * s};
}

std::optional<SPoint> CWaveTransform::operator()(const SWavePoint& point) const {
  const SWavePoint turned = Turned(point);
  const auto x = TryTruncate(Whole(turned[0] - middle_[0]));
  const auto y = TryTruncate(Whole(turned[1] - middle_[1]));
  const auto z = TryTruncate(Whole(turned[2] - middle_[2]));
  if (!x || !y || !z) return std::nullopt;
  return SPoint{*x, *y, *z};
}

// --- Vertices and faces ----------------------------------------------------------------------------------------------

CWaveBuilder::CWaveBuilder(const SWaveMesh& mesh, const SWaveOptions& options, CMeshTextures& textures,
                           CImportBuilder& builder, CRemarks& remarks)
    : mesh_(mesh),
      options_(options),
      textures_(textures),
      builder_(builder),
      remarks_(remarks),
      members_(mesh.group_names.size()) {}

bool CWaveBuilder::Build(CImportProgress& progress, SImportFault& fault) {
  const uint64_t faces = std::min<uint64_t>(mesh_.FaceCount(), MostFaces(mesh_.file_size));
  builder_.Model().Reserve(mesh_.vertices.size(), static_cast<size_t>(faces));
  if (!AddVertices(fault)) return false;
  for (size_t face = 0; face < mesh_.FaceCount(); ++face) {
    if (!progress.Step(face, mesh_.FaceCount())) {
      fault = {"", true};
      return false;
    }
    if (static_cast<uint64_t>(builder_.Model().FaceCount()) > MostFaces(mesh_.file_size)) {
      fault = {TooManyFaces(mesh_.file_size), false};
      return false;
    }
    if (section_ < mesh_.sections.size() && mesh_.sections[section_].first_face == face) ++section_;
    AddFace(face);
  }
  AddGroups();
  return true;
}

bool CWaveBuilder::AddVertices(SImportFault& fault) {
  const CWaveTransform transform(mesh_, options_);
  for (size_t i = 0; i < mesh_.vertices.size(); ++i) {
    const SWavePoint& p = mesh_.vertices[i];
    const auto position = transform(p);
    if (!position) {
      const uint32_t line = mesh_.LineOfVertex(i);
      fault.what =
          (line > 0 ? Format("line %u", line) : Format("vertex %zu", i)) +
          Format(": (%g, %g, %g) does not fit into 32 bits at a scale of %g", p[0], p[1], p[2], transform.Scale());
      return false;
    }
    builder_.Model().AddVertex(*position);
  }
  return true;
}

void CWaveBuilder::AddFace(size_t face) {
  const std::span<const int32_t> corners = mesh_.Corners(face);
  // What this program wrote are faces of a model already, whatever their shape.
  if (corners.size() == 3 || (mesh_.is_own_export && corners.size() == 4)) {
    return AddPiece(face, {{0, 1, 2, 3}, static_cast<uint32_t>(corners.size())});
  }
  points_.clear();
  for (const int32_t corner : corners)
    points_.push_back(mesh_.vertices[static_cast<size_t>(corner)]);
  const std::vector<SPiece> pieces = SplitPolygon(points_, corners);
  if (pieces.empty()) remarks_.Add(Format("face %zu: its %zu corners enclose nothing", face + 1, corners.size()));
  for (const SPiece& piece : pieces)
    AddPiece(face, piece);
}

void CWaveBuilder::AddPiece(size_t face, SPiece piece) {
  if (options_.swap_yz) std::reverse(piece.corners.begin() + 1, piece.corners.begin() + piece.count);
  const size_t first = mesh_.FirstCorner(face);
  std::array<int32_t, 4> corners = {};
  for (uint32_t k = 0; k < piece.count; ++k)
    corners[k] = mesh_.corners[first + piece.corners[k]];
  const SWaveMesh::SSection* const section = Section();
  if (section != nullptr) {
    for (const int32_t group : section->groups)
      members_[static_cast<size_t>(group)].push_back(builder_.Model().FaceCount());
  }
  const CMeshTextures::SLook look = textures_.Look(section == nullptr ? -1 : section->material, builder_);
  std::array<STexCoord, 4> coords = kWholeTexture;
  if (look.type != kFaceUntextured) TakeCoords(first, piece, look.texture, coords);
  builder_.AddFace(std::span(corners).first(piece.count), look.texture, look.type, coords);
}

/// Leaves COORDS as they are unless all corners have one. The file counts v from the picture's last row upwards, the
/// game from the first one down.
void CWaveBuilder::TakeCoords(size_t first_corner, const SPiece& piece, const CBinTexture* texture,
                              std::array<STexCoord, 4>& coords) {
  if (mesh_.corner_coords.empty()) return;
  std::array<STexCoord, 4> written;
  for (uint32_t k = 0; k < piece.count; ++k) {
    const int32_t coord = mesh_.corner_coords[first_corner + piece.corners[k]];
    if (coord < 0) return;
    const STexCoord& found = mesh_.coords[static_cast<size_t>(coord)];
    written[k] = {found.u, 1 - found.v};
  }
  if (WrapCoords(std::span(written).first(piece.count))) ++cut_faces_;
  for (STexCoord& coord : written)
    coord = {OnTexel(coord.u, *texture), OnTexel(coord.v, *texture)};
  coords = written;
}

void CWaveBuilder::AddGroups() {
  CBinModel::Groups groups;
  for (size_t i = 0; i < members_.size(); ++i) {
    // Those of a model, which its export declares, may have none.
    if (members_[i].empty() && !mesh_.is_own_export) continue;
    std::string name = ToUtf8(mesh_.group_names[i]);
    // Neither can stand in a name of the sidecar file, which has a line for each.
    std::ranges::replace_if(
        name, [](char c) { return static_cast<unsigned char>(c) <= ' '; }, '_');
    groups.emplace_back(std::move(name), EGroupKind::kFaces, std::move(members_[i]));
  }
  builder_.Model().AddGroups(EGroupKind::kFaces, std::move(groups));
}

}  // namespace veldra

#include "interchange/wavebuilder.h"

#include <cmath>

#include "platform/numbers.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr double kCoordTolerance = 1e-4;  // a tenth of a texel and less

/// Moves the coordinates of one face by whole textures into 0..1. Only where the face shows the texture more than once
/// each is wrapped on its own.
void Wrap(std::span<double* const> values) {
  double min = *values[0];
  double max = *values[0];
  for (const double* value : values) {
    min = std::min(min, *value);
    max = std::max(max, *value);
  }
  const bool is_inside = min >= -kCoordTolerance && max <= 1 + kCoordTolerance;
  const double shift = is_inside ? 0 : std::floor(min + kCoordTolerance);
  const bool is_one_texture = max - shift <= 1 + kCoordTolerance;
  for (double* value : values) {
    if (is_one_texture)
      *value -= shift;
    else if (*value < 0 || *value > 1)
      *value -= std::floor(*value);
    *value = std::clamp(*value, 0.0, 1.0);
  }
}

void Wrap(std::span<STexCoord> coords) {
  std::array<double*, 4> u = {};
  std::array<double*, 4> v = {};
  for (size_t k = 0; k < coords.size(); ++k) {
    u[k] = &coords[k].u;
    v[k] = &coords[k].v;
  }
  Wrap(std::span(u).first(coords.size()));
  Wrap(std::span(v).first(coords.size()));
}

}  // namespace

// --- Coordinates -----------------------------------------------------------------------------------------------------

CWaveTransform::CWaveTransform(const SWaveMesh& mesh, const SWaveOptions& options) : options_(options) {
  if (!options.center) return;
  const SWavePoint min = Turned(mesh.min);
  const SWavePoint max = Turned(mesh.max);
  // By whole units, which leaves a model of whole numbers its shape.
  for (size_t axis = 0; axis < middle_.size(); ++axis)
    middle_[axis] = std::trunc(min[axis] / 2 + max[axis] / 2);
}

SWavePoint CWaveTransform::Turned(const SWavePoint& p) const {
  const double s = options_.scale;
  return options_.swap_yz ? SWavePoint{p[0] * s, p[2] * s, p[1] * s} : SWavePoint{p[0] * s, p[1] * s, p[2] * s};
}

std::optional<SPoint> CWaveTransform::operator()(const SWavePoint& point) const {
  const SWavePoint turned = Turned(point);
  const auto x = TryTruncate(turned[0] - middle_[0]);
  const auto y = TryTruncate(turned[1] - middle_[1]);
  const auto z = TryTruncate(turned[2] - middle_[2]);
  if (!x || !y || !z) return std::nullopt;
  return SPoint{*x, *y, *z};
}

// --- Vertices and faces ----------------------------------------------------------------------------------------------

CWaveBuilder::CWaveBuilder(const SWaveMesh& mesh, const SWaveOptions& options, CWaveTextures& textures,
                           CImportBuilder& builder, CRemarks& remarks)
    : mesh_(mesh),
      options_(options),
      textures_(textures),
      builder_(builder),
      remarks_(remarks),
      members_(mesh.group_names.size()) {}

bool CWaveBuilder::Build(CImportProgress& progress, SImportFault& fault) {
  builder_.Model().Reserve(mesh_.vertices.size(), mesh_.FaceCount());
  if (!AddVertices(fault)) return false;
  for (size_t face = 0; face < mesh_.FaceCount(); ++face) {
    if (!progress.Step(face, mesh_.FaceCount())) {
      fault = {"", true};
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
      fault.what = Format("line %u: (%g, %g, %g) does not fit into 32 bits at a scale of %g", mesh_.LineOfVertex(i),
                          p[0], p[1], p[2], options_.scale);
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
  std::array<STexCoord, 4> coords = kWholeTexture;
  TakeCoords(first, piece, coords);
  const SWaveMesh::SSection* const section = Section();
  if (section != nullptr) {
    for (const int32_t group : section->groups)
      members_[static_cast<size_t>(group)].push_back(builder_.Model().FaceCount());
  }
  CBinTexture& texture = textures_.Entry(section == nullptr ? -1 : section->material, builder_);
  builder_.AddFace(std::span(corners).first(piece.count), texture, coords);
}

/// Leaves COORDS as they are unless all corners have one. The file counts v from the picture's last row upwards, the
/// game from the first one down.
void CWaveBuilder::TakeCoords(size_t first_corner, const SPiece& piece, std::array<STexCoord, 4>& coords) const {
  if (mesh_.corner_coords.empty()) return;
  std::array<STexCoord, 4> written;
  for (uint32_t k = 0; k < piece.count; ++k) {
    const int32_t coord = mesh_.corner_coords[first_corner + piece.corners[k]];
    if (coord < 0) return;
    const STexCoord& found = mesh_.coords[static_cast<size_t>(coord)];
    written[k] = {found.u, 1 - found.v};
  }
  Wrap(std::span(written).first(piece.count));
  coords = written;
}

void CWaveBuilder::AddGroups() {
  CBinModel::Groups groups;
  for (size_t i = 0; i < members_.size(); ++i) {
    if (!members_[i].empty()) {
      groups.emplace_back(ToUtf8(mesh_.group_names[i]), EGroupKind::kFaces, std::move(members_[i]));
    }
  }
  builder_.Model().AddGroups(EGroupKind::kFaces, std::move(groups));
}

}  // namespace veldra

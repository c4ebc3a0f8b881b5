#include "render/modelpicker.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "render/glstate.h"
#include "render/modelgeometry.h"
#include "render/vertexstream.h"

namespace veldra {

namespace {

/// How far from the pointer a vertex may be, and a face that is too thin to be hit.
constexpr double kVertexReach = 7.0;
constexpr double kFaceReach = 2.0;
/// What a face number is added to, and what marks a vertex's. 0 is nothing.
constexpr uint32_t kFirstNumber = 1;
constexpr uint32_t kIsVertex = 0x80000000U;
/// In depths of 24 bits; faces are drawn farther away by more than this.
constexpr float kDepthTolerance = 1e-6F;

/// OpenGL's GL_C4UB_V3F.
struct SNumberedVertex {
  std::array<uint8_t, 4> number;
  FloatPoint position;
};

SNumberedVertex Numbered(uint32_t number, const FloatPoint& position) {
  return {.number = {static_cast<uint8_t>(number), static_cast<uint8_t>(number >> 8),
                     static_cast<uint8_t>(number >> 16), static_cast<uint8_t>(number >> 24)},
          .position = position};
}

int ReachPixels(double pixel_ratio) {
  return static_cast<int>(std::lround(kVertexReach * std::clamp(pixel_ratio, 0.5, 8.0)));
}

bool IsIn(const SPixels& region, float x, float y) {
  return x >= static_cast<float>(region.left) && x < static_cast<float>(region.right) &&
         y >= static_cast<float>(region.top) && y < static_cast<float>(region.bottom);
}

/// The pixel of a place in REGION among those that were read, whose first row is the lowest.
size_t PixelOf(const SPixels& region, float x, float y) {
  const int column = static_cast<int>(x) - region.left;
  const int row = region.bottom - 1 - static_cast<int>(y);
  return static_cast<size_t>(row) * static_cast<size_t>(region.Width()) + static_cast<size_t>(column);
}

/// The number nearest to the middle of SIDE × SIDE pixels, not farther than REACH, that WANTED takes; 0 for none.
template <typename TWanted>
uint32_t Nearest(const std::vector<uint32_t>& numbers, int side, double reach, TWanted&& wanted) {
  uint32_t found = 0;
  double best = reach * reach;
  const int middle = side / 2;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const uint32_t number = numbers[static_cast<size_t>(row * side + column)];
      const double across = column - middle;
      const double up = row - middle;
      const double distance = across * across + up * up;
      if (number == 0 || !wanted(number) || distance > best || (found != 0 && distance == best)) continue;
      found = number;
      best = distance;
    }
  }
  return found;
}

}  // namespace

int CModelPicker::SidePixels(double pixel_ratio) {
  return 2 * ReachPixels(pixel_ratio) + 1;
}

void CModelPicker::Follow(const CBinModel& model, const CViewCamera& camera) {
  if (model_ == model.Identity() && revision_ == model.Revision() && camera_ == camera) return;
  model_ = model.Identity();
  revision_ = model.Revision();
  camera_ = camera;
  ++work_.placements;
  places_.clear();
  places_.reserve(static_cast<size_t>(model.VertexCount()));
  for (int32_t k = 0; k < model.VertexCount(); ++k) {
    const SScreenPoint place = camera.Project(model.Vertex(k).Position());
    places_.push_back({static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.depth)});
  }
  reaches_.clear();
  reaches_.reserve(static_cast<size_t>(model.FaceCount()));
  for (int32_t k = 0; k < model.FaceCount(); ++k) {
    constexpr float kFar = std::numeric_limits<float>::max();
    SReach reach = {kFar, kFar, -kFar, -kFar};
    for (const CBinVertex* corner : model.Face(k).Corners()) {
      const SPlace& place = places_[static_cast<size_t>(corner->Index())];
      reach = {std::min(reach.left, place.x), std::min(reach.top, place.y), std::max(reach.right, place.x),
               std::max(reach.bottom, place.y)};
    }
    reaches_.push_back(reach);
  }
}

void CModelPicker::StartDrawing(const CViewCamera& camera, const CModelSpace& space, const SPixels& region) {
  StartClean();
  glDisable(GL_DITHER);
  glShadeModel(GL_FLAT);
  glEnable(GL_SCISSOR_TEST);
  glScissor(0, 0, region.Width(), region.Height());
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glClearColor(0, 0, 0, 0);
  glClearDepth(1.0);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  camera.Load();
  camera.EnterSpace(space);
  // The same picture, of which the region comes to lie in the corner.
  glViewport(-region.left, region.bottom - camera.Height(), camera.Width(), camera.Height());
}

void CModelPicker::DrawFaces(const CBinModel& model, const SPixels& region) {
  const CModelSpace space(model.Bounds());
  const auto left = static_cast<float>(region.left);
  const auto top = static_cast<float>(region.top);
  const auto right = static_cast<float>(region.right);
  const auto bottom = static_cast<float>(region.bottom);
  // As in the picture: behind the vertices that lie on them.
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1.0F, 1.0F);
  {
    CVertexStream<SNumberedVertex> stream(GL_TRIANGLES, GL_C4UB_V3F);
    for (size_t k = 0; k < reaches_.size(); ++k) {
      const SReach& reach = reaches_[k];
      if (reach.right < left || reach.left > right || reach.bottom < top || reach.top > bottom) continue;
      const CBinFace& face = model.Face(static_cast<int32_t>(k));
      if (face.IsHidden()) continue;
      std::array<SNumberedVertex, 4> corners;
      for (int corner = 0; corner < face.CornerCount(); ++corner) {
        corners[static_cast<size_t>(corner)] =
            Numbered(static_cast<uint32_t>(k) + kFirstNumber, space.Place(face.Corner(corner)->Position()));
      }
      std::vector<SNumberedVertex>& out = stream.Next();
      out.insert(out.end(), {corners[0], corners[1], corners[2]});
      if (face.CornerCount() == 4) out.insert(out.end(), {corners[0], corners[2], corners[3]});
      ++work_.faces_drawn;
    }
  }
  glDisable(GL_POLYGON_OFFSET_FILL);
}

void CModelPicker::DrawVertices(const CBinModel& model, const SPixels& region, bool selected_only) {
  const CModelSpace space(model.Bounds());
  glPointSize(1.0F);
  CVertexStream<SNumberedVertex> stream(GL_POINTS, GL_C4UB_V3F);
  for (size_t k = 0; k < places_.size(); ++k) {
    if (!IsIn(region, places_[k].x, places_[k].y)) continue;
    const CBinVertex& vertex = model.Vertex(static_cast<int32_t>(k));
    if ((selected_only && !vertex.IsSelected()) || vertex.IsHidden()) continue;
    stream.Next().push_back(
        Numbered((static_cast<uint32_t>(k) + kFirstNumber) | kIsVertex, space.Place(vertex.Position())));
    ++work_.points_drawn;
  }
}

std::vector<uint32_t> CModelPicker::ReadNumbers(const SPixels& region) {
  const size_t count = static_cast<size_t>(region.Width()) * static_cast<size_t>(region.Height());
  std::vector<uint8_t> bytes(count * 4);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, region.Width(), region.Height(), GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
  std::vector<uint32_t> numbers(count);
  for (size_t k = 0; k < count; ++k) {
    const uint8_t* pixel = bytes.data() + k * 4;
    numbers[k] = pixel[0] | uint32_t(pixel[1]) << 8 | uint32_t(pixel[2]) << 16 | uint32_t(pixel[3]) << 24;
  }
  return numbers;
}

std::vector<float> CModelPicker::ReadDepths(const SPixels& region) {
  std::vector<float> depths(static_cast<size_t>(region.Width()) * static_cast<size_t>(region.Height()));
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, region.Width(), region.Height(), GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
  return depths;
}

std::optional<SPick> CModelPicker::Pick(const CBinModel& model, const SViewState& state, const CViewCamera& camera,
                                        double pixel_ratio, int x, int y) {
  Follow(model, camera);
  const int reach = ReachPixels(pixel_ratio);
  const SPixels region = {x - reach, y - reach, x + reach + 1, y + reach + 1};
  std::vector<uint32_t> numbers;
  {
    const CSavedGlState saved;
    StartDrawing(camera, CModelSpace(model.Bounds()), region);
    if (state.mode != ERenderMode::kVertices) DrawFaces(model, region);
    if (!state.ShowsSurfaces() || state.select_through) glClear(GL_DEPTH_BUFFER_BIT);
    DrawVertices(model, region, !state.ShowsMarkers(model));
    numbers = ReadNumbers(region);
  }
  const int side = region.Width();
  const auto is_vertex = [](uint32_t number) { return (number & kIsVertex) != 0; };
  if (const uint32_t vertex = Nearest(numbers, side, reach, is_vertex))
    return SPick{EGroupKind::kVertices, static_cast<int32_t>((vertex & ~kIsVertex) - kFirstNumber)};
  if (const uint32_t face = Nearest(numbers, side, kFaceReach * pixel_ratio, std::not_fn(is_vertex)))
    return SPick{EGroupKind::kFaces, static_cast<int32_t>(face - kFirstNumber)};
  return std::nullopt;
}

CModelPicker::SPlace CModelPicker::MiddleOf(const CBinFace& face) const {
  SPlace middle = {};
  const auto share = 1.0F / static_cast<float>(face.CornerCount());
  for (const CBinVertex* corner : face.Corners()) {
    const SPlace& place = places_[static_cast<size_t>(corner->Index())];
    middle = {middle.x + place.x * share, middle.y + place.y * share, middle.depth + place.depth * share};
  }
  return middle;
}

/// DEPTHS is empty where nothing hides anything.
std::vector<int32_t> CModelPicker::VerticesInside(const CBinModel& model, const SPixels& region,
                                                  const std::vector<float>& depths) const {
  std::vector<int32_t> found;
  for (size_t k = 0; k < places_.size(); ++k) {
    const SPlace& place = places_[k];
    if (!IsIn(region, place.x, place.y) || model.Vertex(static_cast<int32_t>(k)).IsHidden()) continue;
    if (!depths.empty() && place.depth > depths[PixelOf(region, place.x, place.y)] + kDepthTolerance) continue;
    found.push_back(static_cast<int32_t>(k));
  }
  return found;
}

/// Those whose number shows, and those too narrow to have got a pixel.
std::vector<int32_t> CModelPicker::FacesInside(const CBinModel& model, const SPixels& region,
                                               const std::vector<float>& depths,
                                               const std::vector<uint32_t>& numbers) const {
  std::vector<bool> shows(reaches_.size() + kFirstNumber);
  for (const uint32_t number : numbers)
    shows[number] = true;
  std::vector<int32_t> found;
  for (size_t k = 0; k < reaches_.size(); ++k) {
    const auto index = static_cast<int32_t>(k);
    if (model.Face(index).IsHidden()) continue;
    bool is_in = shows[k + kFirstNumber];
    if (!is_in) {
      const SPlace middle = MiddleOf(model.Face(index));
      is_in = IsIn(region, middle.x, middle.y) &&
              (depths.empty() || middle.depth <= depths[PixelOf(region, middle.x, middle.y)] + kDepthTolerance);
    }
    if (is_in) found.push_back(index);
  }
  return found;
}

std::vector<int32_t> CModelPicker::PickRectangle(const CBinModel& model, const SViewState& state,
                                                 const CViewCamera& camera, EGroupKind kind, const SPixels& rectangle) {
  if (rectangle.Width() < 1 || rectangle.Height() < 1) return {};
  Follow(model, camera);
  std::vector<uint32_t> numbers;
  std::vector<float> depths;
  if (state.ShowsSurfaces() && !state.select_through) {
    const CSavedGlState saved;
    StartDrawing(camera, CModelSpace(model.Bounds()), rectangle);
    DrawFaces(model, rectangle);
    depths = ReadDepths(rectangle);
    if (kind == EGroupKind::kFaces) numbers = ReadNumbers(rectangle);
  }
  return kind == EGroupKind::kFaces ? FacesInside(model, rectangle, depths, numbers)
                                    : VerticesInside(model, rectangle, depths);
}

}  // namespace veldra

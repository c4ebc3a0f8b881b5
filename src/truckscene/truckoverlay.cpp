#include "truckscene/truckoverlay.h"

#include <cmath>
#include <numbers>

#include "platform/glcontext.h"
#include "render/viewcamera.h"

namespace veldra {

namespace {

constexpr int kSides = 28;
/// Of a monster truck's tire, in feet.
constexpr double kTireRadius = 2.75;
constexpr SColor kPositionColor = {80, 170, 255};
constexpr SColor kScrapeColor = {255, 150, 40};
constexpr SColor kLightColor = {255, 235, 110};
constexpr SColor kSelectedColor = {255, 60, 200};
/// For a cone whose texture is not there.
constexpr SColor kPlainCone = {235, 235, 200};

SColor ColorOf(const STruckPointId& id) {
  if (id.kind == ETruckPoint::kScrapePoint) return kScrapeColor;
  return id.kind == ETruckPoint::kLight ? kLightColor : kPositionColor;
}

void SetColor(const SColor& color, double opacity) {
  glColor4ub(color.red, color.green, color.blue, static_cast<GLubyte>(255.0 * opacity));
}

TruckPoint Cross(const TruckPoint& a, const TruckPoint& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

TruckPoint Normalized(const TruckPoint& a) {
  const double length = std::hypot(a[0], a[1], a[2]);
  return {a[0] / length, a[1] / length, a[2] / length};
}

TruckPoint Moved(const TruckPoint& from, const TruckPoint& direction, double distance) {
  return {from[0] + direction[0] * distance, from[1] + direction[1] * distance, from[2] + direction[2] * distance};
}

/// Points of circles about a line.
class CRing {
 public:
  CRing(const TruckPoint& middle, const TruckPoint& direction) : middle_(middle) {
    const TruckPoint aside = std::abs(direction[1]) < 0.9 ? TruckPoint{0, 1, 0} : TruckPoint{1, 0, 0};
    across_ = Normalized(Cross(direction, aside));
    up_ = Cross(across_, direction);
  }
  void Vertex(double radius, int side) const {
    const double angle = 2.0 * std::numbers::pi * side / kSides;
    const TruckPoint at = Moved(Moved(middle_, across_, radius * std::cos(angle)), up_, radius * std::sin(angle));
    glVertex3dv(at.data());
  }
  void Draw(double radius) const {
    glBegin(GL_LINE_LOOP);
    for (int side = 0; side < kSides; ++side)
      Vertex(radius, side);
    glEnd();
  }

 private:
  TruckPoint middle_;
  TruckPoint across_;
  TruckPoint up_;
};

void DrawCone(const TruckLight& light, const SColor& color, double seconds) {
  const TruckPoint direction = LightDirection(light, seconds);
  const CRing base(light.position, direction);
  const CRing rim(Moved(light.position, direction, light.cone_length), direction);
  glBegin(GL_QUAD_STRIP);
  for (int side = 0; side <= kSides; ++side) {
    SetColor(color, 0.5);
    base.Vertex(light.cone_base_radius, side);
    SetColor(color, 0.08);
    rim.Vertex(light.cone_rim_radius, side);
  }
  glEnd();
  SetColor(color, 0.7);
  rim.Draw(light.cone_rim_radius);
  base.Draw(light.cone_base_radius);
}

void DrawCones(const CTruck& truck, const SOverlay& overlay, CTruckTextures& textures) {
  glDepthMask(GL_FALSE);
  for (int i = 0; i < truck.UsedLights(); ++i) {
    const TruckLight& light = truck.lights[static_cast<size_t>(i)];
    if (IsLit(light, overlay.seconds))
      DrawCone(light, textures.MeanColor(light.cone_texture).value_or(kPlainCone), overlay.seconds);
  }
  glDepthMask(GL_TRUE);
}

void DrawMarkers(const CTruck& truck, const SOverlay& overlay, double opacity) {
  for (const STruckPointId& id : TruckPoints(truck)) {
    if (!IsShown(overlay, id)) continue;
    const bool is_selected = overlay.selected == id;
    glPointSize(static_cast<float>((is_selected ? 13.0 : 9.0) * overlay.pixel_ratio));
    SetColor(is_selected ? kSelectedColor : ColorOf(id), is_selected ? 1.0 : opacity);
    glBegin(GL_POINTS);
    glVertex3dv(FindTruckPoint(truck, id)->data());
    glEnd();
  }
}

void DrawTireRings(const CTruck& truck, const std::array<bool, kTireCount>& has_tire) {
  SetColor(kPositionColor, 0.8);
  for (size_t tire = 0; tire < kTireCount; ++tire)
    if (!has_tire[tire]) CRing(truck.tires[tire], {1, 0, 0}).Draw(kTireRadius);
}

}  // namespace

CTruckCamera::CTruckCamera(const SViewState& state, double model_radius, double units_per_foot, int width, int height) {
  const double radius_on_screen = SetCamera(state, model_radius, width, height);
  feet_scale_ = radius_on_screen / model_radius * units_per_foot;
  ScaleToFeet();
  glGetDoublev(GL_MODELVIEW_MATRIX, model_view_.data());
  glGetDoublev(GL_PROJECTION_MATRIX, projection_.data());
  viewport_ = {0, 0, width, height};
}

void CTruckCamera::ScaleToFeet() const {
  glMatrixMode(GL_MODELVIEW);
  glScaled(feet_scale_, feet_scale_, feet_scale_);
}

std::optional<CTruckCamera::SWindowPoint> CTruckCamera::Project(const TruckPoint& feet) const {
  SWindowPoint at;
  if (gluProject(feet[0], feet[1], feet[2], model_view_.data(), projection_.data(), viewport_.data(), &at.x, &at.y,
                 &at.depth) != GL_TRUE)
    return std::nullopt;
  at.y = viewport_[3] - at.y;
  if (!(at.depth >= 0 && at.depth <= 1)) return std::nullopt;
  return at;
}

std::optional<TruckPoint> CTruckCamera::Unproject(const SWindowPoint& point) const {
  TruckPoint feet{};
  if (gluUnProject(point.x, viewport_[3] - point.y, point.depth, model_view_.data(), projection_.data(),
                   viewport_.data(), &feet[0], &feet[1], &feet[2]) != GL_TRUE)
    return std::nullopt;
  const bool is_finite = std::isfinite(feet[0]) && std::isfinite(feet[1]) && std::isfinite(feet[2]);
  return is_finite ? std::optional<TruckPoint>(feet) : std::nullopt;
}

bool IsShown(const SOverlay& overlay, const STruckPointId& id) {
  if (id.kind == ETruckPoint::kScrapePoint) return overlay.scrape_points;
  return id.kind == ETruckPoint::kLight ? overlay.lights : overlay.positions;
}

TruckPoint LightDirection(const TruckLight& light, double seconds) {
  const double heading = light.heading + light.heading_speed * seconds;
  return {std::sin(heading) * std::cos(light.pitch), std::sin(light.pitch), std::cos(heading) * std::cos(light.pitch)};
}

bool IsLit(const TruckLight& light, double seconds) {
  const double period = (static_cast<double>(light.ms_on) + light.ms_off) / 1000.0;
  if (light.ms_on <= 0 || light.ms_off <= 0 || seconds <= 0) return true;
  return std::fmod(seconds, period) < light.ms_on / 1000.0;
}

void DrawTruckOverlay(const CTruck& truck, const SOverlay& overlay, CTruckTextures& textures,
                      const std::array<bool, kTireCount>& has_tire) {
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_DEPTH_TEST);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glEnable(GL_POINT_SMOOTH);
  // Transparency must not make holes in the window.
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
  glLineWidth(static_cast<float>(1.5 * overlay.pixel_ratio));
  if (overlay.cones) DrawCones(truck, overlay, textures);
  if (overlay.positions) DrawTireRings(truck, has_tire);
  // What is hidden shines through, so that it can be taken hold of.
  glDepthFunc(GL_LEQUAL);
  DrawMarkers(truck, overlay, 1.0);
  glDepthFunc(GL_GREATER);
  DrawMarkers(truck, overlay, 0.45);
  glPopAttrib();
}

}  // namespace veldra

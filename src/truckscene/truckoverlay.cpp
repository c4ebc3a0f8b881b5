#include "truckscene/truckoverlay.h"

#include <cmath>
#include <numbers>

#include "platform/glcontext.h"
#include "platform/vector3.h"

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
    const TruckPoint at = middle_ + radius * std::cos(angle) * across_ + radius * std::sin(angle) * up_;
    glVertex3dv(at.data());
  }
  void Draw(double radius) const {
    glBegin(GL_LINE_LOOP);
    for (int side = 0; side < kSides; ++side)
      Vertex(radius, side);
    glEnd();
  }

 private:
  Vector3 middle_;
  Vector3 across_;
  Vector3 up_;
};

void DrawCone(const TruckLight& light, const SColor& color, double seconds) {
  const TruckPoint direction = LightDirection(light, seconds);
  const CRing base(light.position, direction);
  const CRing rim(light.position + light.cone_length * direction, direction);
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

bool IsShown(const SOverlay& overlay, const STruckPointId& id) {
  if (id.kind == ETruckPoint::kScrapePoint) return overlay.scrape_points;
  return id.kind == ETruckPoint::kLight ? overlay.lights : overlay.positions;
}

bool IsLit(const TruckLight& light, double seconds) {
  const double period = (static_cast<double>(light.ms_on) + light.ms_off) / 1000.0;
  if (light.ms_on <= 0 || light.ms_off <= 0 || seconds <= 0) return true;
  return std::fmod(seconds, period) < light.ms_on / 1000.0;
}

void DrawTruckOverlay(const CTruck& truck, const SOverlay& overlay, const CViewCamera& camera, double units_per_foot,
                      CTruckTextures& textures, const std::array<bool, kTireCount>& has_tire) {
  camera.Load();
  camera.EnterModel(units_per_foot);
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

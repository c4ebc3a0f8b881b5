#include "truck/truckreport.h"

#include <charconv>
#include <nlohmann/json.hpp>

#include "platform/text.h"

namespace veldra {

namespace {

/// Keys in the order in which they are set.
using Json = nlohmann::ordered_json;

constexpr std::array<const char*, kTireCount> kTireNames = {"front right", "front left", "rear right", "rear left"};
constexpr std::array<const char*, kTireCount> kTireJsonKeys = {"frontRight", "frontLeft", "rearRight", "rearLeft"};

Json ToJson(const TruckLight& light) {
  return {{"type", light.type},
          {"typeName", LightTypeName(light.type)},
          {"position", light.position},
          {"bitmapRadius", light.bitmap_radius},
          {"heading", light.heading},
          {"pitch", light.pitch},
          {"headingSpeed", light.heading_speed},
          {"coneLength", light.cone_length},
          {"coneBaseRadius", light.cone_base_radius},
          {"coneRimRadius", light.cone_rim_radius},
          {"coneTexture", ToUtf8(light.cone_texture)},
          {"sourceBitmap", ToUtf8(light.source_bitmap)},
          {"msOn", light.ms_on},
          {"msOff", light.ms_off}};
}

// --- text -----------------------------------------------------------------------------------------------------------

/// The shortest decimals that read back to VALUE.
std::string ShortNumber(double value) {
  char text[32];
  const auto [end, error] = std::to_chars(text, text + sizeof text, value);
  return error == std::errc() ? std::string(text, end) : std::string();
}

std::string ShortPoint(const TruckPoint& point) {
  return ShortNumber(point[0]) + ", " + ShortNumber(point[1]) + ", " + ShortNumber(point[2]);
}

void AddLine(std::string& out, const std::string& what, const std::string& value) {
  out += value.empty() ? what + ":\n" : what + ": " + value + "\n";
}

void AddLight(std::string& out, int index, const TruckLight& light) {
  AddLine(out, Format("light %d", index), LightTypeName(light.type));
  AddLine(out, "  position", ShortPoint(light.position));
  AddLine(out, "  bitmap", DisplayName(light.source_bitmap) + ", radius " + ShortNumber(light.bitmap_radius));
  AddLine(out, "  heading",
          ShortNumber(light.heading) + ", pitch " + ShortNumber(light.pitch) + ", spin " +
              ShortNumber(light.heading_speed));
  AddLine(out, "  cone",
          DisplayName(light.cone_texture) + ", length " + ShortNumber(light.cone_length) + ", base radius " +
              ShortNumber(light.cone_base_radius) + ", rim radius " + ShortNumber(light.cone_rim_radius));
  AddLine(out, "  blinks",
          light.ms_on == 0 && light.ms_off == 0 ? std::string("no")
                                                : Format("%d ms on, %d ms off", light.ms_on, light.ms_off));
}

}  // namespace

std::string LightTypeName(int32_t type) {
  const bool is_named = type >= 0 && static_cast<size_t>(type) < kLightTypeNames.size();
  return is_named ? kLightTypeNames[static_cast<size_t>(type)] : Format("type %d", type);
}

std::string TireName(int tire) {
  return kTireNames[static_cast<size_t>(tire)];
}

std::string TruckText(const CTruck& truck) {
  std::string out;
  AddLine(out, "truck", DisplayName(truck.name));
  AddLine(out, "body model", DisplayName(truck.model_base_name));
  AddLine(out, "tire models", DisplayName(truck.tire_base_name));
  AddLine(out, "axle model", DisplayName(truck.axle_model_name));
  AddLine(out, "shock texture", DisplayName(truck.shock_texture));
  AddLine(out, "bar texture", DisplayName(truck.bar_texture));
  AddLine(out, "axle bar offset", ShortPoint(truck.axle_bar_offset));
  AddLine(out, "drive shaft", ShortPoint(truck.drive_shaft_position));
  for (int tire = 0; tire < kTireCount; ++tire)
    AddLine(out, TireName(tire) + " tire", ShortPoint(truck.tires[static_cast<size_t>(tire)]));
  for (int point = 0; point < kScrapePoints; ++point)
    AddLine(out, Format("scrape point %d", point + 1), ShortPoint(truck.scrape_points[static_cast<size_t>(point)]));
  AddLine(out, "instrument cluster", kInstrumentClusterName);
  for (const std::string& wave : truck.wave_files)
    AddLine(out, "wave file", DisplayName(wave));
  AddLine(out, "lights", Format("%d", truck.light_count));
  for (int light = 0; light < truck.UsedLights(); ++light)
    AddLight(out, light, truck.lights[static_cast<size_t>(light)]);
  return out;
}

std::string TruckJson(const CTruck& truck) {
  Json waves = Json::array();
  for (const std::string& wave : truck.wave_files)
    waves.push_back(ToUtf8(wave));
  Json tires = Json::object();
  for (size_t tire = 0; tire < kTireCount; ++tire)
    tires[kTireJsonKeys[tire]] = truck.tires[tire];
  Json lights = Json::array();
  for (int light = 0; light < truck.UsedLights(); ++light)
    lights.push_back(ToJson(truck.lights[static_cast<size_t>(light)]));
  const Json json = {{"name", ToUtf8(truck.name)},
                     {"bodyModel", ToUtf8(truck.model_base_name)},
                     {"tireModels", ToUtf8(truck.tire_base_name)},
                     {"axleModel", ToUtf8(truck.axle_model_name)},
                     {"shockTexture", ToUtf8(truck.shock_texture)},
                     {"barTexture", ToUtf8(truck.bar_texture)},
                     {"axleBarOffset", truck.axle_bar_offset},
                     {"driveShaft", truck.drive_shaft_position},
                     {"tires", std::move(tires)},
                     {"scrapePoints", truck.scrape_points},
                     {"instrumentCluster", truck.instrument_cluster},
                     {"waveFiles", std::move(waves)},
                     {"lightCount", truck.light_count},
                     {"lights", std::move(lights)}};
  return DisplayJson(json.dump(2)) + "\n";
}

}  // namespace veldra

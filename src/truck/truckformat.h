#pragma once

#include <array>
#include <string_view>

#include "truck/truck.h"

/// The keys of a truck file as they are written. They are read in any letter case.
namespace veldra::truckformat {

struct STextKey {
  std::string_view key;
  std::string CTruck::*field;
};
inline constexpr std::array<STextKey, 6> kTextKeys = {{
    {"MTM2 truckName", &CTruck::name},
    {"truckModelBaseName", &CTruck::model_base_name},
    {"tireModelBaseName", &CTruck::tire_base_name},
    {"axleModelName", &CTruck::axle_model_name},
    {"shockTextureName", &CTruck::shock_texture},
    {"barTextureName", &CTruck::bar_texture},
}};
/// Other spellings of the same fields, which the game's own files have.
inline constexpr std::array<STextKey, 3> kOtherTextKeys = {{
    {"truckname", &CTruck::name},
    {"truckmodelname", &CTruck::model_base_name},
    {"tiremodelname", &CTruck::tire_base_name},
}};

struct SPointKey {
  std::string_view key;
  TruckPoint CTruck::*field;
};
inline constexpr std::array<SPointKey, 2> kPointKeys = {{
    {"axlebarOffset", &CTruck::axle_bar_offset},
    {"driveshaftPos", &CTruck::drive_shaft_position},
}};

/// By ETire; the axis' letter follows.
inline constexpr std::array<std::string_view, kTireCount> kTireKeys = {
    "faxle.rtire.static_bpos.", "faxle.ltire.static_bpos.", "raxle.rtire.static_bpos.", "raxle.ltire.static_bpos."};
inline constexpr std::string_view kAxes = "xyz";

inline constexpr std::string_view kInstrumentClusterKey = "Instrument Cluster";
inline constexpr std::string_view kWaveFileKey = "Wave File";
inline constexpr std::string_view kLightCountKey = "Number of Lights";

/// "Scrape point 1 body axis x,y,z" to 12; "Light 0 type" to 13. One counts from 1, the other from 0.
inline constexpr std::string_view kScrapePointPrefix = "Scrape point ";
inline constexpr std::string_view kScrapePointKey = "body axis x,y,z";
inline constexpr int kFirstScrapePoint = 1;
inline constexpr std::string_view kLightPrefix = "Light ";
inline constexpr std::string_view kLightTypeKey = "type";
inline constexpr std::string_view kLightPositionKey = "body axis pos x,y,z (ft), bitmap radius (ft)";
inline constexpr std::string_view kLightHeadingKey = "heading (rad), pitch (rad), heading spin speed (rad/sec)";
inline constexpr std::string_view kLightConeKey = "cone: length (ft), base radius (ft), rim radius (ft), texture name";
inline constexpr std::string_view kLightSourceKey = "source: bitmap name";
inline constexpr std::string_view kLightBlinkKey = "ms on, ms off (0 if light doesn't blink)";

}  // namespace veldra::truckformat

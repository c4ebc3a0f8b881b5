#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace veldra {

/// What the user is told, with the captions of platform/questions.h, when Load and Save fail.
inline constexpr const char* kFailedToLoadTruck = "Failed to load truck";
inline constexpr const char* kFailedToOpenDestination = "Failed to open destination file";

/// Of a file that can be loaded and has no line that is a truck's.
inline constexpr const char* kNothingKnownText = "Nothing in \"%s\" is known: it does not look like a truck file.";

/// x, y, z in feet.
using TruckPoint = std::array<double, 3>;

inline constexpr int kTruckLights = 14;
inline constexpr int kScrapePoints = 12;
inline constexpr int kTruckWaves = 3;
/// The only instrument cluster that the game has, and its name in a truck file.
inline constexpr int kInstrumentCluster = 1;
inline constexpr const char* kInstrumentClusterName = "powerbig";

/// The order of the tires in CTruck::tires and, axis by axis, in a truck file.
enum ETire { kFrontRightTire, kFrontLeftTire, kRearRightTire, kRearLeftTire, kTireCount };

/// The types that an editor offers have the values 0 to 4, in the order of kLightTypeNames. A truck file can hold 5,
/// which has no name; and a saved 2 is read back as 0, see AcceptedLightType.
inline constexpr std::array<const char*, 5> kLightTypeNames = {"Headlight", "Brakelight", "Roof Light", "Special Light",
                                                               "Backup Light"};

/// What reading makes of TYPE: 0, 1, 3, 4 and 5 stay, everything else becomes 0.
constexpr int32_t AcceptedLightType(int32_t type) {
  return type == 1 || (type >= 3 && type <= 5) ? type : 0;
}

/// What is appended to a tire base name: three sizes, of each the left tire and the right one.
inline constexpr std::array<const char*, 6> kTireModelEnds = {"08L.BIN", "08R.BIN", "10L.BIN",
                                                              "10R.BIN", "16L.BIN", "16R.BIN"};

struct TruckLight {
  int32_t type = 0;
  TruckPoint position{};     ///< body axis
  double bitmap_radius = 0;  ///< feet
  double heading = 0;        ///< radians
  double pitch = 0;          ///< radians
  double heading_speed = 0;  ///< radians per second
  double cone_length = 0;    ///< feet, as the two radii
  double cone_base_radius = 0;
  double cone_rim_radius = 0;
  std::string cone_texture;
  std::string source_bitmap;
  int32_t ms_on = 0;  ///< both 0 for a light that does not blink
  int32_t ms_off = 0;

  bool operator==(const TruckLight&) const = default;
};

/// File names, upper-cased, without repeats, in the order in which the truck names them.
struct STruckDependencies {
  std::vector<std::string> textures;
  std::vector<std::string> palettes;  ///< the colour table of each texture
  std::vector<std::string> models;
  std::vector<std::string> sounds;
};

/// One monster truck: what a ".TRK" file holds.
class CTruck {
 public:
  TruckPoint axle_bar_offset{};
  TruckPoint drive_shaft_position{};
  std::array<TruckPoint, kTireCount> tires{};             ///< static body positions
  std::array<TruckPoint, kScrapePoints> scrape_points{};  ///< body axis
  std::array<TruckLight, kTruckLights> lights;
  std::string name;
  std::string model_base_name;
  std::string tire_base_name;
  std::string axle_model_name;
  std::string shock_texture;
  std::string bar_texture;
  std::array<std::string, kTruckWaves> wave_files;
  int32_t instrument_cluster = kInstrumentCluster;
  /// As read: a file can say anything. The lights that are there are the first UsedLights().
  int32_t light_count = 0;

  bool operator==(const CTruck&) const = default;

  /// Strings empty, numbers 0, no lights.
  void Reset();

  /// False when PATH does not end in ".TRK" (any case), is not there or cannot be read whole; the truck is then reset.
  /// What the file says never fails: a line that is no key is skipped, a malformed number leaves its field as it was.
  /// KNOWN, which may be null, gets the number of lines that are keys: with none of them it is hardly a truck's file.
  bool Load(const std::string& path, SError* error = nullptr, int* known = nullptr);
  /// The core of Load: resets and takes what TEXT says. Linear in its length. Returns the number of keys.
  int Parse(std::string_view text);

  /// Replaces PATH as a whole or, returning false, leaves it as it was. The caller tells the user.
  bool Save(const std::string& path, SError* error = nullptr) const;
  /// The bytes that Save writes, lines ended by CR LF.
  std::string FileText() const;

  /// LIGHT_COUNT within the room that there is.
  int UsedLights() const;
  /// Resets the next free light and returns its index; -1 when all 14 are used.
  int AddLight();
  // False, and nothing changed, when there is no such light or no neighbour to change places with.
  bool DeleteLight(int light);
  bool MoveLightUp(int light);
  bool MoveLightDown(int light);

  STruckDependencies GetDependencies() const;
};

/// The models of the tires of base name BASE, upper-cased: BASE itself when it is a whole file name, else one for each
/// of the game's three sizes (08, 10, 16), the left tire's and the right one's.
std::vector<std::string> TireModels(const std::string& base);

}  // namespace veldra

#include "platform/text.h"
#include "truck/truck.h"
#include "truck/truckformat.h"
#include "truck/truckscanner.h"

namespace veldra {

namespace {

using namespace truckformat;

/// Shorter lines are no key, whatever they say.
constexpr size_t kShortestKey = std::min(kWaveFileKey.size(), kOtherTextKeys[0].key.size());

bool StartsNoCase(std::string_view text, std::string_view prefix) {
  return text.size() > prefix.size() && EqualNoCase(text.substr(0, prefix.size()), prefix);
}

void SetPoint(TruckPoint& field, std::string_view value) {
  CTruckScanner scanner(value);
  if (const auto point = TakePoint(scanner)) field = *point;
}

void SetNumber(double& field, std::string_view value) {
  if (const auto number = CTruckScanner(value).Number()) field = *number;
}

void SetInteger(int32_t& field, std::string_view value) {
  if (const auto number = CTruckScanner(value).Integer()) field = *number;
}

/// What stands behind the last comma; nothing without one.
std::optional<std::string_view> LastPart(std::string_view value) {
  const size_t comma = value.rfind(',');
  if (comma == std::string_view::npos) return std::nullopt;
  return Trim(value.substr(comma + 1));
}

// --- the keys of one light ------------------------------------------------------------------------------------------

void SetType(TruckLight& light, std::string_view value) {
  SetInteger(light.type, value);
  light.type = AcceptedLightType(light.type);
}

void SetPosition(TruckLight& light, std::string_view value) {
  SetPoint(light.position, value);
  if (const auto radius = LastPart(value)) SetNumber(light.bitmap_radius, *radius);
}

void SetHeading(TruckLight& light, std::string_view value) {
  TruckPoint numbers = {light.heading, light.pitch, light.heading_speed};
  SetPoint(numbers, value);
  light.heading = numbers[0];
  light.pitch = numbers[1];
  light.heading_speed = numbers[2];
}

void SetCone(TruckLight& light, std::string_view value) {
  TruckPoint numbers = {light.cone_length, light.cone_base_radius, light.cone_rim_radius};
  SetPoint(numbers, value);
  light.cone_length = numbers[0];
  light.cone_base_radius = numbers[1];
  light.cone_rim_radius = numbers[2];
  if (const auto texture = LastPart(value)) light.cone_texture = *texture;
}

void SetSource(TruckLight& light, std::string_view value) {
  light.source_bitmap = value;
}

void SetBlink(TruckLight& light, std::string_view value) {
  CTruckScanner scanner(value);
  const auto on = scanner.Integer();
  if (!on || !scanner.Comma()) return;
  const auto off = scanner.Integer();
  if (!off) return;
  light.ms_on = *on;
  light.ms_off = *off;
}

struct SLightKey {
  std::string_view key;
  void (*set)(TruckLight& light, std::string_view value);
};
constexpr std::array<SLightKey, 6> kLightKeys = {{
    {kLightTypeKey, SetType},
    {kLightPositionKey, SetPosition},
    {kLightHeadingKey, SetHeading},
    {kLightConeKey, SetCone},
    {kLightSourceKey, SetSource},
    {kLightBlinkKey, SetBlink},
}};

// --- the file -------------------------------------------------------------------------------------------------------

class CTruckReader {
 public:
  CTruckReader(CTruck& truck, std::string_view text) : truck_(truck), lines_(text) {}

  /// Returns the number of keys.
  int Read() {
    int known = 0;
    while (lines_.HasKey()) {
      const auto key = lines_.Next();
      // A line that is no key takes no value with it.
      if (!key || key->size() < kShortestKey) continue;
      const bool is_known = ReadText(*key) || ReadPoint(*key) || ReadTire(*key) || ReadOther(*key) ||
                            ReadScrapePoint(*key) || ReadLight(*key);
      known += is_known ? 1 : 0;
    }
    return known;
  }

 private:
  /// Calls SET with the value line, unless the text ends before it. True, for the key has been understood.
  template <typename Set>
  bool WithValue(Set set) {
    if (const auto value = lines_.Next()) set(*value);
    return true;
  }

  bool ReadText(std::string_view key) {
    const auto read = [&](const auto& rows) {
      for (const STextKey& row : rows)
        if (EqualNoCase(key, row.key)) return WithValue([&](auto value) { truck_.*row.field = value; });
      return false;
    };
    return read(kTextKeys) || read(kOtherTextKeys);
  }

  bool ReadPoint(std::string_view key) {
    for (const SPointKey& row : kPointKeys)
      if (EqualNoCase(key, row.key)) return WithValue([&](auto value) { SetPoint(truck_.*row.field, value); });
    return false;
  }

  bool ReadTire(std::string_view key) {
    for (size_t tire = 0; tire < kTireKeys.size(); ++tire) {
      const std::string_view prefix = kTireKeys[tire];
      if (key.size() != prefix.size() + 1 || !StartsNoCase(key, prefix)) continue;
      const size_t axis = kAxes.find(LowerCase(key.substr(prefix.size())));
      if (axis == std::string_view::npos) return false;
      return WithValue([&](auto value) { SetNumber(truck_.tires[tire][axis], value); });
    }
    return false;
  }

  bool ReadOther(std::string_view key) {
    if (EqualNoCase(key, kInstrumentClusterKey)) {
      return WithValue([&](auto) { truck_.instrument_cluster = kInstrumentCluster; });
    }
    if (EqualNoCase(key, kLightCountKey)) {
      return WithValue([&](auto value) { SetInteger(truck_.light_count, value); });
    }
    if (EqualNoCase(key, kWaveFileKey)) return ReadWaves();
    return false;
  }

  bool ReadWaves() {
    for (std::string& wave : truck_.wave_files) {
      const size_t before = lines_.Position();
      const auto line = lines_.Next();
      if (!line) return true;
      if (line->size() < 4 || !EqualNoCase(line->substr(line->size() - 4), ".wav")) {
        lines_.Return(before);
        return true;
      }
      wave = *line;
    }
    return true;
  }

  bool ReadScrapePoint(std::string_view key) {
    if (!StartsNoCase(key, kScrapePointPrefix)) return false;
    CTruckScanner scanner(key.substr(kScrapePointPrefix.size()));
    const auto number = scanner.Index();
    if (!number || !scanner.Blanks() || !EqualNoCase(scanner.Rest(), kScrapePointKey)) return false;
    if (*number < kFirstScrapePoint || *number >= kFirstScrapePoint + kScrapePoints) return false;
    const auto point = static_cast<size_t>(*number - kFirstScrapePoint);
    return WithValue([&](auto value) { SetPoint(truck_.scrape_points[point], value); });
  }

  bool ReadLight(std::string_view key) {
    if (!StartsNoCase(key, kLightPrefix)) return false;
    CTruckScanner scanner(key.substr(kLightPrefix.size()));
    const auto number = scanner.Index();
    if (!number || *number >= kTruckLights || !scanner.Blanks()) return false;
    for (const SLightKey& row : kLightKeys)
      if (EqualNoCase(scanner.Rest(), row.key)) {
        return WithValue([&](auto value) { row.set(truck_.lights[static_cast<size_t>(*number)], value); });
      }
    return false;
  }

  CTruck& truck_;
  CTruckLines lines_;
};

}  // namespace

int CTruck::Parse(std::string_view text) {
  Reset();
  return CTruckReader(*this, text).Read();
}

}  // namespace veldra

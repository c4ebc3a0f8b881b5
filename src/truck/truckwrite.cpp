#include <algorithm>
#include <charconv>

#include "platform/text.h"
#include "truck/truck.h"
#include "truck/truckformat.h"

namespace veldra {

namespace {

using namespace truckformat;

/// C's "%f" in the C locale, whatever the locale is.
std::string SixDecimals(double value) {
  char text[400];  // the largest double has 309 digits before the point
  const auto [end, error] = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
  return error == std::errc() ? std::string(text, end) : std::string();
}

std::string Numbers(std::initializer_list<double> values) {
  std::string text;
  for (const double value : values)
    text += (text.empty() ? "" : ",") + SixDecimals(value);
  return text;
}

std::string Numbers(const TruckPoint& point) {
  return Numbers({point[0], point[1], point[2]});
}

class CTruckWriter {
 public:
  void Line(std::string_view line) {
    text_ += line;
    text_ += "\r\n";
  }
  void Pair(std::string_view key, std::string_view value) {
    Line(key);
    Line(value);
  }

  void Write(const CTruck& truck) {
    for (const STextKey& row : kTextKeys)
      Pair(row.key, truck.*row.field);
    for (const SPointKey& row : kPointKeys)
      Pair(row.key, Numbers(truck.*row.field));
    for (size_t axis = 0; axis < kAxes.size(); ++axis)
      for (size_t tire = 0; tire < kTireKeys.size(); ++tire)
        Pair(std::string(kTireKeys[tire]) + kAxes[axis], SixDecimals(truck.tires[tire][axis]));
    for (int point = 0; point < kScrapePoints; ++point)
      Pair(Indexed(kScrapePointPrefix, point + kFirstScrapePoint, kScrapePointKey),
           Numbers(truck.scrape_points[static_cast<size_t>(point)]));
    Pair(kInstrumentClusterKey, kInstrumentClusterName);
    Line(kWaveFileKey);
    for (const std::string& wave : truck.wave_files)
      Line(wave);
    Pair(kLightCountKey, Format("%d", truck.light_count));
    for (int light = 0; light < truck.UsedLights(); ++light)
      WriteLight(light, truck.lights[static_cast<size_t>(light)]);
  }

  std::string Take() { return std::move(text_); }

 private:
  static std::string Indexed(std::string_view prefix, int index, std::string_view key) {
    return std::string(prefix) + Format("%d ", index) + std::string(key);
  }

  void WriteLight(int index, const TruckLight& light) {
    const auto key = [&](std::string_view name) { return Indexed(kLightPrefix, index, name); };
    Pair(key(kLightTypeKey), Format("%d", light.type));
    Pair(key(kLightPositionKey),
         Numbers({light.position[0], light.position[1], light.position[2], light.bitmap_radius}));
    Pair(key(kLightHeadingKey), Numbers({light.heading, light.pitch, light.heading_speed}));
    Pair(key(kLightConeKey),
         Numbers({light.cone_length, light.cone_base_radius, light.cone_rim_radius}) + "," + light.cone_texture);
    Pair(key(kLightSourceKey), light.source_bitmap);
    Pair(key(kLightBlinkKey), Format("%d,%d", light.ms_on, light.ms_off));
  }

  std::string text_;
};

}  // namespace

std::string CTruck::FileText() const {
  CTruckWriter writer;
  writer.Write(*this);
  return writer.Take();
}

}  // namespace veldra

#include "truck/truckjson.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>

#include "platform/text.h"

namespace veldra {

namespace {

using ParsedJson = nlohmann::json;

/// Takes values out of JSON until the first that is wrong.
class CTruckJsonReader {
 public:
  explicit CTruckJsonReader(CTruck& truck) : truck_(truck) {}

  STruckJsonFault Read(const ParsedJson& json) {
    ReadTruck(json);
    return std::move(fault_);
  }

 private:
  /// What is done with the value of a key.
  struct SKey {
    const char* name;
    std::function<void(const ParsedJson& value, const std::string& path)> take;
  };

  void Fail(const std::string& path, const std::string& what) {
    if (fault_.Empty()) fault_.what = path + " " + what;
  }

  void ReadObject(const ParsedJson& json, const std::string& path, std::span<const SKey> keys) {
    if (!json.is_object()) return Fail(path.empty() ? "The truck" : path, "is not an object");
    for (const auto& [name, value] : json.items()) {
      const auto key = std::ranges::find_if(keys, [&name = name](const SKey& row) { return name == row.name; });
      std::string own_path = path;
      if (!path.empty()) own_path += '.';
      own_path += name;
      if (key == keys.end()) return FailUnknown(own_path, name, keys);
      key->take(value, own_path);
      if (!fault_.Empty()) return;
    }
  }

  void FailUnknown(const std::string& path, const std::string& name, std::span<const SKey> keys) {
    Fail(path, "is not known");
    fault_.unknown = name;
    for (const SKey& key : keys)
      fault_.known.emplace_back(key.name);
  }

  void Take(const ParsedJson& value, const std::string& path, std::string& text) {
    if (!value.is_string()) return Fail(path, "is not a text");
    text = value.get<std::string>();
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    if (std::ranges::any_of(text, is_control)) Fail(path, "has a control character");
  }
  void Take(const ParsedJson& value, const std::string& path, double& number) {
    if (!value.is_number()) return Fail(path, "is not a number");
    number = value.get<double>();
  }
  void Take(const ParsedJson& value, const std::string& path, int32_t& number) {
    if (!value.is_number_integer()) return Fail(path, "is not a whole number");
    const bool is_too_large = value.is_number_unsigned() && value.get<uint64_t>() > uint64_t{0x7FFFFFFF};
    if (is_too_large || value.get<int64_t>() < std::numeric_limits<int32_t>::min() ||
        value.get<int64_t>() > std::numeric_limits<int32_t>::max())
      return Fail(path, "does not fit in 32 bits");
    number = value.get<int32_t>();
  }
  /// A list of exactly SIZE values.
  bool IsList(const ParsedJson& value, const std::string& path, size_t size) {
    if (value.is_array() && value.size() == size) return true;
    Fail(path, Format("is not a list of %zu", size));
    return false;
  }
  /// A point, or a list of points or texts.
  template <typename Value, size_t kSize>
  void Take(const ParsedJson& value, const std::string& path, std::array<Value, kSize>& list) {
    if (!IsList(value, path, kSize)) return;
    for (size_t i = 0; i < kSize; ++i)
      Take(value[i], path + Format("[%zu]", i), list[i]);
  }

  template <typename Value>
  SKey Key(const char* name, Value& target) {
    return {name, [this, &target](const ParsedJson& value, const std::string& path) { Take(value, path, target); }};
  }

  void ReadTires(const ParsedJson& json, const std::string& path) {
    const SKey keys[] = {Key("frontRight", truck_.tires[kFrontRightTire]),
                         Key("frontLeft", truck_.tires[kFrontLeftTire]), Key("rearRight", truck_.tires[kRearRightTire]),
                         Key("rearLeft", truck_.tires[kRearLeftTire])};
    ReadObject(json, path, keys);
  }

  void ReadLight(const ParsedJson& json, const std::string& path, TruckLight& light) {
    std::string type_name;  // follows from the type
    const SKey keys[] = {Key("type", light.type),
                         Key("typeName", type_name),
                         Key("position", light.position),
                         Key("bitmapRadius", light.bitmap_radius),
                         Key("heading", light.heading),
                         Key("pitch", light.pitch),
                         Key("headingSpeed", light.heading_speed),
                         Key("coneLength", light.cone_length),
                         Key("coneBaseRadius", light.cone_base_radius),
                         Key("coneRimRadius", light.cone_rim_radius),
                         Key("coneTexture", light.cone_texture),
                         Key("sourceBitmap", light.source_bitmap),
                         Key("msOn", light.ms_on),
                         Key("msOff", light.ms_off)};
    ReadObject(json, path, keys);
  }

  void ReadLights(const ParsedJson& json, const std::string& path) {
    if (!json.is_array() || json.size() > truck_.lights.size())
      return Fail(path, Format("is not a list of at most %zu", truck_.lights.size()));
    given_lights_ = static_cast<int32_t>(json.size());
    for (size_t i = 0; i < json.size(); ++i)
      ReadLight(json[i], path + Format("[%zu]", i), truck_.lights[i]);
  }

  void ReadTruck(const ParsedJson& json) {
    const auto list = [this](const char* name, void (CTruckJsonReader::*read)(const ParsedJson&, const std::string&)) {
      return SKey{name, [this, read](const ParsedJson& value, const std::string& path) { (this->*read)(value, path); }};
    };
    const SKey keys[] = {Key("name", truck_.name),
                         Key("bodyModel", truck_.model_base_name),
                         Key("tireModels", truck_.tire_base_name),
                         Key("axleModel", truck_.axle_model_name),
                         Key("shockTexture", truck_.shock_texture),
                         Key("barTexture", truck_.bar_texture),
                         Key("axleBarOffset", truck_.axle_bar_offset),
                         Key("driveShaft", truck_.drive_shaft_position),
                         list("tires", &CTruckJsonReader::ReadTires),
                         Key("scrapePoints", truck_.scrape_points),
                         Key("instrumentCluster", truck_.instrument_cluster),
                         Key("waveFiles", truck_.wave_files),
                         Key("lightCount", truck_.light_count),
                         list("lights", &CTruckJsonReader::ReadLights)};
    ReadObject(json, "", keys);
    if (!fault_.Empty()) return;
    if (!json.contains("lightCount")) truck_.light_count = given_lights_;
    if (truck_.UsedLights() != given_lights_)
      Fail("lightCount", Format("is %d, and there are %d lights", truck_.light_count, given_lights_));
    if (truck_.instrument_cluster != kInstrumentCluster)
      Fail("instrumentCluster", Format("is not %d, the only one that there is", kInstrumentCluster));
  }

  CTruck& truck_;
  int32_t given_lights_ = 0;
  STruckJsonFault fault_;
};

}  // namespace

STruckJsonFault ReadTruckJson(std::string_view json, CTruck& truck) {
  truck.Reset();
  truck.instrument_cluster = kInstrumentCluster;
  const ParsedJson parsed = ParsedJson::parse(json, nullptr, false);
  if (parsed.is_discarded()) return {"The text is not JSON"};
  return CTruckJsonReader(truck).Read(parsed);
}

}  // namespace veldra

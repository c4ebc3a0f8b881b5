#pragma once

#include <random>
#include <string>

#include "truck/truck.h"

namespace veldra::testing {

/// A truck in which every field has a value of its own that six decimals hold; the same SEED makes the same truck.
inline CTruck RichTruck(unsigned seed) {
  std::mt19937 random(seed);
  const auto number = [&] { return (static_cast<int>(random() % 2000001) - 1000000) / 64.0; };
  const auto fill = [&](TruckPoint& point) {
    for (double& value : point)
      value = number();
  };
  const auto text = [&](const char* end) { return "N" + std::to_string(random() % 100000) + end; };
  CTruck truck;
  truck.name = "Mud, Sweat & \xE9gears " + text("");
  truck.model_base_name = text(".BIN");
  truck.tire_base_name = text("");
  truck.axle_model_name = text(".BIN");
  truck.shock_texture = text(".raw");
  truck.bar_texture = text(".RAW");
  fill(truck.axle_bar_offset);
  fill(truck.drive_shaft_position);
  for (TruckPoint& tire : truck.tires)
    fill(tire);
  for (TruckPoint& point : truck.scrape_points)
    fill(point);
  for (std::string& wave : truck.wave_files)
    wave = text(".Wav");
  const int32_t types[] = {0, 1, 3, 4, 5};
  truck.light_count = static_cast<int32_t>(random() % (kTruckLights + 1));
  for (int i = 0; i < truck.light_count; ++i) {
    TruckLight& light = truck.lights[static_cast<size_t>(i)];
    light.type = types[random() % 5];
    fill(light.position);
    for (double* value : {&light.bitmap_radius, &light.heading, &light.pitch, &light.heading_speed, &light.cone_length,
                          &light.cone_base_radius, &light.cone_rim_radius})
      *value = number();
    light.cone_texture = text(".RAW");
    light.source_bitmap = text(".RAW");
    light.ms_on = static_cast<int32_t>(random());
    light.ms_off = static_cast<int32_t>(random());
  }
  return truck;
}

}  // namespace veldra::testing

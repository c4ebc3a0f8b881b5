#include "truck/truck.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "archive/filelists.h"
#include "platform/text.h"

namespace veldra {

namespace {

bool EndsNoCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

}  // namespace

std::vector<std::string> TireModels(const std::string& base) {
  const std::string upper = UpperCase(base);
  if (upper.size() > 4 && upper.ends_with(".BIN")) return {upper};
  std::vector<std::string> models;
  models.reserve(std::size(kTireModelEnds));
  for (const char* end : kTireModelEnds)
    models.push_back(upper + end);
  return models;
}

void CTruck::Reset() {
  *this = CTruck();
}

bool CTruck::Load(const std::string& path, SError* error, int* known) {
  Reset();
  const auto fail = [&](const char* why) {
    if (error != nullptr) error->what = why;
    return false;
  };
  if (!EndsNoCase(path, ".TRK")) return fail("The name of a truck file ends in .TRK.");
  if (!FileExists(path)) return fail("There is no such file.");
  const auto bytes = ReadTextFile(path, error);
  if (!bytes) return false;
  const int keys = Parse(bytes->Text());
  if (known != nullptr) *known = keys;
  return true;
}

bool CTruck::Save(const std::string& path, SError* error) const {
  return ReplaceFile(path, FileText(), error);
}

int CTruck::UsedLights() const {
  return std::clamp(light_count, 0, kTruckLights);
}

int CTruck::AddLight() {
  const int light = UsedLights();
  if (light == kTruckLights) return -1;
  lights[static_cast<size_t>(light)] = TruckLight();
  light_count = light + 1;
  return light;
}

bool CTruck::DeleteLight(int light) {
  const int used = UsedLights();
  if (light < 0 || light >= used) return false;
  std::move(lights.begin() + light + 1, lights.end(), lights.begin() + light);
  lights.back() = TruckLight();
  light_count = used - 1;
  return true;
}

bool CTruck::MoveLightUp(int light) {
  if (light < 1 || light >= UsedLights()) return false;
  std::swap(lights[static_cast<size_t>(light)], lights[static_cast<size_t>(light - 1)]);
  return true;
}

bool CTruck::MoveLightDown(int light) {
  return light >= 0 && light < kTruckLights && MoveLightUp(light + 1);
}

STruckDependencies CTruck::GetDependencies() const {
  STruckDependencies needed;
  needed.models = {axle_model_name, model_base_name};
  const std::vector<std::string> tire_models = TireModels(tire_base_name);
  needed.models.insert(needed.models.end(), tire_models.begin(), tire_models.end());
  needed.textures = {bar_texture, shock_texture};
  for (int light = 0; light < UsedLights(); ++light) {
    const TruckLight& used = lights[static_cast<size_t>(light)];
    needed.textures.insert(needed.textures.end(), {used.cone_texture, used.source_bitmap});
  }
  needed.sounds.assign(wave_files.begin(), wave_files.end());
  // Names that are empty go here.
  for (auto* list : {&needed.textures, &needed.models, &needed.sounds})
    TidyFileList(*list);
  needed.palettes = ColorTablesOf(needed.textures);
  return needed;
}

}  // namespace veldra

#include "truckscene/truckscene.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "archive/filepart.h"
#include "model/appendmodel.h"
#include "model/binfile.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "truck/truckpoints.h"

namespace veldra {

namespace {

constexpr int32_t kAnchors = 2;
/// The cube's side is one of the powers of this, so that it rarely changes.
constexpr double kCubeStep = 1.5;

int32_t ToUnits(double feet, double units_per_foot) {
  constexpr double kFarthest = 1e8;
  const double units = std::round(feet * units_per_foot);
  return Truncate(std::isfinite(units) ? std::clamp(units, -kFarthest, kFarthest) : 0.0);
}

SPoint ToUnits(const TruckPoint& feet, double units_per_foot) {
  return {ToUnits(feet[0], units_per_foot), ToUnits(feet[1], units_per_foot), ToUnits(feet[2], units_per_foot)};
}

TruckPoint Middle(const TruckPoint& a, const TruckPoint& b) {
  return {(a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2};
}

SPoint Sum(const SPoint& a, const SPoint& b) {
  return {WrapAdd(a.x, b.x), WrapAdd(a.y, b.y), WrapAdd(a.z, b.z)};
}

/// The largest absolute coordinate.
double Reach(const SBounds& bounds) {
  double reach = 0;
  for (const SPoint& corner : {bounds.min, bounds.max})
    reach = std::max({reach, std::abs(double(corner.x)), std::abs(double(corner.y)), std::abs(double(corner.z))});
  return reach;
}

bool IsRight(size_t tire) {
  return tire == kFrontRightTire || tire == kRearRightTire;
}

}  // namespace

std::vector<std::string> TireModelNames(const std::string& base, bool right) {
  std::vector<std::string> names = base.empty() ? std::vector<std::string>() : TireModels(base);
  if (names.size() > 1)
    std::erase_if(names, [right](const std::string& name) { return name.ends_with("R.BIN") != right; });
  std::reverse(names.begin(), names.end());
  return names;
}

CTruckScene::CTruckScene() : model_(std::make_unique<CBinModel>()) {}

std::vector<std::string> CTruckScene::Names(const CTruck& truck) {
  return {truck.model_base_name, truck.axle_model_name, truck.tire_base_name};
}

void CTruckScene::Follow(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures, double units_per_foot,
                         bool again) {
  if (again || names_ != Names(truck)) ReadAll(truck, files, textures);
  MoveParts(truck, units_per_foot);
  FollowBounds();
}

double CTruckScene::PutTogether(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures) {
  Follow(truck, files, textures, kUnitsPerFoot, true);
  const double units = GuessUnitsPerFoot(truck, body_length_);
  if (units != kUnitsPerFoot) Follow(truck, files, textures, units);
  return units;
}

void CTruckScene::ReadAll(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures) {
  names_ = Names(truck);
  model_ = std::make_unique<CBinModel>();
  ++generation_;
  parts_.clear();
  has_tire_ = {};
  body_length_ = 0;
  for (int32_t i = 0; i < kAnchors; ++i)
    model_->AddVertex({});
  if (Add(truck.model_base_name, EPlace::kBody, 0, files, textures)) {
    const auto [first, last] = std::minmax_element(parts_.back().at_rest.begin(), parts_.back().at_rest.end(),
                                                   [](const SPoint& a, const SPoint& b) { return a.z < b.z; });
    body_length_ = double(last->z) - first->z;
  }
  for (const EPlace axle : {EPlace::kFrontAxle, EPlace::kRearAxle})
    Add(truck.axle_model_name, axle, 0, files, textures);
  for (size_t tire = 0; tire < kTireCount; ++tire) {
    const std::vector<std::string> names = TireModelNames(truck.tire_base_name, IsRight(tire));
    has_tire_[tire] = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
      return Add(name, EPlace::kTire, tire, files, textures);
    });
  }
  if (parts_.empty()) model_ = std::make_unique<CBinModel>();
}

bool CTruckScene::Add(const std::string& name, EPlace place, size_t tire, CTruckFiles& files,
                      CTruckTextures& textures) {
  if (name.empty()) return false;
  const STruckFile& file = files.Find(name, kTypeBin);
  if (file.place == SDependency::EPlace::kMissing) return false;
  const auto bytes = ReadFilePart(file.source.bytes);
  if (!bytes) return false;
  CQuietQuestions quiet;
  CBinModel part;
  const SLoadContext context = {.textures = textures, .questions = quiet, .ask_texture_size = false};
  if (!LoadBin(part, bytes->View(), "", context) || part.VertexCount() == 0) return false;
  SPart row = {.place = place, .tire = tire, .first_vertex = model_->VertexCount()};
  for (int32_t i = 0; i < part.VertexCount(); ++i)
    row.at_rest.push_back(part.Vertex(i).Position());
  if (!AppendModel(*model_, part, false)) return false;
  parts_.push_back(std::move(row));
  return true;
}

void CTruckScene::MoveParts(const CTruck& truck, double units_per_foot) {
  const auto& tires = truck.tires;
  for (SPart& part : parts_) {
    TruckPoint place{};
    if (part.place == EPlace::kFrontAxle) place = Middle(tires[kFrontRightTire], tires[kFrontLeftTire]);
    if (part.place == EPlace::kRearAxle) place = Middle(tires[kRearRightTire], tires[kRearLeftTire]);
    if (part.place == EPlace::kTire) place = tires[part.tire];
    const SPoint moved = ToUnits(place, units_per_foot);
    if (moved == part.moved) continue;
    part.moved = moved;
    std::vector<int32_t> indices(part.at_rest.size());
    std::iota(indices.begin(), indices.end(), part.first_vertex);
    std::vector<SPoint> positions;
    positions.reserve(part.at_rest.size());
    for (const SPoint& at_rest : part.at_rest)
      positions.push_back(Sum(at_rest, moved));
    model_->SetVertexPositions(indices, positions);
  }
}

void CTruckScene::FollowBounds() {
  part_bounds_ = {};
  if (parts_.empty()) return;
  std::vector<int32_t> vertices(static_cast<size_t>(model_->VertexCount() - kAnchors));
  std::iota(vertices.begin(), vertices.end(), kAnchors);
  part_bounds_ = model_->BoundsOfVertices(vertices).value_or(SBounds());
  const double reach = std::clamp(Reach(part_bounds_), 1.0, 5e8);
  const int32_t side = Truncate(std::pow(kCubeStep, std::ceil(std::log(reach) / std::log(kCubeStep)) + 1));
  const SPoint corner = {side, side, side};
  if (model_->Vertex(1).Position() == corner) return;
  const int32_t anchors[kAnchors] = {0, 1};
  const SPoint corners[kAnchors] = {{-side, -side, -side}, corner};
  model_->SetVertexPositions(anchors, corners);
  model_->RecomputeBounds();
}

}  // namespace veldra

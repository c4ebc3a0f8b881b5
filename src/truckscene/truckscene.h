#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "model/binmodel.h"
#include "truck/truck.h"
#include "truckscene/truckfiles.h"
#include "truckscene/trucktextures.h"

namespace veldra {

/// The truck put together from its models: body, axles and tires, each in its place, as one model for drawing. Nobody
/// is asked anything: a model that is not found or cannot be read is left out.
class CTruckScene {
 public:
  CTruckScene();

  /// Reads the models, when TRUCK names others than last time or AGAIN is set, then puts every part in its place. The
  /// model's textures live as long as TEXTURES.
  void Follow(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures, double units_per_foot,
              bool again = false);

  /// The same with everything read anew and the units per foot guessed from it, which are returned.
  double PutTogether(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures);

  /// Its bounds are a cube about the truck's origin that holds every part and has room for lights and cones: two
  /// vertices of no face see to that. Without parts it is empty.
  const CBinModel& Model() const { return *model_; }
  /// Grows whenever Model() is another object: who draws it starts anew.
  int Generation() const { return generation_; }
  /// Of the parts alone, in model units; all 0 when there are none.
  const SBounds& PartBounds() const { return part_bounds_; }
  /// Length of the body model from front to rear, in model units; 0 without one.
  double BodyLength() const { return body_length_; }
  /// By ETire: which have a model.
  const std::array<bool, kTireCount>& HasTires() const { return has_tire_; }

 private:
  enum class EPlace { kBody, kFrontAxle, kRearAxle, kTire };
  struct SPart {
    EPlace place;
    size_t tire = 0;
    int32_t first_vertex = 0;
    std::vector<SPoint> at_rest = {};  ///< its vertices as they are in its file
    SPoint moved = {};
  };

  static std::vector<std::string> Names(const CTruck& truck);
  void ReadAll(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures);
  bool Add(const std::string& name, EPlace place, size_t tire, CTruckFiles& files, CTruckTextures& textures);
  void MoveParts(const CTruck& truck, double units_per_foot);
  void FollowBounds();

  std::unique_ptr<CBinModel> model_;
  int generation_ = 0;
  std::vector<SPart> parts_;
  std::vector<std::string> names_;  ///< what has been read last
  SBounds part_bounds_;
  double body_length_ = 0;
  std::array<bool, kTireCount> has_tire_{};
};

/// The models of the right or the left tires of base name BASE: the game's three sizes from the largest to the
/// smallest, or the one model that BASE itself names.
std::vector<std::string> TireModelNames(const std::string& base, bool right);

}  // namespace veldra

#pragma once

#include <map>
#include <string>
#include <vector>

#include "model/modelcheck.h"
#include "truck/truck.h"
#include "truckscene/truckfiles.h"

/// What a modder should know about a truck, its models and what they need.
namespace veldra {

struct STruckFinding {
  std::string model;  ///< file name of the model that it is about; "" for the truck itself
  std::string kind;   ///< "missing-file", "unusable-name", or a FindingName
  SFinding finding;   ///< its kind counts for models only
  std::string named;  ///< what the truck needs and it is about: the model, or the file that is missing or badly named
};

struct STruckReport {
  std::vector<STruckFinding> findings;
  /// Models that could not be looked into.
  struct SUnread {
    std::string model;
    std::string text;
    std::string details;
  };
  std::vector<SUnread> unread;
};

/// Looks into each model once, however often a truck that names it is checked.
class CTruckCheck {
 public:
  /// FILES outlives it.
  explicit CTruckCheck(CTruckFiles& files) : files_(files) {}

  /// FILE_NAME: of the truck's own file; "" for one without.
  STruckReport Run(const CTruck& truck, const std::string& file_name);

 private:
  struct SLook {
    std::vector<SFinding> findings;
    STruckReport::SUnread fault;  ///< without a text when there is none
  };

  void CheckNames(const std::vector<std::string>& names, STruckReport& report);
  bool IsThere(const std::string& name, STruckReport& report);
  const SLook& LookInto(const std::string& model);
  SLook ReadModel(const std::string& model);
  std::optional<int> TextureWidth(const std::string& name);

  CTruckFiles& files_;
  std::map<std::string, SLook> models_;
};

}  // namespace veldra

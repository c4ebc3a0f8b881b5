#pragma once

#include <functional>
#include <string>

#include "cli/session.h"

/// The operations of the command edit.
namespace veldra {

/// One operation with its values, ready to be done. Returns the exit status.
using EditStep = std::function<int(CSession&, CTarnDoc&)>;

// Each an empty step when VALUE is malformed.
EditStep Fitting(const std::string& value);            ///< "N"
EditStep ReplacingTexture(const std::string& value);   ///< "OLD,RAW"
EditStep Assigning(const std::string& value);          ///< "GROUP,RAW"
EditStep ChangingGroupType(const std::string& value);  ///< "GROUP,TYPE"
EditStep DeletingFaces(const std::string& value);      ///< "GROUP"
EditStep Mapping(const std::string& value);            ///< "planar,AXIS[,GROUP]", "box[,GROUP]"

}  // namespace veldra

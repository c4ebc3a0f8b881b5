#pragma once

#include "samples/meshbuilder.h"

/// The truck's measures in model units, shared by who builds it and who paints it. The ground is y = 0, the truck's
/// front looks toward +z.
namespace veldra::samples {

inline constexpr double kFrontEnd = 205;
inline constexpr double kRearEnd = -205;
inline constexpr double kCowl = 68.5;      ///< where bonnet and windscreen meet
inline constexpr double kCabBack = -63.5;  ///< where cab and bed meet
inline constexpr double kBodyBottom = 140;
inline constexpr double kBeltLine = 218;  ///< lower edge of the windows, upper edge of the bed
inline constexpr double kRoof = 284;
inline constexpr double kFrontAxle = 125;
inline constexpr double kRearAxle = -120;
inline constexpr double kArchHeight = 120;  ///< of the wheel arches' centres
inline constexpr double kArchRadius = 60;
inline constexpr double kTyreRadius = 80;
inline constexpr double kWheelTrack = 118;  ///< from the truck's middle to a wheel's

/// A flat view of the truck and the part of a texture on which it is painted.
struct SPlane {
  double left, right;  ///< what lies at the edges of the picture: one coordinate
  double bottom, top;  ///< and the other
  double first_row, last_row;

  STexCoord At(double across, double up) const {
    return {(across - left) / (right - left), last_row + (up - bottom) / (top - bottom) * (first_row - last_row)};
  }
  bool Holds(double v) const { return v >= first_row && v < last_row; }
  double Across(double u) const { return left + u * (right - left); }
  double Up(double v) const { return bottom + (last_row - v) / (last_row - first_row) * (top - bottom); }
};

// SIDES.RAW: along z and y.
inline constexpr SPlane kLeftSide = {-212, 212, 130, 294, 0.0, 0.5};
inline constexpr SPlane kRightSide = {212, -212, 130, 294, 0.5, 1.0};
// TOP.RAW: along x and z, the bonnet's front edge in the last row.
inline constexpr SPlane kAbove = {-84, 84, 212, -70, 0.0, 1.0};
// ENDS.RAW: along x and y.
inline constexpr SPlane kFrontView = {-84, 84, 136, 226, 0.0, 0.5};
inline constexpr SPlane kRearView = {84, -84, 136, 226, 0.5, 1.0};

}  // namespace veldra::samples

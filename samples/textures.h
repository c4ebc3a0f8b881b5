#pragma once

#include <string>
#include <vector>

#include "platform/files.h"
#include "samples/paint.h"
#include "textures/texturestore.h"

namespace veldra::samples {

struct STextureDesign {
  std::string name;  ///< "SIDES.RAW"
  int size;
  Painter painter;
};

/// What the sample models wear. Only the ramp's are 128 and 512 wide, which the game does not support.
std::vector<STextureDesign> TextureDesigns();

// The truck's bodywork, in the views of truckplan.h.
SRgb PaintSides(double u, double v);
SRgb PaintTop(double u, double v);
SRgb PaintEnds(double u, double v);

/// The colour table for textures without one: black, greys, and red × green × blue in even steps.
ColorTable DefaultColors();

/// NAME in FOLDER with its colour table beside it.
bool WriteTexture(const STextureDesign& design, const std::string& folder, SError* error);

/// TEXT in letters of HEIGHT with an outline over BASE; (X, Y) from the text's lower left corner, y upwards.
SRgb Letter(const SRgb& base, const char* text, double x, double y, double height, const SRgb& fill,
            const SRgb& outline);

}  // namespace veldra::samples

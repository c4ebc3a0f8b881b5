#pragma once

#include "platform/files.h"
#include "platform/png.h"
#include "settings/settings.h"
#include "truck/truck.h"
#include "truckscene/trucktextures.h"

namespace veldra {

/// TRUCK put together and drawn, SIDE pixels wide and high, in the way of new views; without pixels when none of its
/// models is found or nothing can be drawn. No OpenGL context may be current on the calling thread; none is afterwards.
SImage DrawTruckPicture(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures, const CSettings& settings,
                        int side);

}  // namespace veldra

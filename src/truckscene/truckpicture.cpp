#include "truckscene/truckpicture.h"

#include "render/modelpicture.h"
#include "truckscene/truckscene.h"

namespace veldra {

SImage DrawTruckPicture(const CTruck& truck, CTruckFiles& files, CTruckTextures& textures, const CSettings& settings,
                        int side) {
  CTruckScene scene;
  scene.PutTogether(truck, files, textures);
  if (scene.PartBounds() == SBounds()) return {};
  SViewState state = SViewState::FromSettings(settings);
  state.ChooseMode(ERenderMode::kTextured);
  state.axes = state.grid = state.vertices = state.vertex_numbers = false;
  state.transparency = true;
  state.ZoomToFit(scene.PartBounds());
  SError ignored;
  return DrawModelPicture(scene.Model(), state, side, side, &ignored).value_or(SImage());
}

}  // namespace veldra

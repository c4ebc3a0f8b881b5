#pragma once

#include "samples/meshbuilder.h"

/// The parts of the sample truck; each adds its groups. truckplan.h has the measures.
namespace veldra::samples {

void BuildBody(CMeshBuilder& mesh);
void BuildCab(CMeshBuilder& mesh);
void BuildBed(CMeshBuilder& mesh);
void BuildChassis(CMeshBuilder& mesh);
void BuildTrim(CMeshBuilder& mesh);  ///< bumpers, lamps, pipes and the beacon
void BuildWheels(CMeshBuilder& mesh);
/// What is looked through comes last, so that what is behind it is drawn already.
void BuildGlass(CMeshBuilder& mesh);
void BuildMudFlaps(CMeshBuilder& mesh);

// For the truck file, whose parts are models of their own that the game moves.
void BuildFrame(CMeshBuilder& mesh);                          ///< the chassis without what hangs from it
void BuildAxle(CMeshBuilder& mesh);                           ///< with its middle on x and z
void BuildTire(CMeshBuilder& mesh, int segments, bool left);  ///< with its rim, about the origin

}  // namespace veldra::samples

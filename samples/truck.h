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

}  // namespace veldra::samples

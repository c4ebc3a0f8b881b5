#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/commandrow.h"
#include "cli/pictureoptions.h"
#include "cli/session.h"
#include "truck/truck.h"

namespace veldra {

/// Nothing when the truck PATH cannot be loaded; the user has been told why.
std::optional<CTruck> OpenTruck(CSession& session, const std::string& path);
/// The same for making a file of it, which wants a yes where nothing in it is known.
std::optional<CTruck> OpenTruckToWrite(CSession& session, const std::string& path);
/// Writes TRUCK to OUT. Returns the exit status.
int SaveTruck(CSession& session, const CTruck& truck, const std::string& out);

/// Draws the truck PATH, put together, into the PNG file OUT. Returns the exit status.
int DrawTruck(CSession& session, const std::string& path, const SPictureOptions& options, const std::string& out);

/// from-json, render, check.
std::vector<SCommandRow> TruckToolCommands();

}  // namespace veldra

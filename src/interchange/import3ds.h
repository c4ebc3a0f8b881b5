#pragma once

#include <string>

#include "interchange/3dstudiofile.h"
#include "interchange/importmodel.h"

namespace veldra {

/// Appends the meshes of the 3ds file PATH to MODEL, with coordinates in ten-thousandths of the file's units, cut off
/// toward zero, and every triangle showing the whole of TEXTURE, a RAW file. On failure MODEL is unchanged and FAULT
/// (may be null) says why; nothing is shown but what C3DStudioFile and the texture's loading show.
bool ImportFrom3ds(CBinModel& model, const std::string& path, const std::string& texture, const SImportContext& context,
                   SImportFault* fault = nullptr);

/// The same with a file that has been read.
bool ImportFrom3ds(CBinModel& model, const C3DStudioFile& file, const std::string& texture,
                   const SImportContext& context, SImportFault& fault);

/// Deliberately writes nothing: the command is there, the format is not.
void ExportTo3ds(const CBinModel& model, const std::string& path);

}  // namespace veldra

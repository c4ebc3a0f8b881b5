#pragma once

namespace veldra {

class CTarnDoc;

/// What is written beside a model's own file. Each asks where to; a failure has been told.
bool CanSaveTextureList(const CTarnDoc& document);
void SaveTextureList(CTarnDoc& document);
void ExportWavefront(CTarnDoc& document);

bool CanExport3ds(const CTarnDoc& document);
// Both write nothing in this release, on purpose; the status bar says so.
void Export3ds(CTarnDoc& document);
void ExportVrml(CTarnDoc& document);

}  // namespace veldra

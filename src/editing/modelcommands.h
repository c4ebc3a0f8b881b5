#pragma once

#include <cstdint>
#include <string>

#include "document/tarn2doc.h"
#include "editing/commandinputs.h"
#include "packing/texturecatalog.h"

/// The commands on a whole model, but for centering and what else a save may need (CTarnDoc). Each does nothing where
/// its enabling rule forbids it, keeps the state before as one of the earlier states, and says in the status bar what
/// it has done. Where it is refused or fails otherwise, the user has been told and the model is unchanged.
namespace veldra {

// --- Enabling rules ------------------------------------------------------------------------------------------------
bool CanEditModel(const CTarnDoc& document);       ///< not read-only
bool CanMoveVertices(const CTarnDoc& document);    ///< and there are some: translate, rotate, mirror, merge
bool CanResize(const CTarnDoc& document);          ///< and the model has an extent
bool CanAddFace(const CTarnDoc& document);         ///< 3 vertices and a texture
bool CanReplaceTexture(const CTarnDoc& document);  ///< a texture

// False when refused.
bool Resize(CTarnDoc& document, const SResizeInput& input);
bool Translate(CTarnDoc& document, const STranslateInput& input);
bool Rotate(CTarnDoc& document, const SRotateInput& input);
bool Mirror(CTarnDoc& document, const SMirrorInput& input);

/// True when there is a texture for a new face, else the user is told to load one: to ask before the dialog.
bool CheckTextureLoaded(CTarnDoc& document);
// What was added is the last vertex or face. No state is kept: it is easily deleted again, and states before each would
// soon push out those that matter.
bool AddFace(CTarnDoc& document, const SAddFaceInput& input);
bool AddVertex(CTarnDoc& document, const SAddVertexInput& input);

/// Returns how many vertices were merged away; -1 when refused, or stopped by the user.
int32_t MergeCloseVertices(CTarnDoc& document, const SMergeInput& input);

/// Asks for a model file and inserts it.
void InsertBin(CTarnDoc& document);
/// Appends what the model file PATH holds. False also when the user stopped it.
bool InsertBinFile(CTarnDoc& document, const std::string& path);
/// Appends OTHER, which is empty afterwards; NAME is what a message calls it.
bool InsertModel(CTarnDoc& document, CBinModel& other, const std::string& name);

/// The texture entry of the RAW file PATH: the one that the model has under its name, else a new one. Null when it
/// cannot be loaded, which the user has been told.
CBinTexture* LoadTexture(CTarnDoc& document, const std::string& path);
/// The same of one that may be in an archive.
CBinTexture* LoadTexture(CTarnDoc& document, const SCatalogTexture& texture);
/// All faces of one texture entry get that of another RAW file, and the old entry goes.
bool ReplaceTexture(CTarnDoc& document, const SReplaceTextureInput& input);

}  // namespace veldra

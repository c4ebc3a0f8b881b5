#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "editing/editcursor.h"

/// The commands on textures and texture coordinates. Each does nothing where its enabling rule forbids it, and says in
/// the status bar what it has done. Those that change more than a step of an offset keep the state before as one of the
/// earlier states.
///
/// Texture coordinates stay within 0 to 1. One that an operation brings to within a thousandth of a texel of the face's
/// texture is put on that texel: loading takes the whole texels of what was saved, and would lose one otherwise.
namespace veldra {

// --- Enabling rules ------------------------------------------------------------------------------------------------
/// The current vertex is a corner of the current face, which has a texture.
bool CanOffsetCorner(const CEditCursor& cursor);
bool CanNormalizeTexture(const CEditCursor& cursor);  ///< a face has a texture
bool CanMapTexture(const CEditCursor& cursor);        ///< the current face has a texture
bool CanDefineAnimation(const CEditCursor& cursor);

// --- Coordinates ---------------------------------------------------------------------------------------------------
enum class ETextureAxis { kU, kV };

/// COORD as FACE gets it: within 0 to 1, and on the texel that it is next to.
STexCoord OnTexel(const CBinFace& face, const STexCoord& coord);

/// The part of a texture that faces show.
struct STextureArea {
  STexCoord min;
  STexCoord max;
};
/// FACES is not empty.
STextureArea AreaOf(const CBinModel& model, const std::vector<int32_t>& faces);

// On FacesToEdit (facecommands.h). Those of one texture are one piece: the part of the texture that they show together
// stays, and the picture on them is mirrored, or turned by 90 degrees, within it. With s and t as the coordinates
// within that part, 0 to 1: a flip makes s to 1 - s (X) or t to 1 - t (Y), and a turn (s, t) to (1 - t, s), clockwise
// for who looks at the texture. Two flips, and four turns, give the old coordinates. A piece that has no width or no
// height is not turned.
void FlipTexture(CEditCursor& cursor, ETextureAxis axis);
void RotateTexture(CEditCursor& cursor);

/// The current corner by the setting OFFSETSTEP, texels of the face's texture; it stops at 0 and 1.
void OffsetCorner(CEditCursor& cursor, ETextureAxis axis, bool forward);

/// The corner coordinates of the current face, as many as it has corners.
void SetCornerCoords(CEditCursor& cursor, const std::vector<STexCoord>& coords);

/// What trying out corner coordinates changes.
struct SCornerCoords {
  std::vector<STexCoord> coords;
  bool is_modified = false;  ///< the document
};
/// Of the current face; there is one.
SCornerCoords CornerCoordsOf(const CEditCursor& cursor);
/// Exactly as they were.
void RestoreCornerCoords(CEditCursor& cursor, const SCornerCoords& old);

/// The faces that use ENTRY, ascending.
std::vector<int32_t> FacesOfTexture(const CBinModel& model, const CBinTexture& entry);
/// The texture coordinates of all faces that use ENTRY are stretched and moved alike, so that together they cover it
/// from 0 to 1 in u and in v. A direction in which they have no extent stays.
void NormalizeTexture(CEditCursor& cursor, const CBinTexture& entry);

// --- Textures ------------------------------------------------------------------------------------------------------
/// Asks for RAW files, each of which becomes a texture entry.
void LoadTextures(CTarnDoc& document);

/// What the animation dialog asks.
struct SAnimationInput {
  std::string name;
  std::vector<CBinTexture::SFrame> frames;
  double rate = 10.0;  ///< frames per second
};
/// The range of a rate: the file holds 65536 over it, truncated, in a word.
inline constexpr double kSmallestRate = 0.001;
inline constexpr double kLargestRate = 65536.0;

/// "NEWANIM%d" with the first free number from 1.
std::string NewAnimationName(const CBinModel& model);
SAnimationInput InputOf(const CBinTexture& animation);
/// What is wrong with INPUT, or "". EDITED: the animation that it will replace; null for a new one.
std::string InputFault(const CBinModel& model, const SAnimationInput& input, const CBinTexture* edited);
/// Makes a new animation, or lets INPUT take the place of EDITED in its faces. INPUT has no fault. Null when the
/// document is read-only.
CBinTexture* DefineAnimation(CTarnDoc& document, const SAnimationInput& input, CBinTexture* edited);
/// Refused with the model's message while a face uses it; false then.
bool DeleteAnimation(CTarnDoc& document, CBinTexture& animation);
/// Asks for RAW files, each of which is a frame in the order of the answer. They become texture entries of the model as
/// well; the first that cannot be loaded, which the user has been told, ends it.
std::vector<CBinTexture::SFrame> AskFrames(CTarnDoc& document);

}  // namespace veldra

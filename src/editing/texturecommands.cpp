#include "editing/texturecommands.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

#include "editing/facecommands.h"
#include "editing/modelcommands.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// In texels.
constexpr double kSnap = 1e-3;

double& Along(STexCoord& coord, ETextureAxis axis) {
  return axis == ETextureAxis::kU ? coord.u : coord.v;
}

double Clean(double value, double texels) {
  const double nearest = std::round(value * texels);
  const double clean = std::abs(value * texels - nearest) <= kSnap ? nearest / texels : value;
  return std::clamp(clean, 0.0, 1.0);
}

/// From 0 to 1 across FACE's texture.
double TexelsOf(const CBinFace& face) {
  return face.Texture() == nullptr ? 1.0 : static_cast<double>(face.Texture()->Width() - 1);
}

void SetClean(CBinFace& face, int corner, const STexCoord& coord) {
  face.SetTexCoord(corner, OnTexel(face, coord));
}

using Change = std::function<STexCoord(const STexCoord&)>;

void ChangeFaces(CBinModel& model, const std::vector<int32_t>& faces, const Change& change) {
  for (const int32_t index : faces) {
    CBinFace& face = model.Face(index);
    for (int k = 0; k < face.CornerCount(); ++k)
      SetClean(face, k, change(face.TexCoord(k)));
  }
}

/// Each piece of FacesToEdit by what MAKE makes of the part of the texture that it shows.
void ChangePieces(CEditCursor& cursor, const char* command, const std::function<Change(const STextureArea&)>& make) {
  if (!CanEditFaces(cursor)) return;
  CBinModel& model = cursor.Document().Model();
  cursor.Document().KeepState(command);
  std::map<const CBinTexture*, std::vector<int32_t>> pieces;
  for (const int32_t index : FacesToEdit(cursor))
    pieces[model.Face(index).Texture()].push_back(index);
  for (const auto& [texture, faces] : pieces)
    ChangeFaces(model, faces, make(AreaOf(model, faces)));
  model.ReportFacesChanged();
  cursor.Document().Say(std::string("Done: ") + command);
}

/// 0 to 1 within LOW to HIGH; a value between them that has no extent stays.
double Stretched(double value, double low, double high) {
  return high > low ? (value - low) / (high - low) : value;
}

/// The entries of the files that the user picked, up to the first that cannot be loaded.
std::vector<CBinTexture*> AskTextures(CTarnDoc& document, const char* title) {
  std::vector<CBinTexture*> entries;
  if (!CanEditModel(document)) return entries;
  SFilePrompt prompt;
  prompt.title = title;
  prompt.filters = {{"MTM Texture *.raw", "*.raw"}};
  prompt.directory = document.Settings().art_dir;
  const std::optional<SOpenFiles> files = document.Services().questions.AskOpenFiles(prompt);
  for (const std::string& path : files ? files->paths : std::vector<std::string>()) {
    CBinTexture* const entry = LoadTexture(document, path);
    if (entry == nullptr) break;
    entries.push_back(entry);
  }
  return entries;
}

}  // namespace

bool CanOffsetCorner(const CEditCursor& cursor) {
  return CanEditFace(cursor) && cursor.Corner() >= 0 && cursor.FaceObject()->Texture() != nullptr;
}

bool CanNormalizeTexture(const CEditCursor& cursor) {
  const CBinModel& model = cursor.Model();
  if (cursor.Document().IsReadOnly()) return false;
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    if (model.Texture(i).UseCount() > 0) return true;
  return false;
}

bool CanMapTexture(const CEditCursor& cursor) {
  return CanEditFace(cursor) && cursor.FaceObject()->Texture() != nullptr;
}

bool CanDefineAnimation(const CEditCursor& cursor) {
  return !cursor.Document().IsReadOnly();
}

STexCoord OnTexel(const CBinFace& face, const STexCoord& coord) {
  const double texels = TexelsOf(face);
  return {Clean(coord.u, texels), Clean(coord.v, texels)};
}

STextureArea AreaOf(const CBinModel& model, const std::vector<int32_t>& faces) {
  const STexCoord first = model.Face(faces.front()).TexCoord(0);
  STextureArea area = {first, first};
  for (const int32_t index : faces) {
    const CBinFace& face = model.Face(index);
    for (int k = 0; k < face.CornerCount(); ++k) {
      const STexCoord& coord = face.TexCoord(k);
      area.min = {std::min(area.min.u, coord.u), std::min(area.min.v, coord.v)};
      area.max = {std::max(area.max.u, coord.u), std::max(area.max.v, coord.v)};
    }
  }
  return area;
}

void FlipTexture(CEditCursor& cursor, ETextureAxis axis) {
  const char* const command = axis == ETextureAxis::kU ? "Flip Texture X" : "Flip Texture Y";
  ChangePieces(cursor, command, [axis](const STextureArea& area) -> Change {
    STexCoord sum = {area.min.u + area.max.u, area.min.v + area.max.v};
    return [=, whole = Along(sum, axis)](STexCoord coord) {
      Along(coord, axis) = whole - Along(coord, axis);
      return coord;
    };
  });
}

void RotateTexture(CEditCursor& cursor) {
  ChangePieces(cursor, "Rotate Texture", [](const STextureArea& area) -> Change {
    const double width = area.max.u - area.min.u;
    const double height = area.max.v - area.min.v;
    if (width <= 0.0 || height <= 0.0) return [](const STexCoord& coord) { return coord; };
    return [=](const STexCoord& coord) -> STexCoord {
      const double s = (coord.u - area.min.u) / width;
      const double t = (coord.v - area.min.v) / height;
      return {area.min.u + (1.0 - t) * width, area.min.v + s * height};
    };
  });
}

void OffsetCorner(CEditCursor& cursor, ETextureAxis axis, bool forward) {
  if (!CanOffsetCorner(cursor)) return;
  CBinFace& face = *cursor.FaceObject();
  const CStep one_step(cursor.Document(), "Offset Corner");
  cursor.Document().Steps().Join(Format("offset corner %d of face %d", cursor.Corner(), cursor.Face()));
  const double step = cursor.Document().Settings().offset_step / TexelsOf(face);
  STexCoord coord = face.TexCoord(cursor.Corner());
  Along(coord, axis) += forward ? step : -step;
  SetClean(face, cursor.Corner(), coord);
  cursor.Document().Model().ReportFacesChanged();
}

void SetCornerCoords(CEditCursor& cursor, const std::vector<STexCoord>& coords) {
  if (!CanEditFace(cursor)) return;
  CBinFace& face = *cursor.FaceObject();
  for (int k = 0; k < face.CornerCount(); ++k)
    SetClean(face, k, coords[static_cast<size_t>(k)]);
  cursor.Document().Model().ReportFacesChanged();
}

SCornerCoords CornerCoordsOf(const CEditCursor& cursor) {
  const CBinFace& face = *cursor.FaceObject();
  SCornerCoords coords = {{}, cursor.Document().IsModified()};
  for (int k = 0; k < face.CornerCount(); ++k)
    coords.coords.push_back(face.TexCoord(k));
  return coords;
}

void RestoreCornerCoords(CEditCursor& cursor, const SCornerCoords& old) {
  if (!CanEditFace(cursor)) return;
  for (size_t k = 0; k < old.coords.size(); ++k)
    cursor.FaceObject()->SetTexCoord(static_cast<int>(k), old.coords[k]);
  cursor.Document().Model().ReportFacesChanged();
  cursor.Document().SetModified(old.is_modified);
}

std::vector<int32_t> FacesOfTexture(const CBinModel& model, const CBinTexture& entry) {
  std::vector<int32_t> faces;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    if (model.Face(i).Texture() == &entry && !model.Face(i).IsHidden()) faces.push_back(i);
  return faces;
}

void NormalizeTexture(CEditCursor& cursor, const CBinTexture& entry) {
  CBinModel& model = cursor.Document().Model();
  const std::vector<int32_t> faces = FacesOfTexture(model, entry);
  if (cursor.Document().IsReadOnly() || faces.empty()) return;
  cursor.Document().KeepState("Normalize Texture");
  const STextureArea area = AreaOf(model, faces);
  ChangeFaces(model, faces, [&](const STexCoord& coord) -> STexCoord {
    return {Stretched(coord.u, area.min.u, area.max.u), Stretched(coord.v, area.min.v, area.max.v)};
  });
  model.ReportFacesChanged();
  cursor.Document().Say("Normalized " + Counted(static_cast<int64_t>(faces.size()), "face", "faces"));
}

void LoadTextures(CTarnDoc& document) {
  AskTextures(document, "Load Texture");
}

std::string NewAnimationName(const CBinModel& model) {
  for (int number = 1;; ++number) {
    std::string name = Format("NEWANIM%d", number);
    if (model.FindTexture(name, ETextureKind::kAnimated) == nullptr) return name;
  }
}

SAnimationInput InputOf(const CBinTexture& animation) {
  return {animation.Name(), animation.Frames(), animation.Rate()};
}

std::string InputFault(const CBinModel& model, const SAnimationInput& input, const CBinTexture* edited) {
  if (Trim(input.name).empty()) return "Please enter a name.";
  const CBinTexture* const namesake = model.FindTexture(input.name, ETextureKind::kAnimated);
  if (namesake != nullptr && namesake != edited)
    return "Specified name is already in use.\nPlease enter a different name.";
  if (input.frames.empty()) return "Animation must have at least 1 frame.";
  if (!(input.rate >= kSmallestRate && input.rate <= kLargestRate))
    return Format("The rate must lie between %g and %g frames per second.", kSmallestRate, kLargestRate);
  return "";
}

CBinTexture* DefineAnimation(CTarnDoc& document, const SAnimationInput& input, CBinTexture* edited) {
  CBinModel& model = document.Model();
  if (document.IsReadOnly() || !InputFault(model, input, edited).empty()) return nullptr;
  document.KeepState("Define Animation");
  const CBinModel::CBusy all_at_once(model);
  CBinTexture& entry = model.AddTexture(std::make_unique<CBinTexture>(model, input.name, input.frames, input.rate));
  if (edited == nullptr) return &entry;
  for (const int32_t face : FacesOfTexture(model, *edited))
    model.SetFaceTexture(face, &entry);
  model.DeleteTexture(*edited, document.Services().questions);
  return &entry;
}

bool DeleteAnimation(CTarnDoc& document, CBinTexture& animation) {
  if (document.IsReadOnly()) return false;
  if (animation.UseCount() == 0) document.KeepState("Delete Animation");
  return document.Model().DeleteTexture(animation, document.Services().questions);
}

std::vector<CBinTexture::SFrame> AskFrames(CTarnDoc& document) {
  std::vector<CBinTexture::SFrame> frames;
  for (const CBinTexture* const entry : AskTextures(document, "Add Frames"))
    frames.push_back(entry->Frames().front());
  return frames;
}

}  // namespace veldra

#include "editing/modelcommands.h"

#include <utility>

#include "document/statebefore.h"
#include "model/appendmodel.h"
#include "model/binfile.h"
#include "model/texturenames.h"
#include "packing/modeltextures.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/texturestore.h"

namespace veldra {

namespace {

/// Always false when FAULT says something, for the caller to pass on.
bool IsWithout(CTarnDoc& document, const std::string& fault) {
  return fault.empty() || document.ShowError(fault);
}

/// "Moved 79 vertices", when DONE.
bool Said(const CTarnDoc& document, bool done, const char* what, const SScope& scope) {
  const auto count = static_cast<int32_t>(VerticesInScope(document.Model(), scope).size());
  if (done) document.Say(std::string(what) + " " + Counted(count, "vertex", "vertices"));
  return done;
}

/// INPUT can be carried out, which the user has been told of otherwise.
template <typename Input>
bool IsPossible(CTarnDoc& document, const Input& input) {
  const CBinModel& model = document.Model();
  return CanMoveVertices(document) && IsWithout(document, ScopeFault(model, input.scope)) &&
         IsWithout(document, PivotFault(model, input.pivot));
}

/// What would keep MODEL's textures from being saved; "" for nothing.
std::string UnsavableName(const CBinModel& model) {
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& entry = model.Texture(i);
    const bool is_plain = entry.Kind() == ETextureKind::kPlain;
    if (std::string fault = is_plain ? TextureNameFault(entry.Name()) : ""; !fault.empty()) return fault;
  }
  return NameFault(model);
}

/// The image of the RAW file PATH and the name of its entry; null when the user has been told what is wrong.
const STextureImage* ImageForEntry(CTarnDoc& document, const std::string& path, std::string& name) {
  name = TextureNameOf(path);
  if (const std::string fault = TextureNameFault(name); !fault.empty()) {
    document.ShowError(fault, path);
    return nullptr;
  }
  if (!IsFile(path)) {
    document.ShowError(Format("\"%s\" could not be opened.", path.c_str()), "There is no such file.");
    return nullptr;
  }
  return document.Services().textures.GetTexture(path);
}

/// The model's entry NAME, a new one where it has none. Null, the user told, where that is another texture.
CBinTexture* EntryFor(CTarnDoc& document, const std::string& name, const STextureImage& image) {
  CBinModel& model = document.Model();
  CBinTexture* const own = model.FindTexture(name, ETextureKind::kPlain);
  if (own == nullptr) {
    document.Say("Loaded " + name);
    return &model.AddTexture(std::make_unique<CBinTexture>(model, name, &image));
  }
  if (own->Image() == &image) return own;
  document.ShowError(
      Format("The model has a texture named \"%s\" already.\nReplace it to use the other file of that name.",
             name.c_str()),
      image.path);
  return nullptr;
}

}  // namespace

bool CanEditModel(const CTarnDoc& document) {
  return !document.IsReadOnly();
}

bool CanMoveVertices(const CTarnDoc& document) {
  return document.CanCenter();
}

bool CanResize(const CTarnDoc& document) {
  const SBounds& bounds = document.Model().Bounds();
  const bool is_extended = bounds.max.x > bounds.min.x || bounds.max.y > bounds.min.y || bounds.max.z > bounds.min.z;
  return CanMoveVertices(document) && is_extended;
}

bool CanAddFace(const CTarnDoc& document) {
  const CBinModel& model = document.Model();
  return CanEditModel(document) && model.VertexCount() > 2 && model.TextureCount() > 0;
}

bool CanReplaceTexture(const CTarnDoc& document) {
  return CanEditModel(document) && document.Model().TextureCount() > 0;
}

// --- Positions -------------------------------------------------------------------------------------------------------

bool Resize(CTarnDoc& document, const SResizeInput& input) {
  CBinModel& model = document.Model();
  // The rule for the menu leaves out models without extent; whoever asks for it all the same, as a script, gets it.
  if (!IsPossible(document, input)) return false;
  const std::vector<int32_t> selection = SelectionOf(model, input.scope);
  const SScope scope{input.scope, selection};
  const Vector3 pivot = PivotPoint(model, VerticesInScope(model, scope), input.pivot);
  const CStateBefore before(document, "Resize");
  return Said(document, IsWithout(document, Resize(model, scope, input.x, input.y, input.z, pivot)), "Resized", scope);
}

bool Translate(CTarnDoc& document, const STranslateInput& input) {
  CBinModel& model = document.Model();
  if (!CanMoveVertices(document) || !IsWithout(document, ScopeFault(model, input.scope))) return false;
  const std::vector<int32_t> selection = SelectionOf(model, input.scope);
  const SScope scope{input.scope, selection};
  const CStateBefore before(document, "Translate");
  Translate(model, scope, input.x, input.y, input.z);
  return Said(document, true, "Moved", scope);
}

bool Rotate(CTarnDoc& document, const SRotateInput& input) {
  CBinModel& model = document.Model();
  if (!IsPossible(document, input)) return false;
  if (input.angle == 0.0) return true;
  const std::vector<int32_t> selection = SelectionOf(model, input.scope);
  const SScope scope{input.scope, selection};
  const Vector3 pivot = PivotPoint(model, VerticesInScope(model, scope), input.pivot);
  const CStateBefore before(document, "Rotate");
  const GeometryFault fault = Rotate(model, scope, input.axis, input.angle, input.radians, pivot);
  return Said(document, IsWithout(document, fault), "Rotated", scope);
}

bool Mirror(CTarnDoc& document, const SMirrorInput& input) {
  CBinModel& model = document.Model();
  if (!IsPossible(document, input)) return false;
  const std::vector<int32_t> selection = SelectionOf(model, input.scope);
  const SScope scope{input.scope, selection};
  const Vector3 pivot = PivotPoint(model, VerticesInScope(model, scope), input.pivot);
  const CStateBefore before(document, "Mirror");
  const CBinModel::CBusy one_change(model);
  const std::pair<bool, EAxis> axes[] = {{input.x, EAxis::kX}, {input.y, EAxis::kY}, {input.z, EAxis::kZ}};
  for (const auto& [is_mirrored, axis] : axes)
    if (is_mirrored) Mirror(model, scope, axis, pivot);
  return Said(document, true, "Mirrored", scope);
}

// --- Vertices and faces ----------------------------------------------------------------------------------------------

bool AddVertex(CTarnDoc& document, const SAddVertexInput& input) {
  if (!CanEditModel(document)) return false;
  document.Model().AddVertex(input.position);
  document.Say(Format("Added vertex %d", document.Model().VertexCount() - 1));
  return true;
}

bool CheckTextureLoaded(CTarnDoc& document) {
  if (document.Model().TextureCount() > 0) return true;
  document.Services().questions.Message({.text = "No texture loaded!\nLoad texture first!"});
  return false;
}

bool AddFace(CTarnDoc& document, const SAddFaceInput& input) {
  // Where the whole texture comes to lie on the face.
  constexpr STexCoord kWhole[] = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
  CBinModel& model = document.Model();
  if (!CanEditModel(document) || !CheckTextureLoaded(document) || !IsWithout(document, InputFault(model, input)))
    return false;
  std::vector<CBinVertex*> corners;
  for (const int32_t index : input.corners)
    if (index >= 0) corners.push_back(&model.Vertex(index));
  auto face = std::make_unique<CBinFace>(model);
  face->SetCorners(corners);
  face->SetType(input.type);
  if (input.texture >= 0) face->SetTexture(&model.Texture(input.texture));
  for (int k = 0; k < face->CornerCount(); ++k)
    face->SetTexCoord(k, kWhole[k]);
  CBinModel::Faces faces;
  faces.push_back(std::move(face));
  model.InsertFaces(std::move(faces), model.FaceCount());
  document.Say(Format("Added face %d", model.FaceCount() - 1));
  return true;
}

int32_t MergeCloseVertices(CTarnDoc& document, const SMergeInput& input) {
  if (!CanMoveVertices(document) || !IsWithout(document, InputFault(document.Model(), input))) return -1;
  CStateBefore before(document, "Merge close vertices", true);
  const int32_t merged = MergeVertices(document.Model(), input.threshold, &before.Progress());
  if (merged >= 0) document.Say("Merged " + Counted(merged, "vertex", "vertices"));
  return merged;
}

// --- Other files -----------------------------------------------------------------------------------------------------

void InsertBin(CTarnDoc& document) {
  if (!CanEditModel(document)) return;
  const SFilePrompt prompt = {.title = "Insert BIN File",
                              .filters = {{"MTM Model *.bin", "*.bin"}},
                              .directory = document.ModelDirectory(),
                              .name = "",
                              .default_extension = "bin"};
  if (const auto path = document.Services().questions.AskOpenFile(prompt)) InsertBinFile(document, *path);
}

bool InsertBinFile(CTarnDoc& document, const std::string& path) {
  CBinModel other;
  return CanEditModel(document) && document.Load(other, path, nullptr) && InsertModel(document, other, path);
}

bool InsertModel(CTarnDoc& document, CBinModel& other, const std::string& name) {
  if (!CanEditModel(document)) return false;
  if (const std::string fault = UnsavableName(other); !fault.empty())
    return document.ShowError(Format("\"%s\" could not be inserted.", name.c_str()), fault);
  const std::string inserted =
      Counted(other.VertexCount(), "vertex", "vertices") + " and " + Counted(other.FaceCount(), "face", "faces");
  const CStateBefore before(document, "Insert BIN");
  if (!AppendModel(document.Model(), other, true)) {
    return document.ShowError(Format("\"%s\" could not be inserted: the models are too large together.", name.c_str()));
  }
  document.Say("Inserted " + inserted);
  return true;
}

CBinTexture* LoadTexture(CTarnDoc& document, const std::string& path) {
  if (!CanEditModel(document)) return nullptr;
  std::string name;
  const STextureImage* const image = ImageForEntry(document, path, name);
  return image == nullptr ? nullptr : EntryFor(document, name, *image);
}

CBinTexture* LoadTexture(CTarnDoc& document, const SCatalogTexture& texture) {
  if (!texture.raw.bytes.length) return LoadTexture(document, texture.raw.bytes.path);
  if (!CanEditModel(document)) return nullptr;
  const std::string name = TextureNameOf(texture.raw.name);
  if (const std::string fault = TextureNameFault(name); !fault.empty()) {
    document.ShowError(fault, CTexturePlaces::PathOf(texture.raw));
    return nullptr;
  }
  const STextureImage* const image = CTexturePlaces::Load(texture.raw, texture.colors, document.Services().textures);
  return image == nullptr ? nullptr : EntryFor(document, name, *image);
}

bool ReplaceTexture(CTarnDoc& document, const SReplaceTextureInput& input) {
  CBinModel& model = document.Model();
  if (!CanReplaceTexture(document) || !IsWithout(document, InputFault(model, input))) return false;
  std::string name;
  const STextureImage* const image = ImageForEntry(document, input.path, name);
  if (image == nullptr) return false;
  CBinTexture& old = model.Texture(input.texture);
  CBinTexture* own = model.FindTexture(name, ETextureKind::kPlain);
  if (own == &old && old.Image() == image) return true;
  const CStateBefore before(document, "Replace texture");
  const CBinModel::CBusy one_change(model);
  document.Say("Replaced " + old.Name() + " by " + name);
  if (own == nullptr || own == &old) own = &model.AddTexture(std::make_unique<CBinTexture>(model, name, image));
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    if (model.Face(i).Texture() == &old) model.SetFaceTexture(i, own);
  return model.DeleteTexture(old, document.Services().questions);
}

}  // namespace veldra

#include <utility>

#include "document/tarn2doc.h"
#include "model/appendmodel.h"
#include "model/binformat.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/texturestore.h"

// The commands on the whole model.

namespace veldra {

/// While a command changes the model: a wait cursor, and the state before, which is kept at the end unless the model is
/// still the same.
class CTarnDoc::CStateBefore {
 public:
  CStateBefore(CTarnDoc& document, const char* command, bool cancellable = false)
      : document_(document),
        work_(document.services_.questions.BeginWork(command, cancellable)),
        key_(document.StatesKey()),
        packed_(document.PackState(command)),
        is_file_(!document.modified_),
        revision_(document.model_.Revision()) {}
  ~CStateBefore() {
    if (document_.model_.Revision() != revision_) document_.KeepPacked(key_, packed_, is_file_);
  }
  CStateBefore(const CStateBefore&) = delete;
  CStateBefore& operator=(const CStateBefore&) = delete;

  CProgress& Progress() { return *work_; }

 private:
  CTarnDoc& document_;
  std::unique_ptr<CProgress> work_;
  std::string key_;
  std::vector<uint8_t> packed_;
  bool is_file_;
  uint64_t revision_;
};

// --- Positions -------------------------------------------------------------------------------------------------------

void CTarnDoc::CenterAxes(std::initializer_list<EAxis> axes, const char* command) {
  const CStateBefore before(*this, command);
  for (const EAxis axis : axes)
    Center(model_, axis);
}

void CTarnDoc::CenterX() {
  if (CanCenter()) CenterAxes({EAxis::kX}, "Center X");
}

void CTarnDoc::CenterY() {
  if (CanCenter()) CenterAxes({EAxis::kY}, "Center Y");
}

void CTarnDoc::CenterZ() {
  if (CanCenter()) CenterAxes({EAxis::kZ}, "Center Z");
}

void CTarnDoc::CenterAll() {
  if (CanCenter()) CenterAxes({EAxis::kX, EAxis::kY, EAxis::kZ}, "Center All");
}

bool CTarnDoc::CanResize() const {
  const SBounds& bounds = model_.Bounds();
  const bool is_extended = bounds.max.x > bounds.min.x || bounds.max.y > bounds.min.y || bounds.max.z > bounds.min.z;
  return CanCenter() && is_extended;
}

/// Always false when FAULT says something, for the caller to pass on.
bool CTarnDoc::IsWithout(const std::string& fault) {
  return fault.empty() || ShowError(fault);
}

bool CTarnDoc::Resize(const SResizeInput& input) {
  // The rule for the menu leaves out models without extent; whoever asks for it all the same, as a script, gets it.
  if (!CanCenter() || !IsWithout(ScopeFault(model_, input.scope))) return false;
  const std::vector<int32_t> selection = SelectionOf(model_, input.scope);
  const CStateBefore before(*this, "Resize");
  return IsWithout(veldra::Resize(model_, {input.scope, selection}, input.x, input.y, input.z));
}

bool CTarnDoc::Translate(const STranslateInput& input) {
  if (!CanTranslate() || !IsWithout(ScopeFault(model_, input.scope))) return false;
  const std::vector<int32_t> selection = SelectionOf(model_, input.scope);
  const CStateBefore before(*this, "Translate");
  veldra::Translate(model_, {input.scope, selection}, input.x, input.y, input.z);
  return true;
}

bool CTarnDoc::Rotate(const SRotateInput& input) {
  if (!CanRotate() || !IsWithout(ScopeFault(model_, input.scope))) return false;
  if (input.angle == 0.0) return true;
  const std::vector<int32_t> selection = SelectionOf(model_, input.scope);
  const CStateBefore before(*this, "Rotate");
  return IsWithout(veldra::Rotate(model_, {input.scope, selection}, input.axis, input.angle, input.radians));
}

bool CTarnDoc::Mirror(const SMirrorInput& input) {
  if (!CanMirror() || !IsWithout(ScopeFault(model_, input.scope))) return false;
  const std::vector<int32_t> selection = SelectionOf(model_, input.scope);
  const CStateBefore before(*this, "Mirror");
  const CBinModel::CBusy one_change(model_);
  const std::pair<bool, EAxis> axes[] = {{input.x, EAxis::kX}, {input.y, EAxis::kY}, {input.z, EAxis::kZ}};
  for (const auto& [is_mirrored, axis] : axes)
    if (is_mirrored) veldra::Mirror(model_, {input.scope, selection}, axis);
  return true;
}

// --- Vertices and faces ----------------------------------------------------------------------------------------------

// What was added is easily deleted again: keeping the state before each would soon push out the states that matter.

bool CTarnDoc::AddVertex(const SAddVertexInput& input) {
  if (!CanAddVertex()) return false;
  model_.AddVertex(input.position);
  return true;
}

bool CTarnDoc::CheckTextureLoaded() {
  if (model_.TextureCount() > 0) return true;
  services_.questions.Message({.text = "No texture loaded!\nLoad texture first!"});
  return false;
}

bool CTarnDoc::AddFace(const SAddFaceInput& input) {
  // Where the whole texture comes to lie on the face.
  constexpr STexCoord kWhole[] = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
  if (read_only_ || !CheckTextureLoaded() || !IsWithout(InputFault(model_, input))) return false;
  std::vector<CBinVertex*> corners;
  for (const int32_t index : input.corners)
    if (index >= 0) corners.push_back(&model_.Vertex(index));
  auto face = std::make_unique<CBinFace>(model_);
  face->SetCorners(corners);
  face->SetType(input.type);
  if (input.texture >= 0) face->SetTexture(&model_.Texture(input.texture));
  for (int k = 0; k < face->CornerCount(); ++k)
    face->SetTexCoord(k, kWhole[k]);
  CBinModel::Faces faces;
  faces.push_back(std::move(face));
  model_.InsertFaces(std::move(faces), model_.FaceCount());
  return true;
}

int32_t CTarnDoc::DeleteAllUnused() {
  return CanDeleteAllUnused() ? DeleteUnused() : 0;
}

int32_t CTarnDoc::DeleteUnused() {
  const std::vector<int32_t> unused = model_.UnusedVertices();
  if (unused.empty()) return 0;
  const CStateBefore before(*this, "Delete All Unused");
  model_.DeleteVertices(unused, services_.questions);
  return static_cast<int32_t>(unused.size());
}

int32_t CTarnDoc::MergeCloseVertices(const SMergeInput& input) {
  if (!CanMergeCloseVertices() || !IsWithout(InputFault(model_, input))) return -1;
  CStateBefore before(*this, "Merge close vertices", true);
  return MergeVertices(model_, input.threshold, &before.Progress());
}

// --- Other files -----------------------------------------------------------------------------------------------------

void CTarnDoc::InsertBin() {
  if (!CanInsertBin()) return;
  const SFilePrompt prompt = {.title = "Insert BIN File",
                              .filters = {{"MTM Model *.bin", "*.bin"}},
                              .directory = ModelDirectory(),
                              .name = "",
                              .default_extension = "bin"};
  if (const auto path = services_.questions.AskOpenFile(prompt)) InsertBinFile(*path);
}

bool CTarnDoc::InsertBinFile(const std::string& path) {
  if (!CanInsertBin()) return false;
  CBinModel other;
  return Load(other, path, nullptr) && InsertModel(other, path);
}

bool CTarnDoc::InsertModel(CBinModel& other, const std::string& name) {
  if (!CanInsertBin()) return false;
  const CStateBefore before(*this, "Insert BIN");
  return AppendModel(model_, other, true) ||
         ShowError(Format("\"%s\" could not be inserted: the models are too large together.", name.c_str()));
}

/// The image of the RAW file PATH and the name of its entry; null when the user has been told what is wrong.
const STextureImage* CTarnDoc::ImageForEntry(const std::string& path, std::string& name) {
  name = UpperCase(ChangeExtension(FileNamePart(path), "RAW"));
  if (name.size() > kTextureNameLength) {
    ShowError(
        Format("The name \"%s\" is too long for a model file: %zu characters fit.", name.c_str(), kTextureNameLength),
        path);
    return nullptr;
  }
  if (!IsFile(path)) {
    ShowError(Format("\"%s\" could not be opened.", path.c_str()), "There is no such file.");
    return nullptr;
  }
  return services_.textures.GetTexture(path);
}

CBinTexture* CTarnDoc::LoadTexture(const std::string& path) {
  if (!CanLoadTexture()) return nullptr;
  std::string name;
  const STextureImage* const image = ImageForEntry(path, name);
  if (image == nullptr) return nullptr;
  CBinTexture* const own = model_.FindTexture(name, ETextureKind::kPlain);
  if (own == nullptr) return &model_.AddTexture(std::make_unique<CBinTexture>(model_, name, image));
  if (own->Image() == image) return own;
  ShowError(Format("The model has a texture named \"%s\" already.\nReplace it to use the other file of that name.",
                   name.c_str()),
            path);
  return nullptr;
}

bool CTarnDoc::ReplaceTexture(const SReplaceTextureInput& input) {
  if (!CanReplaceTexture() || !IsWithout(InputFault(model_, input))) return false;
  std::string name;
  const STextureImage* const image = ImageForEntry(input.path, name);
  if (image == nullptr) return false;
  CBinTexture& old = model_.Texture(input.texture);
  CBinTexture* own = model_.FindTexture(name, ETextureKind::kPlain);
  if (own == &old && old.Image() == image) return true;
  const CStateBefore before(*this, "Replace texture");
  const CBinModel::CBusy one_change(model_);
  if (own == nullptr || own == &old) {
    own = &model_.AddTexture(std::make_unique<CBinTexture>(model_, name, image));
  }
  for (int32_t i = 0; i < model_.FaceCount(); ++i) {
    if (model_.Face(i).Texture() == &old) model_.SetFaceTexture(i, own);
  }
  return model_.DeleteTexture(old, services_.questions);
}

std::string CTarnDoc::ModelDirectory() const {
  return path_.empty() ? services_.settings.bin_dir : DirectoryPart(path_);
}

// --- History ---------------------------------------------------------------------------------------------------------

void CTarnDoc::Undo() {
  if (history_.CanUndo()) history_.Undo();
}

void CTarnDoc::Redo() {
  if (history_.CanRedo()) history_.Redo();
}

}  // namespace veldra

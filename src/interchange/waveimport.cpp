#include "interchange/waveimport.h"

#include <algorithm>
#include <new>

#include "interchange/wavebuilder.h"
#include "interchange/waveparser.h"
#include "model/texturenames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kRemarksText = "\"%s\" was imported, but not all of it.";

/// How FILES say it, and where they do not, as the materials have it.
SMaterialPlan PlanOf(const SWaveMesh& mesh, const SWaveFiles& files, const SImportContext& context, CRemarks& remarks) {
  return files.plan != nullptr ? *files.plan : PlanMaterials(mesh, files.path, files.pictures, context, remarks);
}

void TellRemarks(const SWaveFiles& files, const CRemarks& remarks, CQuestions& questions) {
  if (remarks.Empty()) return;
  questions.Message({.text = Format(kRemarksText, DisplayFileName(files.path).c_str()),
                     .icon = EIcon::kWarning,
                     .details = remarks.Text()});
}

/// One import of a mesh. Textures that it makes are in the store until it fails.
class CWaveImport {
 public:
  CWaveImport(const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options,
              const SImportContext& context, SImportFault& fault)
      : mesh_(mesh), files_(files), options_(options), context_(context), fault_(fault) {}
  ~CWaveImport() {
    for (const SNewTexture& made : plan_.made)
      if (!is_done_) context_.textures.Forget(made.path);
  }
  CWaveImport(const CWaveImport&) = delete;
  CWaveImport& operator=(const CWaveImport&) = delete;

  bool Run(CBinModel& model, SImportOutcome* outcome) {
    if (!Build()) return false;
    if (outcome == nullptr && !WriteTextures()) return false;
    is_done_ = builder_.AppendTo(model, fault_);
    if (is_done_ && outcome != nullptr) *outcome = {cut_faces_, std::move(plan_.made)};
    return is_done_;
  }

 private:
  bool Build();
  bool WriteTextures();

  const SWaveMesh& mesh_;
  const SWaveFiles& files_;
  const SWaveOptions& options_;
  const SImportContext& context_;
  SImportFault& fault_;
  SMaterialPlan plan_;
  size_t cut_faces_ = 0;
  bool is_done_ = false;
  CImportBuilder builder_;
};

bool CWaveImport::Build() {
  if (options_.fit > 0 && mesh_.min == mesh_.max) {
    fault_ = {"it has no extent that could be scaled", false};
    return false;
  }
  CMeshTextures::STexture chosen;
  if (!files_.texture.empty()) {
    chosen = {TextureNameOf(files_.texture), FindImportTexture(files_.texture, files_.path, context_, fault_)};
    if (chosen.image == nullptr) return false;
  }
  CRemarks remarks = mesh_.remarks;
  plan_ = PlanOf(mesh_, files_, context_, remarks);
  CMeshTextures textures(plan_, std::move(chosen), context_);
  {
    CImportProgress progress(context_.questions, files_.path);
    CWaveBuilder builder(mesh_, options_, textures, builder_, remarks);
    if (!builder.Build(progress, fault_)) return false;
    cut_faces_ = builder.CutFaces();
  }
  if (const std::string names = textures.Untextured(); !names.empty()) remarks.Add(names);
  if (cut_faces_ > 0)
    remarks.Add(Counted(static_cast<int64_t>(cut_faces_), "face shows", "faces show") +
                " more than the whole texture: cut off");
  TellRemarks(files_, remarks, context_.questions);
  return true;
}

bool CWaveImport::WriteTextures() {
  SError error;
  if (ReplaceFileSets(FilesOf(plan_.made), &error)) return true;
  fault_ = {"a texture could not be written: " + error.what, false};
  return false;
}

std::string WaveStartFault(std::span<const uint8_t> start, uint64_t) {
  return std::find(start.begin(), start.end(), uint8_t{0}) == start.end() ? ""
                                                                          : "is not a Wavefront file: it is no text";
}

}  // namespace

std::string WaveScaleFault(double scale) {
  return scale > 0 ? "" : "Enter a number above 0.";
}

std::optional<SBounds> WaveBounds(const SWaveMesh& mesh, const SWaveOptions& options) {
  const CWaveTransform transform(mesh, options);
  const auto min = transform(mesh.min);
  const auto max = transform(mesh.max);
  if (!min || !max) return std::nullopt;
  return SBounds{*min, *max};
}

std::optional<SWaveMesh> ReadWavefront(const std::string& path, CQuestions& questions, SImportFault& fault) {
  SError error;
  const auto file = ReadWholeFile(path, &error, kLargestFile, WaveStartFault);
  if (!file) {
    fault = {error.what, false};
    return std::nullopt;
  }
  const auto progress = questions.BeginWork(Format("Reading %s", DisplayFileName(path).c_str()), true);
  return ParseWavefront(file->Text(), progress.get(), fault);
}

size_t CountCutFaces(const SWaveMesh& mesh) {
  size_t count = 0;
  std::vector<STexCoord> coords;
  for (size_t face = 0; face < mesh.FaceCount() && !mesh.corner_coords.empty(); ++face) {
    coords.clear();
    for (size_t corner = mesh.FirstCorner(face); corner < mesh.face_ends[face]; ++corner)
      if (const int32_t coord = mesh.corner_coords[corner]; coord >= 0)
        coords.push_back(mesh.coords[static_cast<size_t>(coord)]);
    if (coords.size() == mesh.face_ends[face] - mesh.FirstCorner(face) && WrapCoords(coords)) ++count;
  }
  return count;
}

std::string VanishedText(const SWavePoint& size, const SBounds& bounds) {
  const auto& [low, high] = bounds;
  const bool is_flat[] = {low.x == high.x, low.y == high.y, low.z == high.z};
  std::string axes;
  for (size_t axis = 0; axis < size.size(); ++axis)
    if (size[axis] > 0 && is_flat[axis]) axes += std::string(axes.empty() ? "" : " and ") + "xyz"[axis];
  if (axes.empty()) return "";
  return Format("The mesh is %g x %g x %g units large. In whole units nothing of it is left along ", size[0], size[1],
                size[2]) +
         axes + ".";
}

std::vector<std::vector<SNewFile>> FilesOf(const std::vector<SNewTexture>& textures) {
  std::vector<std::vector<SNewFile>> sets;
  sets.reserve(textures.size());
  for (const SNewTexture& texture : textures)
    sets.push_back(TextureFileSet(texture.path, texture.texels));
  return sets;
}

bool ImportWaveMesh(CBinModel& model, const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options,
                    const SImportContext& context, SImportFault& fault, SImportOutcome* outcome) {
  try {
    return CWaveImport(mesh, files, options, context, fault).Run(model, outcome);
  } catch (const std::bad_alloc&) {
    fault = kNoMemory;
    return false;
  }
}

bool ImportWavefront(CBinModel& model, const SWaveFiles& files, const SWaveOptions& options,
                     const SImportContext& context, SImportFault& fault, SImportOutcome* outcome) {
  const auto mesh = ReadWavefront(files.path, context.questions, fault);
  return mesh && ImportWaveMesh(model, *mesh, files, options, context, fault, outcome);
}

}  // namespace veldra

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

bool Build(const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options, const SImportContext& context,
           CImportBuilder& builder, SImportFault& fault) {
  const STextureImage* const image = FindImportTexture(files.texture, context, fault);
  if (image == nullptr) return false;
  CRemarks remarks = mesh.remarks;
  CWaveTextures textures(mesh, files.path, {TextureNameOf(files.texture), image}, context, remarks);
  {
    CImportProgress progress(context.questions, files.path);
    if (!CWaveBuilder(mesh, options, textures, builder, remarks).Build(progress, fault)) return false;
  }
  if (!remarks.Empty()) {
    context.questions.Message({.text = Format(kRemarksText, DisplayName(FileNamePart(files.path)).c_str()),
                               .icon = EIcon::kWarning,
                               .details = remarks.Text()});
  }
  return true;
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
  const auto progress = questions.BeginWork(Format("Reading %s", DisplayName(FileNamePart(path)).c_str()), true);
  return ParseWavefront(file->Text(), progress.get(), fault);
}

bool ImportWaveMesh(CBinModel& model, const SWaveMesh& mesh, const SWaveFiles& files, const SWaveOptions& options,
                    const SImportContext& context, SImportFault& fault) {
  try {
    CImportBuilder builder(context.face_type);
    return Build(mesh, files, options, context, builder, fault) && builder.AppendTo(model, fault);
  } catch (const std::bad_alloc&) {
    fault = {"there is not enough memory for it", false};
    return false;
  }
}

bool ImportWavefront(CBinModel& model, const SWaveFiles& files, const SWaveOptions& options,
                     const SImportContext& context, SImportFault& fault) {
  const auto mesh = ReadWavefront(files.path, context.questions, fault);
  return mesh && ImportWaveMesh(model, *mesh, files, options, context, fault);
}

}  // namespace veldra

#include "interchange/import3ds.h"

#include <new>
#include <optional>

#include "interchange/3dstudiofile.h"
#include "model/texturenames.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

const SImportFault kStopped = {"", true};

/// The product of two floats is exact as a double, so that what is cut off is the true fraction.
std::optional<int32_t> Scaled(float value, float factor) {
  return TryTruncate(static_cast<double>(value) * static_cast<double>(factor));
}

bool AddVertices(const C3DStudioFile& file, CBinModel& model, SImportFault& fault) {
  const float factor = file.ScaleFactor();
  for (const StudioVertex& vertex : file.Vertices()) {
    const auto x = Scaled(vertex.x, factor);
    const auto y = Scaled(vertex.y, factor);
    const auto z = Scaled(vertex.z, factor);
    if (!x || !y || !z) {
      fault.what = Format("vertex %d: (%g, %g, %g) times %g does not fit into 32 bits", vertex.index,
                          static_cast<double>(vertex.x), static_cast<double>(vertex.y), static_cast<double>(vertex.z),
                          static_cast<double>(factor));
      return false;
    }
    model.AddVertex({*x, *y, *z});
  }
  return true;
}

/// A triangle that has a corner twice is none for the game.
bool IsTriangle(const StudioFace& face) {
  const auto& [a, b, c] = face.vertices;
  return a != b && b != c && c != a;
}

bool AddFaces(const C3DStudioFile& file, CImportBuilder& builder, CBinTexture* texture, uint32_t type,
              CImportProgress& progress) {
  for (const StudioFace& face : file.Faces()) {
    if (!progress.Step(static_cast<uint64_t>(face.index), file.Faces().size())) return false;
    if (IsTriangle(face))
      builder.AddFace(face.vertices, texture, type, kWholeTexture);
    else
      Trace(">> ImportFrom3ds(): face %d has a corner twice\n", face.index);
  }
  return true;
}

bool Build(const C3DStudioFile& file, const std::string& texture, const SImportContext& context,
           CImportBuilder& builder, SImportFault& fault) {
  if (file.Faces().size() > MostFaces(file.Size())) {
    fault.what = TooManyFaces(file.Size());
    return false;
  }
  const STextureImage* const image = FindImportTexture(texture, file.Path(), context, fault);
  if (image == nullptr) return false;
  CImportProgress progress(context.questions, file.Path());
  builder.Model().Reserve(file.Vertices().size(), file.Faces().size());
  if (!AddVertices(file, builder.Model(), fault)) return false;
  CBinTexture& entry = builder.AddTexture(TextureNameOf(texture), *image);
  if (AddFaces(file, builder, &entry, context.face_type, progress)) return true;
  fault = kStopped;
  return false;
}

}  // namespace

bool ImportFrom3ds(CBinModel& model, const C3DStudioFile& file, const std::string& texture,
                   const SImportContext& context, SImportFault& fault) {
  try {
    CImportBuilder builder;
    return Build(file, texture, context, builder, fault) && builder.AppendTo(model, fault);
  } catch (const std::bad_alloc&) {
    fault = kNoMemory;
    return false;
  }
}

bool ImportFrom3ds(CBinModel& model, const std::string& path, const std::string& texture, const SImportContext& context,
                   SImportFault* fault) {
  SImportFault ignored;
  SImportFault& found = fault != nullptr ? *fault : ignored;
  try {
    C3DStudioFile file(path);
    return file.ReadFile(context.questions, &found) && ImportFrom3ds(model, file, texture, context, found);
  } catch (const std::bad_alloc&) {
    found = kNoMemory;
    return false;
  }
}

void ExportTo3ds(const CBinModel&, const std::string&) {}

}  // namespace veldra

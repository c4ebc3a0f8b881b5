#include <algorithm>
#include <cmath>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/import3ds.h"
#include "interchange/meshformats.h"
#include "interchange/waveimport.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

struct SImportOptions {
  std::string file;
  std::string out;
  std::string texture;
  std::string pictures;
  std::optional<uint32_t> face_type;
  bool with_materials = false;
  SWaveOptions wave;

  // Of a 3D Studio file.
  bool WithMaterials() const { return with_materials || !pictures.empty(); }
  bool IsPlain() const { return !WithMaterials() && !texture.empty() && wave.fit == 0; }
};

/// What could be lost without being missed.
void TellVanished(CSession& session, const SWavePoint& size, const CBinModel& model) {
  const std::string text = VanishedText(size, model.Bounds());
  if (text.empty()) return;
  // Two units cannot be cut off at both ends.
  double least = *std::ranges::max_element(size);
  for (const double length : size)
    if (length > 0) least = std::min(least, length);
  const double enough = std::ceil(2 * *std::ranges::max_element(size) / least);
  session.Questions().Message(
      {.text = text + Format(" --fit %.0f keeps it.", std::max(enough, kTruckSize)), .icon = EIcon::kWarning});
}

bool ImportInto(CSession& session, const SImportOptions& options, const std::string& path, CBinModel& model,
                SImportOutcome& outcome, SImportFault& fault) {
  const SMeshFormat& format =
      options.file == kStandardStream ? MeshFormatOfContent(path) : *FindMeshFormat(options.file);
  const bool is_3ds = format.format == EMeshFormat::k3ds;
  const uint32_t face_type = options.face_type.value_or(static_cast<uint32_t>(session.Settings().def_face_type));
  const SImportContext context = {session.Textures(), session.Questions(), session.Settings().art_dir, face_type,
                                  &session.Settings()};
  if (is_3ds && options.IsPlain()) return ImportFrom3ds(model, path, options.texture, context, &fault);
  const auto mesh = ReadMesh(path, format.format, options.WithMaterials(), session.Questions(), fault);
  if (!mesh) return false;
  SWaveOptions wave = options.wave;
  if (is_3ds) wave.scale = format.scale;
  const SWaveFiles files = {path, options.texture, options.pictures};
  if (!ImportWaveMesh(model, *mesh, files, wave, context, fault, &outcome)) return false;
  TellVanished(session, {mesh->max[0] - mesh->min[0], mesh->max[1] - mesh->min[1], mesh->max[2] - mesh->min[2]}, model);
  return true;
}

int Save(CSession& session, const SImportOptions& options, CTarnDoc& document, const SImportOutcome& outcome) {
  for (const SNewTexture& made : outcome.made)
    if (session.CheckWritable(made.path) != kDone) return kFailed;
  CMadeFolder folder;
  if (!outcome.made.empty() && !folder.Make(options.pictures))
    return session.FailToWrite(options.pictures, "There is no such folder.");
  if (!document.CheckWritable(options.out) || !document.Saver().WriteMtm(options.out, FilesOf(outcome.made)))
    return kFailed;
  folder.Keep();
  if (outcome.cut_faces == 0) return kDone;
  return session.Print(Format("Cut off the texture coordinates of %zu faces\n", outcome.cut_faces));
}

int Import(CSession& session, const SImportOptions& options) {
  const std::string path = session.InputPath(options.file);
  if (path.empty()) return kFailed;
  const auto document = session.NewDocument();
  const CQuestions::CAbout about(session.Questions(), options.file);
  SImportFault fault;
  SImportOutcome outcome;
  if (!ImportInto(session, options, path, document->Model(), outcome, fault)) {
    ShowImportFault(options.file, fault, session.Questions());
    return kFailed;
  }
  return Save(session, options, *document, outcome);
}

/// "" or what is wrong.
std::string CheckKind(const SImportOptions& options) {
  if (options.file == kStandardStream) return "";
  const SMeshFormat* const format = FindMeshFormat(options.file);
  if (format == nullptr) return "FILE: \"" + options.file + "\" is no mesh file (" + MeshPatterns() + ")";
  const SWaveOptions& wave = options.wave;
  const bool has_wave_options = wave.scale != 1.0 || wave.swap_yz || wave.center;
  return format->format == EMeshFormat::k3ds && has_wave_options ? "--scale, --swap-yz, --center: not for .3ds files"
                                                                 : "";
}

std::optional<double> ParseScale(const std::string& text) {
  const auto scale = ParseNumber(text);
  return scale && WaveScaleFault(*scale).empty() ? scale : std::nullopt;
}

}  // namespace

SCommandRow ImportCommand() {
  const auto options = std::make_shared<SImportOptions>();
  const char* const wave = "For all but .3ds files";
  const auto parse_type = [](const std::string& text) { return ParseFaceType(text, false); };
  return {
      .name = "import",
      .help = "Make a model of a mesh: .obj, .3ds, .gltf, .glb, .ply or .stl",
      .options = {Argument("FILE", "File to read", options->file), Output("OUT", "Model file to write", options->out),
                  Option("--texture", "RAW", "Texture of the faces whose material gives none", options->texture),
                  Option("--pictures", "DIR", "Make textures of the materials' pictures, in this folder",
                         options->pictures),
                  Option("--fit", "N", "Scale evenly so that the largest dimension becomes N",
                         Parsed(options->wave.fit, ParseScale, "is not a number above 0")),
                  Flag("--materials", "Take the materials and texture coordinates of a .3ds file too",
                       options->with_materials),
                  Option("--face-type", "TYPE", "Type of the faces (default: that of the settings)",
                         Parsed(options->face_type, parse_type, "is not a face type")),
                  InGroup(wave, Option("--scale", "F", "Multiply the coordinates",
                                       Parsed(options->wave.scale, ParseScale, "is not a number above 0"))),
                  InGroup(wave,
                          Flag("--swap-yz", "Exchange y and z; faces still face outwards", options->wave.swap_yz)),
                  InGroup(wave, Flag("--center", "Center on all axes", options->wave.center))},
      .run = [options](CSession& session) { return Import(session, *options); },
      .check = [options] { return CheckKind(*options); }};
}

}  // namespace veldra

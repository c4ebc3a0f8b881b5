#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/import3ds.h"
#include "interchange/studiomesh.h"
#include "interchange/waveimport.h"
#include "platform/files.h"
#include "platform/inputfile.h"
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

enum class EImportKind { kNone, k3ds, kWavefront };

EImportKind KindOf(const std::string& path) {
  const std::string extension = LowerCase(ExtensionPart(path));
  if (extension == "3ds") return EImportKind::k3ds;
  return extension == "obj" ? EImportKind::kWavefront : EImportKind::kNone;
}

/// Of what comes without a name: a 3D Studio file begins with its main chunk's number.
EImportKind KindOfContent(const std::string& path) {
  std::array<uint8_t, 2> start = {};
  CInputFile file;
  const bool is_3ds = file.Open(path) && file.ReadAt(0, start) && start[0] == 'M' && start[1] == 'M';
  return is_3ds ? EImportKind::k3ds : EImportKind::kWavefront;
}

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
  const EImportKind kind = options.file == kStandardStream ? KindOfContent(path) : KindOf(path);
  const bool is_3ds = kind == EImportKind::k3ds;
  const uint32_t face_type = options.face_type.value_or(static_cast<uint32_t>(session.Settings().def_face_type));
  const SImportContext context = {session.Textures(), session.Questions(), session.Settings().art_dir, face_type};
  if (is_3ds && options.IsPlain()) return ImportFrom3ds(model, path, options.texture, context, &fault);
  const auto mesh = is_3ds ? Read3dsMesh(path, options.WithMaterials(), session.Questions(), fault)
                           : ReadWavefront(path, session.Questions(), fault);
  if (!mesh) return false;
  SWaveOptions wave = options.wave;
  if (is_3ds) wave.scale = kStudioScale;
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
  const EImportKind kind = KindOf(options.file);
  if (kind == EImportKind::kNone) return "FILE: \"" + options.file + "\" is neither a .3ds nor an .obj file";
  const SWaveOptions& wave = options.wave;
  const bool has_wave_options = wave.scale != 1.0 || wave.swap_yz || wave.center;
  return kind == EImportKind::k3ds && has_wave_options ? "--scale, --swap-yz, --center: only for .obj files" : "";
}

std::optional<double> ParseScale(const std::string& text) {
  const auto scale = ParseNumber(text);
  return scale && WaveScaleFault(*scale).empty() ? scale : std::nullopt;
}

}  // namespace

SCommandRow ImportCommand() {
  const auto options = std::make_shared<SImportOptions>();
  const char* const wave = "For .obj files";
  const auto parse_type = [](const std::string& text) { return ParseFaceType(text, false); };
  return {
      .name = "import",
      .help = "Make a model of a .3ds or .obj file",
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

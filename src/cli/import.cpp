#include <array>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/import3ds.h"
#include "interchange/waveimport.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

struct SImportOptions {
  std::string file;
  std::string out;
  std::string texture;
  std::optional<uint32_t> face_type;
  SWaveOptions wave;
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

int Import(CSession& session, const SImportOptions& options) {
  const std::string path = session.InputPath(options.file);
  if (path.empty()) return kFailed;
  const EImportKind kind = options.file == kStandardStream ? KindOfContent(path) : KindOf(path);
  const auto document = session.NewDocument();
  const uint32_t face_type = options.face_type.value_or(static_cast<uint32_t>(session.Settings().def_face_type));
  const SImportContext context = {session.Textures(), session.Questions(), session.Settings().art_dir, face_type};
  const CQuestions::CAbout about(session.Questions(), options.file);
  SImportFault fault;
  const bool is_done = kind == EImportKind::k3ds
                           ? ImportFrom3ds(document->Model(), path, options.texture, context, &fault)
                           : ImportWavefront(document->Model(), {path, options.texture}, options.wave, context, fault);
  if (!is_done) {
    ShowImportFault(options.file, fault, session.Questions());
    return kFailed;
  }
  return document->CheckWritable(options.out) && document->SaveMTM(options.out) ? kDone : kFailed;
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
                  Required(Option("--texture", "RAW", "Texture of the faces", options->texture)),
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

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "interchange/import3ds.h"
#include "interchange/waveimport.h"
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

int Import(CSession& session, const SImportOptions& options) {
  const auto document = session.NewDocument();
  const uint32_t face_type = options.face_type.value_or(static_cast<uint32_t>(session.Settings().def_face_type));
  const SImportContext context = {session.Textures(), session.Questions(), session.Settings().art_dir, face_type};
  SImportFault fault;
  const bool is_done =
      KindOf(options.file) == EImportKind::k3ds
          ? ImportFrom3ds(document->Model(), options.file, options.texture, context, &fault)
          : ImportWavefront(document->Model(), {options.file, options.texture}, options.wave, context, fault);
  if (!is_done) {
    ShowImportFault(options.file, fault, session.Questions());
    return kFailed;
  }
  return document->CheckWritable(options.out) && document->SaveMTM(options.out) ? kDone : kFailed;
}

void CheckKind(const SImportOptions& options) {
  const EImportKind kind = KindOf(options.file);
  if (kind == EImportKind::kNone) {
    throw CLI::ValidationError("FILE", "\"" + options.file + "\" is neither a .3ds nor an .obj file");
  }
  const SWaveOptions& wave = options.wave;
  if (kind == EImportKind::k3ds && (wave.scale != 1.0 || wave.swap_yz || wave.center)) {
    throw CLI::ValidationError("--scale, --swap-yz, --center", "only for .obj files");
  }
}

void AddWaveOptions(CLI::App& command, SWaveOptions& wave) {
  const auto take_scale = [&wave](const std::string& text) {
    const auto scale = ParseNumber(text);
    if (!scale || !WaveScaleFault(*scale).empty()) {
      throw CLI::ValidationError("--scale", "\"" + text + "\" is not a number above 0");
    }
    wave.scale = *scale;
  };
  const char* const group = "For .obj files";
  command.add_option_function<std::string>("--scale", take_scale, "Multiply the coordinates")
      ->type_name("F")
      ->group(group);
  command.add_flag("--swap-yz", wave.swap_yz, "Exchange y and z; faces still face outwards")->group(group);
  command.add_flag("--center", wave.center, "Center on all axes")->group(group);
}

}  // namespace

void AddImportCommand(CLI::App& app, CommandRun& run) {
  const auto options = std::make_shared<SImportOptions>();
  CLI::App* const command = app.add_subcommand("import", "Make a model of a .3ds or .obj file");
  command->add_option("FILE", options->file, "File to read")->required();
  command->add_option("OUT", options->out, "Model file to write")->required();
  command->add_option("--texture", options->texture, "Texture of the faces")->required()->type_name("RAW");
  const auto take_type = [options](const std::string& text) {
    options->face_type = ParseFaceType(text, false);
    if (!options->face_type) throw CLI::ValidationError("--face-type", "\"" + text + "\" is not a face type");
  };
  command
      ->add_option_function<std::string>("--face-type", take_type, "Type of the faces (default: that of the settings)")
      ->type_name("TYPE");
  AddWaveOptions(*command, options->wave);
  command->callback([options, &run] {
    CheckKind(*options);
    run = [options](CSession& session) { return Import(session, *options); };
  });
}

}  // namespace veldra

#include "interchange/importcommands.h"

#include <new>

#include "interchange/3dstudiofile.h"
#include "interchange/import3ds.h"
#include "interchange/meshformats.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

const SFileFilter kAllFiles = {"All Files *.*", "*.*"};

SFilePrompt FilesPrompt3ds(const std::string& directory) {
  return {.title = "Import 3ds File",
          .filters = {{"Autodesk 3D Studio *.3ds", "*.3ds"}, kAllFiles},
          .directory = directory,
          .name = "",
          .default_extension = "3ds"};
}

SFilePrompt FilesPromptWavefront(const std::string& directory) {
  return {.title = "Import WaveFront Model",
          .filters = {{"Wavefront *.obj", "*.obj"}, kAllFiles},
          .directory = directory,
          .name = "",
          .default_extension = "obj"};
}

SFilePrompt TexturePrompt(const std::string& title, const SImportContext& context) {
  return {.title = title,
          .filters = {{"MTM Texture *.raw", "*.raw"}, kAllFiles},
          .directory = context.art_directory,
          .name = "",
          .default_extension = "raw",
          .make_picture = [&textures = context.textures](const std::string& path) { return textures.Picture(path); }};
}

/// READ(path, fault) gives what IMPORT_ONE(source, path, texture, fault) imports, or nothing. Only for a file that can
/// be read a texture is asked for.
template <typename Read, typename ImportOne>
void ImportEach(const SImportServices& services, const std::vector<std::string>& paths, SFilePrompt texture_prompt,
                const Read& read, const ImportOne& import_one) {
  CQuestions& questions = services.context.questions;
  for (const std::string& path : paths) {
    const CQuestions::CAbout about(questions, path);
    SImportFault fault;
    auto source = read(path, fault);
    if (!source) {
      ShowImportFault(path, fault, questions);
      continue;
    }
    texture_prompt.note = "The texture of " + DisplayFileName(path);
    const auto texture = questions.AskOpenFile(texture_prompt);
    if (!texture) continue;
    bool is_done = false;
    import_one(*source, SWaveFiles{path, *texture}, fault, is_done);
    if (!is_done) ShowImportFault(path, fault, questions);
  }
}

std::optional<C3DStudioFile> Read3ds(const std::string& path, CQuestions& questions, SImportFault& fault) {
  try {
    C3DStudioFile file(path);
    if (file.ReadFile(questions, &fault)) return file;
  } catch (const std::bad_alloc&) {
    fault.what = kNoMemory.what;
  }
  return std::nullopt;
}

/// Mesh files that come in together.
class CMeshJobs {
 public:
  explicit CMeshJobs(const SImportServices& services) : services_(services) {}

  void Add(SMeshJob job) {
    const std::string& art = services_.context.art_directory;
    job.plan =
        PlanMaterials(job.mesh, job.path, IsDirectory(art) ? art : "", services_.context, job.mesh.remarks, made_);
    made_.insert(made_.end(), job.plan.made.begin(), job.plan.made.end());
    jobs_.push_back(std::move(job));
  }
  void Run() {
    if (jobs_.empty() || !services_.ask_jobs(jobs_)) return;
    for (SMeshJob& job : jobs_)
      if (job.is_wanted) Import(job);
  }

 private:
  void Import(SMeshJob& job) const {
    CQuestions& questions = services_.context.questions;
    const CQuestions::CAbout about(questions, job.path);
    DropUnused(job.plan);
    const SWaveFiles files = {.path = job.path, .texture = job.texture, .plan = &job.plan};
    SImportFault fault;
    bool is_done = false;
    services_.fill_new_document(FileNamePart(job.path), [&](CBinModel& model) {
      is_done = ImportWaveMesh(model, job.mesh, files, job.options, services_.context, fault);
      return is_done;
    });
    if (!is_done) ShowImportFault(job.path, fault, questions);
  }

  const SImportServices& services_;
  std::vector<SMeshJob> jobs_;
  std::vector<SNewTexture> made_;
};

/// Nothing, after a message, when the file cannot be read.
std::optional<SMeshJob> ReadJob(const std::string& path, CQuestions& questions) {
  const CQuestions::CAbout about(questions, path);
  const SMeshFormat* const by_name = FindMeshFormat(path);
  const SMeshFormat& format = by_name != nullptr ? *by_name : MeshFormatOfContent(path);
  SImportFault fault;
  auto mesh = ReadMesh(path, format.format, true, questions, fault);
  if (!mesh) {
    ShowImportFault(path, fault, questions);
    return std::nullopt;
  }
  const SWaveOptions options = {.scale = format.scale, .swap_yz = format.is_z_up};
  return SMeshJob{.path = path,
                  .mesh = std::move(*mesh),
                  .texture = "",
                  .options = options,
                  .plan = {},
                  .has_own_axes = format.format != EMeshFormat::kWavefront && format.format != EMeshFormat::k3ds};
}

}  // namespace

void Import3dsFiles(const SImportServices& services, const std::vector<std::string>& paths) {
  const std::string title = "Please select a default texture for the 3ds model";
  const auto read = [&](const std::string& path, SImportFault& fault) {
    return Read3ds(path, services.context.questions, fault);
  };
  const auto import_one = [&](const C3DStudioFile& file, const SWaveFiles& files, SImportFault& fault, bool& is_done) {
    services.fill_new_document(FileNamePart(files.path), [&](CBinModel& model) {
      is_done = ImportFrom3ds(model, file, files.texture, services.context, fault);
      return is_done;
    });
  };
  ImportEach(services, paths, TexturePrompt(title, services.context), read, import_one);
}

void ImportWavefrontFiles(const SImportServices& services, const std::vector<std::string>& paths) {
  const std::string title = "Please select a texture for Wavefront model";
  CMeshJobs jobs(services);
  const auto read = [&](const std::string& path, SImportFault& fault) {
    return ReadWavefront(path, services.context.questions, fault);
  };
  const auto take = [&](SWaveMesh& mesh, const SWaveFiles& files, SImportFault&, bool& is_done) {
    jobs.Add({.path = files.path, .mesh = std::move(mesh), .texture = files.texture, .options = {}, .plan = {}});
    is_done = true;
  };
  ImportEach(services, paths, TexturePrompt(title, services.context), read, take);
  jobs.Run();
}

void RunImport3ds(const SImportServices& services) {
  const auto files = services.context.questions.AskOpenFiles(FilesPrompt3ds(services.directory));
  if (files) Import3dsFiles(services, files->paths);
}

void RunImportWavefront(const SImportServices& services) {
  const auto files = services.context.questions.AskOpenFiles(FilesPromptWavefront(services.directory));
  if (files) ImportWavefrontFiles(services, files->paths);
}

void RunImportMeshes(const SImportServices& services) {
  const SFilePrompt prompt = {.title = "Import Meshes with Materials",
                              .filters = {{"Meshes " + MeshPatterns(), MeshPatterns()}, kAllFiles},
                              .directory = services.directory,
                              .name = "",
                              .default_extension = "obj"};
  const auto files = services.context.questions.AskOpenFiles(prompt);
  if (files) ImportMeshFiles(services, files->paths);
}

void ImportMeshFiles(const SImportServices& services, const std::vector<std::string>& paths) {
  CMeshJobs jobs(services);
  for (const std::string& path : paths)
    if (auto job = ReadJob(path, services.context.questions)) jobs.Add(std::move(*job));
  jobs.Run();
}

}  // namespace veldra

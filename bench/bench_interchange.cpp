#include <assimp/cimport.h>
#include <assimp/scene.h>
#include <lib3ds/file.h>
#include <lib3ds/mesh.h>
#include <tiny_obj_loader.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "comparison.h"
#include "interchange/3dstudiofile.h"
#include "interchange/import3ds.h"
#include "interchange/wavefront.h"
#include "interchange/waveimport.h"
#include "interchange/wavematerials.h"
#include "interchange/waveparser.h"
#include "meshfiles.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/unattendedquestions.h"
#include "wavymodel.h"

/// Reading and writing of other programs' mesh files, beside other programs' libraries for them.
namespace veldra::bench {

namespace {

constexpr size_t kStudioCount = size_t{kStudioMeshes} * kStudioMeshSize;
constexpr size_t kWaveFaces = size_t{2} * (kWaveSide - 1) * (kWaveSide - 1);

/// Files that are gone when the program ends.
class CMeshFolder {
 public:
  CMeshFolder() : path_(JoinPath(std::filesystem::temp_directory_path().string(), "veldra-bench-meshes")) {
    Require(MakeDirectories(path_), "making a folder");
    Require(ReplaceFile(File("meshes.3ds"), StudioMeshes()) && ReplaceFile(File("mesh.obj"), WaveMesh()) &&
                ReplaceFile(File("cloth.obj"), WaveMeshWithMaterials()) &&
                ReplaceFile(File("cloth.mtl"), "newmtl T_0x18\nmap_Kd T.png\nnewmtl T_0x29\nmap_Kd T.png\n") &&
                ReplaceFile(File("T.RAW"), std::string(4096, 'x')),
            "writing the files");
  }
  ~CMeshFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string File(const std::string& name) const { return JoinPath(path_, name); }

 private:
  std::string path_;
};

std::string MeshFile(const std::string& name) {
  static const CMeshFolder folder;
  return folder.File(name);
}

// --- 3ds -------------------------------------------------------------------------------------------------------------

double ReadStudio() {
  const std::string path = MeshFile("meshes.3ds");
  CUnattendedQuestions questions;
  C3DStudioFile file(path);
  const double seconds = Seconds([&] { Require(file.ReadFile(questions), "reading"); });
  Require(file.Vertices().size() == kStudioCount && file.Faces().size() == kStudioCount, "reading all");
  return seconds;
}

double ReadStudioWithLib3ds() {
  const std::string path = MeshFile("meshes.3ds");
  Lib3dsFile* file = nullptr;
  const double seconds = Seconds([&] { file = lib3ds_file_load(path.c_str()); });
  Require(file != nullptr, "lib3ds");
  size_t faces = 0;
  for (const Lib3dsMesh* mesh = file->meshes; mesh != nullptr; mesh = mesh->next)
    faces += mesh->faces;
  Require(faces == kStudioCount, "lib3ds reading all");
  lib3ds_file_free(file);
  return seconds;
}

/// What the whole import works with.
struct SImport {
  CUnattendedQuestions questions;
  CTextureStore textures{questions, GreyRamp()};
  SImportContext context{textures, questions, ""};
  CBinModel model;
};

double ImportStudio() {
  const std::string path = MeshFile("meshes.3ds");
  SImport import;
  return Seconds([&] { Require(ImportFrom3ds(import.model, path, MeshFile("T.RAW"), import.context), "importing"); });
}

// --- Wavefront -------------------------------------------------------------------------------------------------------

double ParseWave() {
  const std::string path = MeshFile("mesh.obj");
  CUnattendedQuestions questions;
  SImportFault fault;
  std::optional<SWaveMesh> mesh;
  const double seconds = Seconds([&] { mesh = ReadWavefront(path, questions, fault); });
  Require(mesh && mesh->FaceCount() == kWaveFaces, "parsing");
  return seconds;
}

double ParseWithTinyObj() {
  const std::string path = MeshFile("mesh.obj");
  tinyobj::attrib_t attributes;
  std::vector<tinyobj::shape_t> shapes;
  std::vector<tinyobj::material_t> materials;
  std::string warning;
  std::string error;
  bool is_read = false;
  const double seconds =
      Seconds([&] { is_read = tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &error, path.c_str()); });
  size_t faces = 0;
  for (const tinyobj::shape_t& shape : shapes)
    faces += shape.mesh.num_face_vertices.size();
  Require(is_read && faces == kWaveFaces, "tinyobjloader");
  return seconds;
}

double ImportWave() {
  const std::string path = MeshFile("mesh.obj");
  SImport import;
  SImportFault fault;
  return Seconds([&] {
    Require(ImportWavefront(import.model, {path, MeshFile("T.RAW")}, {}, import.context, fault), "importing");
  });
}

double ImportMaterials() {
  const std::string path = MeshFile("cloth.obj");
  SImport import;
  import.context.art_directory = DirectoryPart(path);
  SImportFault fault;
  const double seconds = Seconds([&] {
    Require(ImportWavefront(import.model, {path, ""}, {.scale = 100}, import.context, fault), "importing");
  });
  Require(import.model.FindTexture("T.RAW", ETextureKind::kPlain)->UseCount() == static_cast<int32_t>(kWaveFaces) &&
              !import.model.FaceGroups().empty(),
          "taking the materials");
  return seconds;
}

double ReadMeshAndMaterials() {
  const std::string path = MeshFile("cloth.obj");
  CUnattendedQuestions questions;
  SImportFault fault;
  std::optional<SWaveMesh> mesh;
  WaveMaps maps;
  const double seconds = Seconds([&] {
    mesh = ReadWavefront(path, questions, fault);
    if (mesh) maps = ReadMaterials(path, mesh->material_files, mesh->remarks);
  });
  Require(mesh && mesh->FaceCount() == kWaveFaces && maps.size() == 2, "reading");
  return seconds;
}

double ReadWithAssimp() {
  const std::string path = MeshFile("cloth.obj");
  const aiScene* scene = nullptr;
  const double seconds = Seconds([&] { scene = aiImportFile(path.c_str(), 0); });
  size_t faces = 0;
  for (unsigned i = 0; scene != nullptr && i < scene->mNumMeshes; ++i)
    faces += scene->mMeshes[i]->mNumFaces;
  Require(faces == kWaveFaces, "assimp");
  aiReleaseImport(scene);
  return seconds;
}

const CBinModel& ExportedModel() {
  static const CWavyModel wavy(kWaveSide, 20, false);
  return wavy.model;
}

double WriteText() {
  CFileBytes text;
  const CBinModel& model = ExportedModel();
  return Seconds([&] { text = WavefrontBytes(model); });
}

/// The same lines with nothing around them but a buffer that is large enough.
double WriteLines() {
  const CBinModel& model = ExportedModel();
  constexpr size_t kLongestLine = 48;
  const size_t lines = static_cast<size_t>(model.VertexCount()) + static_cast<size_t>(model.FaceCount());
  std::unique_ptr<char[]> text;
  return Seconds([&] {
    text.reset(new char[kLongestLine * lines]);  // not zeroed
    char* at = text.get();
    const auto write = [&](int32_t number) {
      *at++ = ' ';
      at = std::to_chars(at, at + kLongestLine, number).ptr;
    };
    for (int32_t i = 0; i < model.VertexCount(); ++i) {
      const SPoint& p = model.Vertex(i).Position();
      *at++ = 'v';
      write(p.x);
      write(p.y);
      write(p.z);
      *at++ = '\n';
    }
    for (int32_t i = 0; i < model.FaceCount(); ++i) {
      *at++ = 'f';
      for (const CBinVertex* corner : model.Face(i).Corners())
        write(corner->Index() + 1);
      *at++ = '\n';
    }
  });
}

}  // namespace

void AddInterchangeComparisons() {
  Compare("3ds read 1M", ReadStudio, {{"lib3ds", ReadStudioWithLib3ds, 1.0 / 5}});
  CompareWith("3ds import 1M", ImportStudio, "3ds read 1M: lib3ds", 0);
  Compare("obj parse 2M", ParseWave, {{"tinyobjloader", ParseWithTinyObj, 1.0 / 3}});
  CompareWith("obj import 2M", ImportWave, "obj parse 2M: tinyobjloader", 0);
  Compare("obj and mtl read 2M", ReadMeshAndMaterials, {{"assimp", ReadWithAssimp, 1.0 / 2}});
  CompareWith("obj and mtl import 2M", ImportMaterials, "obj and mtl read 2M: assimp", 0);
  Compare("obj text 1M", WriteText, {{"to_chars into a buffer", WriteLines, 1}});
}

}  // namespace veldra::bench

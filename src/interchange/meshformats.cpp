#include "interchange/meshformats.h"

#include <algorithm>

#include "interchange/gltfreader.h"
#include "interchange/plyreader.h"
#include "interchange/stlreader.h"
#include "interchange/studiomesh.h"
#include "platform/files.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr SMeshFormat kFormats[] = {{"obj", EMeshFormat::kWavefront, 1, false},
                                    {"3ds", EMeshFormat::k3ds, kStudioScale, false},
                                    {"gltf", EMeshFormat::kGltf, kUnitsPerMetre, false},
                                    {"glb", EMeshFormat::kGltf, kUnitsPerMetre, false},
                                    {"ply", EMeshFormat::kPly, 1, true},
                                    {"stl", EMeshFormat::kStl, 1, true}};

/// Names in a mesh file are found in its folder and below it.
gltf::FileReader BesideReader(const std::string& path) {
  return [folder = DirectoryPart(path)](const std::string& name, SError* error) -> std::optional<CFileBytes> {
    const std::string there = StaysBelow(name) ? FindAnyCase(JoinPath(folder, name)) : "";
    if (!there.empty()) return ReadWholeFile(there, error);
    Fail(error, "there is no such file beside it");
    return std::nullopt;
  };
}

}  // namespace

std::span<const SMeshFormat> MeshFormats() {
  return kFormats;
}

std::string MeshPatterns() {
  std::string patterns;
  for (const SMeshFormat& format : kFormats)
    patterns += std::string(patterns.empty() ? "*." : " *.") + format.extension;
  return patterns;
}

const SMeshFormat* FindMeshFormat(std::string_view path) {
  const std::string extension = LowerCase(ExtensionPart(path));
  const auto* const row =
      std::ranges::find_if(kFormats, [&](const SMeshFormat& format) { return format.extension == extension; });
  return row == std::end(kFormats) ? nullptr : row;
}

const SMeshFormat& MeshFormatOfContent(const std::string& path) {
  constexpr struct {
    std::string_view mark;
    const char* like;
  } kMarks[] = {{"MM", "x.3ds"}, {"glTF", "x.glb"}, {"{", "x.gltf"}, {"ply", "x.ply"}, {"solid", "x.stl"}};
  std::string start(8, '\0');
  CInputFile file;
  const bool is_open = file.Open(path);
  start.resize(static_cast<size_t>(std::min<uint64_t>(start.size(), is_open ? file.Length() : 0)));
  if (is_open && file.ReadAt(0, {reinterpret_cast<uint8_t*>(start.data()), start.size()}))
    for (const auto& [mark, like] : kMarks)
      if (start.starts_with(mark)) return *FindMeshFormat(like);
  return kFormats[0];
}

std::optional<SWaveMesh> ReadMesh(const std::string& path, EMeshFormat format, bool with_materials,
                                  CQuestions& questions, SImportFault& fault) {
  if (format == EMeshFormat::kWavefront) return ReadWavefront(path, questions, fault);
  if (format == EMeshFormat::k3ds) return Read3dsMesh(path, with_materials, questions, fault);
  SError error;
  const auto file = ReadWholeFile(path, &error);
  if (!file) {
    fault = {error.what, false};
    return std::nullopt;
  }
  const auto progress = questions.BeginWork(Format("Reading %s", DisplayFileName(path).c_str()), true);
  if (format == EMeshFormat::kPly) return ParsePly(file->View(), progress.get(), fault);
  if (format == EMeshFormat::kStl) return ParseStl(file->View(), progress.get(), fault);
  return ParseGltf(file->View(), BesideReader(path), progress.get(), fault);
}

}  // namespace veldra

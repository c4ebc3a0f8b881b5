#include "app/fileopeners.h"

#include <algorithm>

#include "app/filecommands.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

bool OpenMesh(CFileCommands&, CToolCommands& tools, const std::string& path, bool) {
  return tools.ImportMeshFile(path);
}

constexpr SFileOpener kOpeners[] = {
    {"bin", [](CFileCommands& files, CToolCommands&, const std::string& path,
               bool read_only) { return files.OpenModel(path, read_only); }},
    {"trk", [](CFileCommands&, CToolCommands& tools, const std::string& path, bool) { return tools.OpenTruck(path); }},
    {"pod",
     [](CFileCommands&, CToolCommands& tools, const std::string& path, bool) { return tools.OpenArchive(path); }},
    {"3ds",
     [](CFileCommands&, CToolCommands& tools, const std::string& path, bool) { return tools.Import3dsFile(path); }},
    {"gltf", OpenMesh},
    {"glb", OpenMesh},
    {"ply", OpenMesh},
    {"stl", OpenMesh},
    {"obj", [](CFileCommands&, CToolCommands& tools, const std::string& path,
               bool) { return tools.ImportWavefrontFile(path); }},
};

}  // namespace

const SFileOpener* FindFileOpener(const std::string& path) {
  const std::string name = LowerCase(FileNamePart(path));
  const auto row = std::find_if(std::begin(kOpeners), std::end(kOpeners), [&](const SFileOpener& opener) {
    return name.ends_with(std::string(".") + opener.extension);
  });
  return row != std::end(kOpeners) ? &*row : nullptr;
}

}  // namespace veldra

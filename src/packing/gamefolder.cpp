#include "packing/gamefolder.h"

#include <array>

#include "archive/filetypes.h"
#include "archive/poddocument.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "platform/text.h"
#include "platform/userfolders.h"
#include "settings/coptools.h"
#include "textures/texturefiles.h"

namespace veldra {

namespace {

constexpr std::array kProgramFolders = {
    "Program Files/Microsoft Games/Monster Truck Madness 2",
    "Program Files (x86)/Microsoft Games/Monster Truck Madness 2",
    "Games/Monster Truck Madness 2",
    "Monster Truck Madness 2",
    "Games/MTM2",
    "MTM2",
};

/// The folder of files of TYPE below ROOT; ROOT itself where that has such files and there is no folder for them.
std::string FolderFor(const std::string& root, int type) {
  std::string usual = JoinPath(root, FolderOfType(type));
  std::string found = FindAnyCase(usual);
  if (IsDirectory(found)) return found;
  for (const std::string& name : ListDirectory(root))
    if (TypeOfFile(name) == type) return root;
  return usual;
}

class CGameLook {
 public:
  explicit CGameLook(const std::string& path) {
    game_.path = path;
    game_.art = FolderFor(path, kTypeRaw);
    game_.models = FolderFor(path, kTypeBin);
    game_.trucks = FolderFor(path, kTypeTrk);
  }

  SGameFolder Look() {
    game_.texture_count = CountFiles(game_.art, kTypeRaw);
    game_.model_count = CountFiles(game_.models, kTypeBin);
    game_.truck_count = CountFiles(game_.trucks, kTypeTrk);
    LookForPalette();
    for (const std::string& name : ListDirectory(game_.path))
      if (EqualNoCase(ExtensionPart(name), "POD")) LookIntoArchive(JoinPath(game_.path, name));
    if (!game_.palette) game_.palette = any_palette_;
    return game_;
  }

 private:
  static size_t CountFiles(const std::string& folder, int type) {
    size_t count = 0;
    for (const std::string& name : ListDirectory(folder))
      count += TypeOfFile(name) == type ? 1 : 0;
    return count;
  }

  void LookForPalette() {
    for (const std::string& name : ListDirectory(game_.art)) {
      if (TypeOfFile(name) != kTypeAct) continue;
      std::string path = JoinPath(game_.art, name);
      if (!ReadColorTable(path)) continue;
      auto& found = EqualNoCase(name, kGamePalette) ? game_.palette : any_palette_;
      found = SPodSource{name, {.path = std::move(path)}};
    }
  }

  void LookIntoArchive(const std::string& path) {
    CPodDocument archive;
    if (!archive.Load(path)) return;
    ++game_.archives;
    for (const SPodEntry& entry : archive.Entries()) {
      const int type = TypeOfFile(entry.FileName());
      game_.texture_count += type == kTypeRaw ? 1 : 0;
      game_.model_count += type == kTypeBin ? 1 : 0;
      game_.truck_count += type == kTypeTrk ? 1 : 0;
    }
    const auto found = archive.FindFile(kGamePalette);
    if (!found || game_.palette) return;
    const SPodEntry& entry = archive.Entries()[*found];
    game_.palette = SPodSource{std::string(entry.Name()), {path, entry.offset, entry.length}};
  }

  SGameFolder game_;
  std::optional<SPodSource> any_palette_;
};

/// FOLDER is one of the game's: named like one, with another one beside it.
bool IsWithinGame(const std::string& folder) {
  bool is_one = false;
  bool has_other = false;
  for (const int type : {kTypeRaw, kTypeBin, kTypeTrk}) {
    const bool is_this = EqualNoCase(FileNamePart(folder), FolderOfType(type));
    is_one = is_one || is_this;
    has_other =
        has_other || (!is_this && IsDirectory(FindAnyCase(JoinPath(DirectoryPart(folder), FolderOfType(type)))));
  }
  return is_one && has_other;
}

std::vector<std::string> UsualPlaces(const std::vector<std::string>& files) {
  std::vector<std::string> places = {CopTools::InstallationDirectory()};
  for (std::string& folder : CopTools::RegisteredFolders())
    places.push_back(std::move(folder));
  std::vector<std::string> roots = SystemDrives();
  if (const std::string home = HomeDirectory(); !home.empty()) roots.push_back(home);
  for (const std::string& root : roots)
    for (const char* folder : kProgramFolders)
      places.push_back(JoinPath(root, folder));
  for (const std::string& file : files)
    places.push_back(DirectoryPart(AbsolutePath(file)));
  return places;
}

}  // namespace

std::string SGameFolder::Text() const {
  const auto counted = [](size_t count, const char* one, const char* many) {
    return Counted(static_cast<int64_t>(count), one, many);
  };
  std::string text = counted(archives, "archive", "archives") + ", " + counted(texture_count, "texture", "textures") +
                     ", " + counted(model_count, "model", "models") + ", " + counted(truck_count, "truck", "trucks") +
                     "\n";
  if (!palette) return text + "No colour table: textures without one of their own are shown in grey.";
  text += "Colour table " + FileNamePart(palette->name);
  return palette->bytes.length ? text + " in " + FileNamePart(palette->bytes.path) : text;
}

SGameFolder LookIntoGameFolder(const std::string& path) {
  const std::string found = FindAnyCase(path);
  if (path.empty() || !IsDirectory(found)) return {};
  std::string root = AbsolutePath(found);
  if (IsWithinGame(root)) root = DirectoryPart(root);
  return CGameLook(root).Look();
}

std::string FindGame(const std::vector<std::string>& files) {
  for (const std::string& place : UsualPlaces(files)) {
    if (place.empty() || place == ".") continue;
    const SGameFolder game = LookIntoGameFolder(place);
    if (game.HasAny()) return game.path;
  }
  return "";
}

bool TakeGameFolder(const SGameFolder& game, const std::string& keep_in, CSettings& settings, SError* error) {
  settings.art_dir = game.art;
  settings.bin_dir = game.models;
  settings.trk_dir = game.trucks;
  settings.pod_dir = settings.pod_dest_dir = game.path;
  settings.defpal = game.palette ? game.palette->bytes.path : "";
  if (!game.palette || !game.palette->bytes.length) return true;
  settings.defpal.clear();
  const auto colors = ReadFilePart(game.palette->bytes, error);
  const std::string path = JoinPath(keep_in, kGamePalette);
  if (!colors || !MakeDirectories(keep_in) || !ReplaceFile(path, colors->View(), error)) return false;
  settings.defpal = path;
  return true;
}

}  // namespace veldra

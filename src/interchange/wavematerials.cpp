#include "interchange/wavematerials.h"

#include "interchange/wavescanner.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kLargestMaterialFile = size_t{64} << 20;

/// An option of a map and how many words follow it.
struct SMapOption {
  std::string_view name;
  int least;
  int most;  ///< beyond LEAST only numbers
};

constexpr SMapOption kMapOptions[] = {
    {"-blendu", 1, 1}, {"-blendv", 1, 1},  {"-bm", 1, 1},   {"-boost", 1, 1}, {"-cc", 1, 1},
    {"-clamp", 1, 1},  {"-imfchan", 1, 1}, {"-mm", 2, 2},   {"-o", 1, 3},     {"-s", 1, 3},
    {"-t", 1, 3},      {"-texres", 1, 1},  {"-type", 1, 1},
};

std::string_view TakeWord(std::string_view& rest) {
  const size_t end = std::min(rest.find_first_of(" \t\v\f"), rest.size());
  const std::string_view word = rest.substr(0, end);
  rest = Trim(rest.substr(end));
  return word;
}

/// The name behind the options of a map; a name may hold blanks.
std::string_view MapName(std::string_view rest) {
  while (rest.starts_with('-')) {
    std::string_view behind = rest;
    const std::string_view word = TakeWord(behind);
    const auto* const option = std::find_if(std::begin(kMapOptions), std::end(kMapOptions),
                                            [word](const SMapOption& o) { return EqualNoCase(o.name, word); });
    if (option == std::end(kMapOptions)) break;
    rest = behind;
    for (int i = 0; i < option->most; ++i) {
      behind = rest;
      const std::string_view value = TakeWord(behind);
      if (i < option->least || ParseNumber(value)) rest = behind;
    }
  }
  return rest;
}

/// The file beside the Wavefront file, or the one of that name there whatever folder the writer had it in.
std::string FindBeside(const std::string& path, std::string_view name) {
  const std::string folder = DirectoryPart(path);
  // A path of the machine that wrote the file is nothing to be opened on this one.
  const std::string there = StaysBelow(name) ? FindAnyCase(JoinPath(folder, name)) : "";
  return IsFile(there) ? there : FindAnyCase(JoinPath(folder, FileNamePart(name)));
}

void ReadOne(const std::string& path, std::string_view name, WaveMaps& maps, CRemarks& remarks) {
  const std::string there = FindBeside(path, name);
  SError error = {"there is no such file"};
  const auto file = there.empty() ? std::nullopt : ReadTextFile(there, &error, kLargestMaterialFile);
  if (file)
    ParseMaterials(file->Text(), DirectoryPart(there), maps);
  else
    remarks.Add(Format("material file %s: %s", DisplayName(name).c_str(), error.what.c_str()));
}

}  // namespace

void ParseMaterials(std::string_view text, const std::string& folder, WaveMaps& maps) {
  CWaveScanner scanner(text);
  std::string material;
  for (; !scanner.AtEnd(); scanner.ToNextLine()) {
    if (!scanner.ToWord()) continue;
    const std::string_view keyword = scanner.ReadWord();
    if (EqualNoCase(keyword, "newmtl")) material = scanner.ToWord() ? std::string(scanner.ReadRest()) : "";
    if (!EqualNoCase(keyword, "map_Kd") || material.empty() || !scanner.ToWord()) continue;
    const std::string_view name = MapName(scanner.ReadRest());
    if (!name.empty()) maps.try_emplace(material, SWaveMap{std::string(name), folder});
  }
}

WaveMaps ReadMaterials(const std::string& path, const std::vector<std::string>& files, CRemarks& remarks) {
  WaveMaps maps;
  for (const std::string& line : files) {
    // One name with blanks, or several names.
    if (IsFile(FindBeside(path, line))) {
      ReadOne(path, line, maps, remarks);
      continue;
    }
    std::string_view rest = line;
    while (!rest.empty())
      ReadOne(path, TakeWord(rest), maps, remarks);
  }
  return maps;
}

std::string FindPicture(const std::string& path, const SWaveMap& map) {
  const std::string folders[] = {map.folder, DirectoryPart(path)};
  std::vector<std::string> places;
  const bool has_root = map.picture.starts_with('/') || map.picture.starts_with('\\');
  const bool has_drive = map.picture.find_first_of(std::string_view(":\0", 2)) != std::string::npos;
  for (const std::string& folder : folders)
    if (!has_root && !has_drive) places.push_back(JoinPath(folder, map.picture));
  for (const std::string& folder : folders)
    places.push_back(JoinPath(folder, FileNamePart(map.picture)));
  // Two separators lead to another machine.
  if (IsAbsolutePath(map.picture) && map.picture.find_first_not_of("/\\") == 1) places.push_back(map.picture);
  for (const std::string& place : places)
    if (const std::string there = FindAnyCase(place); IsFile(there)) return there;
  return "";
}

}  // namespace veldra

#include "archive/stockbuilder.h"

#include <algorithm>

#include "archive/poddocument.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

void AddNames(const CPodDocument& archive, StockNames& names) {
  for (const SPodEntry& entry : archive.Entries()) {
    const std::string_view name = entry.FileName();
    const int type = TypeOfFile(name);
    if (type == kTypeOther || name.size() <= kExtensionSize) continue;
    names[static_cast<size_t>(type)].push_back(UpperCase(name.substr(0, name.size() - kExtensionSize)));
  }
}

}  // namespace

size_t SStockList::Total() const {
  size_t total = 0;
  for (const std::vector<std::string>& of_type : names)
    total += of_type.size();
  return total;
}

std::string SStockList::CountsText() const {
  std::string text;
  uint32_t expected = 0;
  for (size_t type = 0; type < names.size(); ++type) {
    text += Format("%s %zu, expected %u\n", ExtensionOfType(static_cast<int>(type)).c_str(), names[type].size(),
                   kExpectedStockCounts[type]);
    expected += kExpectedStockCounts[type];
  }
  return text + Format("%zu names from %zu archives, expected %u\n", Total(), archives, expected);
}

bool BuildStockList(CQuestions& questions, const std::string& game_folder, SStockList& list) {
  list = {};
  for (const std::string& name : ListDirectory(game_folder)) {
    const std::string path = JoinPath(game_folder, name);
    if (!EqualNoCase(ExtensionPart(name), "POD") || !IsFile(path)) continue;
    CPodDocument archive;
    SError error;
    if (!archive.Load(path, &error)) return questions.Fail(kFailedToLoadPod, path + ": " + error.what);
    AddNames(archive, list.names);
    ++list.archives;
  }
  if (list.archives == 0) return questions.Fail(Format("There are no archives in \"%s\".", game_folder.c_str()));
  for (std::vector<std::string>& of_type : list.names) {
    std::sort(of_type.begin(), of_type.end());
    of_type.erase(std::unique(of_type.begin(), of_type.end()), of_type.end());
  }
  return true;
}

bool WriteStockList(CQuestions& questions, const std::string& game_folder, const std::string& out, SStockList& list) {
  if (!BuildStockList(questions, game_folder, list)) return false;
  SError error;
  return ReplaceFile(out, WriteStringList(list.names), &error) ||
         questions.Fail(Format("\"%s\" could not be written.", out.c_str()), error.what);
}

}  // namespace veldra

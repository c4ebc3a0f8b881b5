#include "archive/filelists.h"

#include <functional>
#include <set>
#include <utility>

#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

void TidyFileList(std::vector<std::string>& names) {
  std::vector<std::string> tidy;
  std::set<std::string, std::less<>> seen;
  for (const std::string& name : names) {
    std::string upper = UpperCase(name);
    if (!upper.empty() && seen.insert(upper).second) tidy.push_back(std::move(upper));
  }
  names = std::move(tidy);
}

std::vector<std::string> ColorTablesOf(const std::vector<std::string>& textures) {
  std::vector<std::string> tables;
  tables.reserve(textures.size());
  for (const std::string& texture : textures)
    tables.push_back(ChangeExtension(texture, "ACT"));
  return tables;
}

}  // namespace veldra

#include "app/commands/otherkeys.h"

#include "app/commands/commandtable.h"

namespace veldra {

std::vector<SKeyRow> OtherKeys() {
  std::vector<SKeyRow> keys;
  for (const SCommandRow& row : CommandRows()) {
    for (const char* const key : {row.key, row.view_key}) {
      if (*key == '\0' || IsListed(key)) continue;
      const QString name = QString(row.text).remove('&').remove("...");
      keys.push_back({name.toStdString(), key, StatusText(row).toStdString()});
    }
  }
  return keys;
}

}  // namespace veldra

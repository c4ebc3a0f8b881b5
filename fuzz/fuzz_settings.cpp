#include "platform/assert.h"
#include "settings/coptools.h"

/// A settings file: whatever it says, the settings that come of it are written so that they read the same.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace veldra;
  SettingsMap texts;
  CopTools::ParseCfg({reinterpret_cast<const char*>(data), size}, texts);
  CSettings settings;
  settings.Take(texts);
  SettingsMap written;
  std::string file;
  for (const auto& [key, value] : settings.Texts())
    file.append(key).append(" ").append(value).append("\n");
  CopTools::ParseCfg(file, written);
  CSettings again;
  again.Take(written);
  VELDRA_ASSERT(again.Texts() == settings.Texts());
  return 0;
}

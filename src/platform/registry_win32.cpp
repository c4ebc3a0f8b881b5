#include "platform/registry.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

class CKey {
 public:
  CKey(const std::wstring& name, REGSAM view) {
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, KEY_READ | view, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~CKey() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  CKey(const CKey&) = delete;
  CKey& operator=(const CKey&) = delete;

  std::optional<std::string> Text(const std::wstring& name) const {
    DWORD size = 0;
    if (key_ == nullptr || Query(name, nullptr, size) != ERROR_SUCCESS) return std::nullopt;
    // Zeroed, because the value need not end in a zero itself.
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    if (Query(name, text.data(), size) != ERROR_SUCCESS) return std::nullopt;
    return FromWide(text.c_str());
  }

 private:
  /// Anything but a text counts as missing.
  LSTATUS Query(const std::wstring& name, wchar_t* text, DWORD& size) const {
    DWORD type = 0;
    const LSTATUS status = RegQueryValueExW(key_, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    return status == ERROR_SUCCESS && type != REG_SZ ? ERROR_FILE_NOT_FOUND : status;
  }

  HKEY key_ = nullptr;
};

}  // namespace

std::optional<std::string> ReadMachineRegistry(const std::string& key, const std::string& name) {
  const std::wstring wide_key = ToWide(key);
  const std::wstring wide_name = ToWide(name);
  // The game is a 32-bit program, so Windows keeps its keys in the other view.
  for (const REGSAM view : {REGSAM{0}, REGSAM{KEY_WOW64_32KEY}}) {
    auto text = CKey(wide_key, view).Text(wide_name);
    if (text) return text;
  }
  return std::nullopt;
}

std::optional<std::string> RegistryPathToNative(const std::string& windows_path) {
  return windows_path;
}

std::vector<std::string> RegisteredPaths(const std::string& key, const std::string& name) {
  const auto path = ReadMachineRegistry(key, name);
  return path ? std::vector{*path} : std::vector<std::string>();
}

std::vector<std::string> SystemDrives() {
  return {"C:\\"};
}

}  // namespace veldra

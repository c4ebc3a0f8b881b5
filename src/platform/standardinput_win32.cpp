#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <vector>

#include "platform/standardinput.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

/// A temporary file that goes with the object.
class CKeptInput {
 public:
  CKeptInput() = default;
  ~CKeptInput() {
    if (!path_.empty()) RemoveFile(path_);
  }
  CKeptInput(const CKeptInput&) = delete;
  CKeptInput& operator=(const CKeptInput&) = delete;

  const std::string& Path(SError* error) {
    if (path_.empty()) Keep(error);
    return path_;
  }
  bool Is(std::string_view path) const { return !path.empty() && path == path_; }

 private:
  void Keep(SError* error) {
    wchar_t folder[MAX_PATH + 1];
    wchar_t name[MAX_PATH + 1];
    if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, L"vel", 0, name) == 0) {
      if (error != nullptr) error->what = "no temporary file can be made";
      return;
    }
    _setmode(_fileno(stdin), _O_BINARY);
    std::vector<uint8_t> bytes;
    std::vector<uint8_t> block(65536);
    while (const size_t count = std::fread(block.data(), 1, block.size(), stdin))
      bytes.insert(bytes.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(count));
    path_ = FromWide(name);
    if (ReplaceFile(path_, bytes, error)) return;
    RemoveFile(path_);
    path_.clear();
  }

  std::string path_;
};

CKeptInput& KeptInput() {
  static CKeptInput input;
  return input;
}

}  // namespace

std::string StandardInputFile(SError* error) {
  return KeptInput().Path(error);
}

bool IsStandardInput(std::string_view path) {
  return KeptInput().Is(path);
}

}  // namespace veldra

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veldra::testing {

// As the system numbers them, for SetFileFault.
extern const int kDiskFull;
extern const int kReadOnlyDisk;

/// A folder of its own for one test, gone with the object.
class CTempFolder {
 public:
  CTempFolder();
  ~CTempFolder();
  CTempFolder(const CTempFolder&) = delete;
  CTempFolder& operator=(const CTempFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string File(std::string_view name) const;
  /// Writes a file there, folders of NAME included, and returns its path.
  std::string Write(std::string_view name, std::string_view content) const;
  std::string Write(std::string_view name, const std::vector<uint8_t>& content) const;
  /// Another path to the file NAME of this folder: through a link or, where a user cannot make any, in other letters.
  std::string OtherPath(const std::string& name) const;

 private:
  std::string path_;
};

/// Sets an environment variable and brings its old value back.
class CVariable {
 public:
  CVariable(std::string name, const std::string& value);
  ~CVariable();
  CVariable(const CVariable&) = delete;
  CVariable& operator=(const CVariable&) = delete;

 private:
  std::string name_;
  std::string old_;
};

/// The file's bytes; a missing file fails the test and gives "".
std::string ReadTestFile(const std::string& path);

}  // namespace veldra::testing

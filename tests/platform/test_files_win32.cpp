#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/windows_system.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using testing::CTempFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::ReadTestFile;

/// A file that some program has open.
class CHeldFile {
 public:
  CHeldFile(const std::string& path, DWORD share)
      : handle_(CreateFileW(ToWide(path).c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
  }
  ~CHeldFile() { Release(); }
  CHeldFile(const CHeldFile&) = delete;
  CHeldFile& operator=(const CHeldFile&) = delete;

  void Release() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_;
};

TEST(ReplaceFile, KeepsWhatIsHeldOrProtected) {
  const CTempFolder folder;
  const std::string path = folder.Write("model.bin", "old");
  const struct {
    DWORD share;  ///< of another program that has it open
    bool is_protected;
    const char* said;
  } cases[] = {
      {0, false, "another program has it open"},
      {FILE_SHARE_READ, false, "another program has it open"},
      {FILE_SHARE_READ | FILE_SHARE_WRITE, false, "another program has it open"},
      {FILE_SHARE_READ | FILE_SHARE_DELETE, true, "permission denied"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.share);
    SetFileAttributesW(ToWide(path).c_str(), row.is_protected ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
    CHeldFile held(path, row.share);
    SError error;
    EXPECT_FALSE(ReplaceFile(path, "new", &error));
    EXPECT_THAT(error.what, HasSubstr(row.said));
    held.Release();
    EXPECT_EQ(ReadTestFile(path), "old");
    EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("model.bin"));
  }
}

/// As those do that look into every file that was written.
TEST(ReplaceFile, WaitsForProgramsThatHaveItForAMoment) {
  for (const DWORD share : {FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}) {
    const CTempFolder folder;
    const std::string path = folder.Write("model.bin", "old");
    CHeldFile held(path, share);
    std::thread other([&] {
      Sleep(60);
      held.Release();
    });
    SError error;
    EXPECT_TRUE(ReplaceFile(path, "new", &error)) << error.what;
    other.join();
    EXPECT_EQ(ReadTestFile(path), "new");
  }
}

TEST(Files, HaveOnePathOrAnother) {
  const CTempFolder folder;
  const std::string path = folder.Write("Truck.bin", "truck");
  std::string upper = path;
  for (char& c : upper)
    c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  EXPECT_TRUE(IsSameFile(path, upper));
  EXPECT_EQ(FindAnyCase(upper), upper);
  const std::wstring long_name(200, L'n');
  const std::string server = "\\\\server\\share\\";
  EXPECT_EQ(disk::CallPath(server + "short"), ToWide(server + "short"));
  EXPECT_EQ(disk::CallPath(server + FromWide(long_name + L"\\" + long_name)),
            L"\\\\?\\UNC\\server\\share\\" + long_name + L"\\" + long_name);
  EXPECT_EQ(disk::CallPath("C:\\" + FromWide(long_name + L"\\" + long_name)),
            L"\\\\?\\C:\\" + long_name + L"\\" + long_name);
  SError error;
  EXPECT_FALSE(ReplaceFile("\\\\no-such-server\\share\\model.bin", "x", &error));
  EXPECT_NE(error.what, "");
  EXPECT_FALSE(ReplaceFile("Q:\\model.bin", "x", &error)) << "a drive that was taken away";
}

}  // namespace

}  // namespace veldra

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <numeric>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/testfiles.h"

#ifdef _WIN32
#include "platform/windows_system.h"
#else
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#endif

namespace veldra {
namespace {

using testing::CTempFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kDiskFull;
using testing::ReadTestFile;

/// More than two pieces of what is written at once.
std::string LongContent() {
  std::string content(size_t{5} << 19, '\0');
  std::iota(content.begin(), content.end(), '\0');
  return content;
}

/// Counts the calls and lets one of them fail.
class CFaultyDisk {
 public:
  explicit CFaultyDisk(size_t fail_at) {
    SetFileFault([this, fail_at](std::string_view operation, std::string_view) {
      operations_.emplace_back(operation);
      return operations_.size() - 1 == fail_at ? kDiskFull : 0;
    });
  }
  ~CFaultyDisk() { SetFileFault({}); }
  const std::vector<std::string>& Operations() const { return operations_; }

 private:
  std::vector<std::string> operations_;
};

TEST(ReplaceFile, LeavesTheOldFileAndNothingElseWhenAnyCallFails) {
  const CTempFolder folder;
  const std::string path = folder.Write("model.bin", "old");
  const std::string fresh = folder.File("fresh.bin");
  const std::string content = LongContent();
  constexpr size_t kCalls = 7;
  for (size_t call = 0; call < kCalls; ++call) {
    SCOPED_TRACE(call);
    SError error;
    {
      const CFaultyDisk disk(call);
      EXPECT_FALSE(ReplaceFile(path, content, &error));
      EXPECT_EQ(disk.Operations().size(), call + 1);
    }
    EXPECT_EQ(error.what, "disk full");
    EXPECT_EQ(ReadTestFile(path), "old");
    {
      const CFaultyDisk disk(call);
      EXPECT_FALSE(ReplaceFile(fresh, content));
    }
    EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("model.bin"));
  }
  const CFaultyDisk disk(kCalls);
  EXPECT_TRUE(ReplaceFile(path, content));
  EXPECT_THAT(disk.Operations(), ElementsAre("open", "write", "write", "write", "sync", "close", "rename"));
  EXPECT_EQ(ReadTestFile(path), content);
}

TEST(ReplaceFile, RefusesFoldersAndMissingFolders) {
  const CTempFolder folder;
  SError error;
  EXPECT_FALSE(ReplaceFile(folder.Path(), "x", &error));
  EXPECT_EQ(error.what, "is a folder");
  EXPECT_FALSE(ReplaceFile(folder.File("none/x.bin"), "x", &error));
  EXPECT_EQ(error.what, "no such file or folder");
  EXPECT_FALSE(ReplaceFile(std::string_view("a\0b", 3), "x"));
  EXPECT_FALSE(ReplaceFile("", "x"));
  EXPECT_THAT(ListDirectory(folder.Path()), IsEmpty());
}

TEST(ReadWholeFile, ReadsRegularFilesUpToTheLimit) {
  const CTempFolder folder;
  const std::string path = folder.Write("ten", "0123456789");
  const auto bytes = ReadWholeFile(path, nullptr, 10);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->Text(), "0123456789");
  SError error;
  EXPECT_FALSE(ReadWholeFile(path, &error, 9));
  EXPECT_EQ(error.what, "is longer than 9 bytes");
  EXPECT_FALSE(ReadWholeFile(folder.Path(), &error));
  EXPECT_EQ(error.what, "is a folder");
  EXPECT_FALSE(ReadWholeFile(folder.File("none"), &error));
  EXPECT_EQ(error.what, "no such file or folder");
  EXPECT_EQ(ReadTestFile(folder.Write("empty", "")), "");
}

TEST(Files, AreFoundUnderLongAndForeignNames) {
  const CTempFolder folder;
  std::string name = "M\xC3\xBCller \xE6\xA8\xA1\xE5\x9E\x8B";
  for (int i = 0; i < 4; ++i)
    name += "/" + std::string(80, static_cast<char>('a' + i));
  const std::string path = folder.Write(name + "/x.bin", "first");
  EXPECT_TRUE(ReplaceFile(path, "second"));
  EXPECT_EQ(ReadTestFile(path), "second");
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("M\xC3\xBCller \xE6\xA8\xA1\xE5\x9E\x8B"));
  EXPECT_THAT(ListDirectory(DirectoryPart(path)), ElementsAre("x.bin"));
  EXPECT_EQ(FileLength(path), 6U);
  EXPECT_TRUE(RemoveFile(path));
  EXPECT_FALSE(FileExists(path));
}

TEST(Files, AreSeparatedByEitherSeparator) {
  const CTempFolder folder;
  EXPECT_TRUE(MakeDirectories(folder.File("one\\two/three\\")));
  EXPECT_TRUE(ReplaceFile(folder.File("one\\two\\x.bin"), "x"));
  EXPECT_TRUE(IsDirectory(folder.File("one/two/three")));
  EXPECT_FALSE(IsFile(folder.File("one/two/three")));
  EXPECT_THAT(ListDirectory(folder.File("one\\two")), ElementsAre("three", "x.bin"));
  EXPECT_FALSE(MakeDirectories(folder.File("one/two/x.bin/four")));
  EXPECT_FALSE(MakeDirectories(folder.File("one/two/x.bin")));
}

#ifndef _WIN32

mode_t Mode(const std::string& path) {
  struct stat info = {};
  EXPECT_EQ(stat(path.c_str(), &info), 0);
  return info.st_mode & 07777;
}

TEST(ReplaceFile, KeepsPermissionsAndRespectsThem) {
  const CTempFolder folder;
  const std::string path = folder.Write("x", "old");
  EXPECT_EQ(chmod(path.c_str(), 0642), 0);
  EXPECT_TRUE(IsWritable(path) && ReplaceFile(path, "new"));
  EXPECT_EQ(Mode(path), mode_t{0642});

  const mode_t mask = umask(027);
  EXPECT_EQ(Mode(folder.Write("fresh", "x")), mode_t{0640});
  umask(mask);

  EXPECT_EQ(chmod(path.c_str(), 0444), 0);
  SError error;
  EXPECT_FALSE(IsWritable(path) || IsWritable(folder.Path()) || IsWritable(folder.File("none")));
  EXPECT_FALSE(ReplaceFile(path, "newer", &error));
  EXPECT_EQ(error.what, "permission denied");
  EXPECT_EQ(ReadTestFile(path), "new");
}

TEST(ReplaceFile, FollowsLinks) {
  const CTempFolder folder;
  const std::string file = folder.Write("real/x", "old");
  const std::string link = folder.File("link");
  const std::string outer = folder.File("outer");
  ASSERT_EQ(symlink("real/x", link.c_str()), 0);
  ASSERT_EQ(symlink(link.c_str(), outer.c_str()), 0);
  EXPECT_TRUE(ReplaceFile(outer, "new"));
  EXPECT_EQ(ReadTestFile(file), "new");
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("link", "outer", "real"));
  EXPECT_THAT(ListDirectory(folder.File("real")), ElementsAre("x"));
  EXPECT_TRUE(RemoveFile(file));
  EXPECT_FALSE(FileExists(outer)) << "still a link";
  EXPECT_TRUE(ReplaceFile(outer, "made where the link leads"));
  EXPECT_EQ(ReadTestFile(file), "made where the link leads");

  const std::string circle = folder.File("circle");
  ASSERT_EQ(symlink("circle", circle.c_str()), 0);
  EXPECT_FALSE(ReplaceFile(circle, "x"));
}

TEST(ReplaceFile, NoticesThatAWriteTookOnlyAPart) {
  const CTempFolder folder;
  const std::string path = folder.Write("x", "old");
  rlimit before = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  rlimit limit = before;
  limit.rlim_cur = 2300000;  // within the last piece
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  SError error;
  const bool replaced = ReplaceFile(path, LongContent(), &error);
  setrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, handler);
  EXPECT_FALSE(replaced);
  EXPECT_EQ(error.what, "too long for the disk");
  EXPECT_EQ(ReadTestFile(path), "old");
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("x"));
}

TEST(Files, ThatAreNoneAreRefusedWithoutWaiting) {
  const CTempFolder folder;
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {pipe, std::string("/dev/null")}) {
    SError error;
    EXPECT_FALSE(ReadWholeFile(path, &error));
    EXPECT_EQ(error.what, "is not a file");
    EXPECT_FALSE(ReplaceFile(path, "x", &error));
    EXPECT_EQ(error.what, "is not a file");
    EXPECT_FALSE(IsWritable(path));
    EXPECT_TRUE(FileExists(path));
  }
}

TEST(ReadWholeFile, GoesOnBehindTheLengthTheSystemTold) {
  // Such files say that they are empty.
  SError error;
  const auto bytes = ReadWholeFile("/proc/self/status", &error);
  ASSERT_TRUE(bytes) << error.what;
  EXPECT_TRUE(bytes->Text().starts_with("Name:"));
  EXPECT_GT(bytes->Text().size(), 500U);
  EXPECT_FALSE(ReadWholeFile("/proc/self/status", &error, 500));
  EXPECT_EQ(error.what, "is longer than 500 bytes");
}

TEST(Files, WithBackslashesInTheirNamesAreReadAsTheyAre) {
  const CTempFolder folder;
  const std::string odd = folder.Path() + "/odd\\folder";
  ASSERT_EQ(mkdir(odd.c_str(), 0700), 0);
  EXPECT_TRUE(ReplaceFile(odd + "/x", "in the odd one"));
  EXPECT_EQ(ReadTestFile(odd + "/x"), "in the odd one");
  const std::string file = odd + "/odd\\file";
  ASSERT_EQ(rename((odd + "/x").c_str(), file.c_str()), 0);
  EXPECT_TRUE(ReplaceFile(file, "replaced"));
  EXPECT_EQ(ReadTestFile(file), "replaced");
  EXPECT_THAT(ListDirectory(odd), ElementsAre("odd\\file"));
  EXPECT_TRUE(MakeDirectories(odd + "/new\\below"));
  EXPECT_TRUE(IsDirectory(odd + "/new/below"));
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("odd\\folder"));
}

TEST(AbsolutePath, HasNoDotParts) {
  const std::string here = CurrentDirectory();
  const std::pair<const char*, std::string> kCases[] = {
      {"/a/./b/../c//d/", "/a/c/d"}, {"/../..", "/"}, {"x\\y", here + "/x/y"}, {"", here}, {"../", DirectoryPart(here)},
  };
  for (const auto& [path, absolute] : kCases)
    EXPECT_EQ(AbsolutePath(path), absolute) << path;
}

#endif

TEST(Files, HaveALimitBeforeTheyAreRead) {
  const CTempFolder folder;
  const std::string path = folder.Write("x", "MAGIC");
  SError error;
  const auto check = [](std::span<const uint8_t> start, uint64_t) -> std::string {
    return start[0] == 'M' ? "" : "is none";
  };
  std::filesystem::resize_file(path, kCheckedLength + 1);
  EXPECT_TRUE(ReadWholeFile(path, &error, kLargestFile, check));
  folder.Write("x", "NONE");
  EXPECT_TRUE(ReadWholeFile(path, &error, kLargestFile, check)) << "a short one is its reader's business";
  std::filesystem::resize_file(path, kCheckedLength + 1);
  EXPECT_FALSE(ReadWholeFile(path, &error, kLargestFile, check));
  EXPECT_EQ(error.what, "is none");
  EXPECT_FALSE(ReadTextFile(path, &error));
  EXPECT_EQ(error.what, "is longer than 67108864 bytes");
  folder.Write("x", std::string(2 * kMostTextLines + 1, '\r'));
  EXPECT_FALSE(ReadTextFile(path, &error));
  EXPECT_EQ(error.what, "has more than 200000 lines");
}

}  // namespace
}  // namespace veldra

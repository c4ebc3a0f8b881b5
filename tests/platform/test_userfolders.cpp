#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/paths.h"
#include "platform/userfolders.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using testing::CTempFolder;
using testing::CVariable;

TEST(UserDataDirectory, IsMadeWhereTheEnvironmentSays) {
  const CTempFolder folder;
  const std::string wanted = folder.File("a/b");
  const CVariable data("VELDRA_DATA", wanted);
  EXPECT_EQ(UserDataDirectory(), AbsolutePath(wanted));
  EXPECT_TRUE(IsDirectory(wanted));
}

#ifndef _WIN32

TEST(UserDataDirectory, FollowsTheDesktopsRules) {
  const CTempFolder folder;
  const CVariable none("VELDRA_DATA", "");
  const CVariable home("HOME", folder.File("home"));
  const std::pair<std::string, const char*> cases[] = {
      {folder.File("data"), "data/veldra"}, {"", "home/.local/share/veldra"}, {"relative", "home/.local/share/veldra"}};
  for (const auto& [data_home, expected] : cases) {
    const CVariable data("XDG_DATA_HOME", data_home);
    EXPECT_EQ(UserDataDirectory(), folder.File(expected)) << data_home;
    EXPECT_TRUE(IsDirectory(folder.File(expected)));
    EXPECT_EQ(std::filesystem::status(folder.File(expected)).permissions(), std::filesystem::perms::owner_all);
  }
}

#endif

TEST(IsSameFile, LooksAtTheFileNotAtItsName) {
  const CTempFolder folder;
  folder.Write("real/a.bin", "x");
  folder.Write("other/a.bin", "x");
  std::error_code fault;
  std::filesystem::create_directory_symlink(folder.File("real"), folder.File("link"), fault);
  const bool has_links = !fault;
  const bool any_case = FileExists(folder.File("REAL"));
  const struct {
    const char* a;
    const char* b;
    bool is_same;
  } cases[] = {{"real/a.bin", "real/../real/./a.bin", true},
               {"real/a.bin", "other/a.bin", false},
               {"real/a.bin", "real/b.bin", false},
               {"real/b.bin", "real/b.bin", true},
               {"real/b.bin", "other/b.bin", false},
               {"gone/deep/b.bin", "gone/deep/../deep/b.bin", true},
               {"link/a.bin", "real/a.bin", has_links},
               {"link/b.bin", "real/b.bin", has_links},
               {"link", "real", has_links},
               {"Real/A.bin", "real/a.bin", any_case},
               {"real/B.bin", "real/b.bin", any_case}};
  for (const auto& c : cases) {
    EXPECT_EQ(IsSameFile(folder.File(c.a), folder.File(c.b)), c.is_same) << c.a << " and " << c.b;
#ifndef _WIN32
    EXPECT_EQ(ComparablePath(folder.File(c.a)) == ComparablePath(folder.File(c.b)), c.is_same) << c.a << " and " << c.b;
#endif
  }
  EXPECT_FALSE(IsSameFile("", ""));
}

}  // namespace

}  // namespace veldra

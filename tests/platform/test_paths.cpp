#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/paths.h"

namespace veldra {
namespace {

TEST(Paths, TakeApart) {
  const struct {
    const char *path, *directory, *name, *extension;
    const char* changed;  ///< with the extension RAW
  } kCases[] = {{"", "", "", "", ".RAW"},
                {"truck.bin", "", "truck.bin", "bin", "truck.RAW"},
                {"C:\\Games\\ART\\x.act", "C:\\Games\\ART", "x.act", "act", "C:\\Games\\ART\\x.RAW"},
                {"C:\\x.act", "C:\\", "x.act", "act", "C:\\x.RAW"},
                {"/x", "/", "x", "", "/x.RAW"},
                {"models/a.b/c", "models/a.b", "c", "", "models/a.b/c.RAW"},
                {"models\\a.b/c.d.e", "models\\a.b", "c.d.e", "e", "models\\a.b/c.d.RAW"},
                {"models/", "models", "", "", "models/.RAW"},
                {"x.", "", "x.", "", "x.RAW"}};
  for (const auto& each : kCases) {
    SCOPED_TRACE(each.path);
    EXPECT_EQ(DirectoryPart(each.path), each.directory);
    EXPECT_EQ(FileNamePart(each.path), each.name);
    EXPECT_EQ(ExtensionPart(each.path), each.extension);
    EXPECT_EQ(ChangeExtension(each.path, "RAW"), each.changed);
  }
}

TEST(Paths, JoinWithOneSeparator) {
  EXPECT_EQ(JoinPath("", "x.bin"), "x.bin");
  EXPECT_EQ(JoinPath("C:\\ART\\", "x.bin"), "C:\\ART\\x.bin");
  EXPECT_EQ(JoinPath("/art/", "/x.bin"), "/art/x.bin");
  EXPECT_THAT(JoinPath("art", "x.bin"), ::testing::AnyOf("art/x.bin", "art\\x.bin"));
}

TEST(Paths, KnowWhatIsAbsolute) {
  for (const char* path : {"/", "/x", "\\x", "C:\\", "c:/x", "\\\\server\\share"})
    EXPECT_TRUE(IsAbsolutePath(path)) << path;
  for (const char* path : {"", "x", "x/y", "..", "C:", "C:x", "1:\\x"})
    EXPECT_FALSE(IsAbsolutePath(path)) << path;
}

TEST(Paths, NamesInFilesStayBelowTheirFolder) {
  const struct {
    std::string name;
    bool below, bare;
  } kCases[] = {{"A.RAW", true, true},       {"ART/A.RAW", true, false},
                {"ART\\A.RAW", true, false}, {"", false, false},
                {".", true, false},          {"..", false, false},
                {"a/../b", false, false},    {"..\\A.RAW", false, false},
                {"/A.RAW", false, false},    {"\\\\host\\A.RAW", false, false},
                {"C:A.RAW", false, false},   {std::string("A\0.RAW", 6), false, false}};
  for (const auto& [name, below, bare] : kCases) {
    EXPECT_EQ(StaysBelow(name), below) << name;
    EXPECT_EQ(IsBareName(name), bare) << name;
  }
}

}  // namespace
}  // namespace veldra

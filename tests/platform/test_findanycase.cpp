#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/paths.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

using testing::CTempFolder;

TEST(FindAnyCase, FindsWhatIsThereUnderAnyCase) {
  const CTempFolder folder;
  folder.Write("Art/Metal.RAW", "");
  EXPECT_EQ(FindAnyCase(folder.File("Art/Metal.RAW")), folder.File("Art/Metal.RAW"));
  EXPECT_TRUE(IsFile(FindAnyCase(folder.File("ART\\METAL.raw"))));
  EXPECT_EQ(FindAnyCase(folder.File("ART/METAL.ra")), "");
  EXPECT_EQ(FindAnyCase(folder.File("ART/METAL.raw/x")), "");
  EXPECT_EQ(FindAnyCase(""), "");
}

#ifndef _WIN32

TEST(FindAnyCase, PrefersTheExactNameThenByteOrder) {
  const CTempFolder folder;
  folder.Write("art/B.raw", "");
  folder.Write("ART/b.RAW", "");
  folder.Write("ART/b.raw", "");
  folder.Write("Art/only", "");
  folder.Write("ART/sub/x", "");
  const std::pair<const char*, const char*> kCases[] = {{"ART/B.RAW", "ART/b.RAW"},
                                                        {"ART\\b.raw", "ART/b.raw"},
                                                        {"art/b.raw", "art/B.raw"},
                                                        {"aRT/b.raw", "ART/b.raw"},
                                                        {"art/ONLY", "Art/only"},  // art and ART have none
                                                        {"aRt/SUB/../B.RAW", "ART/sub/../b.RAW"},
                                                        {"aRt//./SUB/", "ART//./sub/"},
                                                        {"aRt/ONLY/", ""},
                                                        {"art/../none", ""}};
  for (const auto& [asked, found] : kCases)
    EXPECT_EQ(FindAnyCase(folder.File(asked)), *found != '\0' ? folder.File(found) : "") << asked;
}

TEST(FindAnyCase, EndsSoonOnPathsFullOfAlternatives) {
  const CTempFolder folder;
  folder.Write("a/x", "");
  folder.Write("A/x", "");
  std::string path = folder.Path();
  for (int i = 0; i < 300; ++i)
    path += "/a/..";
  EXPECT_EQ(FindAnyCase(path + "/none"), "");
}

#endif

}  // namespace
}  // namespace veldra

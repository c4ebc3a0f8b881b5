#include <gtest/gtest.h>

#include "archive/podfile.h"
#include "archive/testpod.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

using namespace std::string_literals;

class CPodFileTest : public ::testing::Test {
 protected:
  bool Read(const std::string& bytes) { return pod.ReadDirectory(folder.Write("a.pod", bytes)); }

  CTempFolder folder;
  CScriptedQuestions questions;
  CMTMPODFile pod{questions};
};

TEST_F(CPodFileTest, ListsEntriesAndFindsTheLastOfEachNameInAnyCase) {
  ASSERT_TRUE(Read(MakePod(
      {{"ART\\Sky.raw\0SKYPAL\0more"s, "sky"}, {"DATA\\X.TXT\0SKYPAL"s, "four"}, {"art\\SKY.RAW", "other", 99}})));
  EXPECT_EQ(pod.GetFileCount(), 3);
  EXPECT_EQ(pod.GetPODSize(), 204u + 12);
  SPodEntryInfo info;
  ASSERT_TRUE(pod.GetDirEntryAt(0, info));
  EXPECT_EQ(info.name, "ART\\Sky.raw");
  EXPECT_EQ(info.trailing_name, "SKYPAL");
  EXPECT_EQ(info.offset, 204u);
  EXPECT_EQ(info.size, 3u);
  ASSERT_TRUE(pod.GetDirEntryAt(0x10001, info)) << "indices are of 16 bits";
  EXPECT_EQ(info.name, "DATA\\X.TXT");
  EXPECT_EQ(info.trailing_name, "<none>");
  EXPECT_FALSE(pod.GetDirEntryAt(3, info));

  EXPECT_EQ(pod.GetFileOffset("Art\\sKY.raw"), 211) << "the later of two";
  EXPECT_EQ(pod.GetFileSize("ART\\SKY.RAW"), 5) << "the last entry's is what is left, whatever its record says";
  EXPECT_EQ(pod.GetStoredSize("ART\\SKY.RAW"), 99u);
  EXPECT_EQ(pod.GetFileSizeAt(65536), 3);
  EXPECT_EQ(pod.GetFileSizeAt(3), -1);
  EXPECT_EQ(pod.GetFileOffset("SKY.RAW"), -1);
  EXPECT_EQ(pod.GetFileSize("NONE"), -1);
  EXPECT_EQ(pod.GetStoredSize("NONE"), 0u);
}

TEST_F(CPodFileTest, SizesFollowTheOffsetsAndNotTheSizeFields) {
  const std::string bytes = MakePod({{"A", "", 7, 300}, {"B", "", 7, 310}, {"C", "", 7, 305}});
  ASSERT_TRUE(Read(bytes));
  EXPECT_EQ(pod.GetFileSizeAt(0), 10);
  EXPECT_EQ(pod.GetFileSizeAt(1), 0xFFFFFFFB) << "305 - 310 in 32 bits";
  EXPECT_EQ(pod.GetFileSizeAt(2), static_cast<int64_t>(static_cast<uint32_t>(bytes.size() - 305)));
  EXPECT_FALSE(pod.ReadFile("B")) << "more than the file can fill is not allocated";
}

TEST_F(CPodFileTest, ReadFileDoesNotSeek) {
  const std::string bytes = MakePod({{"A", "first"}, {"B", "second"}});
  ASSERT_TRUE(Read(bytes));
  const auto block = pod.ReadFile("b");
  ASSERT_TRUE(block);
  EXPECT_EQ(block->Text(), bytes.substr(0, 6));
}

TEST_F(CPodFileTest, FailureLeavesCountAndFlagOfTheArchiveBefore) {
  ASSERT_TRUE(Read(MakePod({{"A", "first"}, {"B", "second"}})));
  const std::string missing = folder.File("none.pod");
  EXPECT_FALSE(pod.ReadDirectory(missing));
  EXPECT_EQ(questions.TakeMessageTexts(),
            std::vector<std::string>{"CMTMPODFile::ReadDirectory:\nError opening file:\n" + missing});
  EXPECT_TRUE(pod.IsLoaded());
  EXPECT_EQ(pod.GetFileCount(), 2);
  SPodEntryInfo info;
  EXPECT_FALSE(pod.GetDirEntryAt(0, info));
  EXPECT_EQ(pod.GetFileOffset("A"), -1);

  EXPECT_EQ(CMTMPODFile::GetPODFileNum(questions, missing), 0);
  EXPECT_EQ(questions.TakeMessageTexts(),
            std::vector<std::string>{"CMTMPODFile::GetPODFileNum:\nError opening file:\n" + missing});
  EXPECT_EQ(CMTMPODFile::GetPODFileNum(questions, folder.Write("many.pod", "\3\0\7\0"s)), 3) << "16 bits";
}

TEST_F(CPodFileTest, CountsAreBelievedOnlyWhenTheFileHoldsSoMany) {
  EXPECT_FALSE(pod.IsLoaded());
  EXPECT_EQ(pod.GetFileOffset("A"), -2);
  EXPECT_TRUE(Read(MakePod({})));
  SPodEntryInfo info;
  EXPECT_FALSE(pod.GetDirEntryAt(0, info));
  const std::string good = MakePod({{"A", ""}, {"B", ""}});
  ASSERT_TRUE(Read(good));
  for (const uint32_t count : {3u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x06666668u})
    EXPECT_FALSE(Read(MakePod({{"A", ""}, {"B", ""}}, count))) << count;
  for (size_t length = 0; length < good.size(); ++length)
    EXPECT_FALSE(Read(good.substr(0, length))) << length;
}

// --- the document
// -----------------------------------------------------------------------------------------------------

TEST(CPodDocument, ChecksEveryEntryAgainstTheArchive) {
  const CTempFolder folder;
  CPodDocument pod;
  SError error;
  // The directory ends at 404, the archive at 414.
  ASSERT_TRUE(pod.Load(folder.Write("b.pod", MakePod({{"MODELS\\A\\B.BIN", "0123456789"},
                                                      {"end", "", 0, 414},
                                                      {"behind", "", 0, 415},
                                                      {"outside", "", 1, 0xFFFFFFFF},
                                                      {"header", "", 1, 403},
                                                      {"empty", "", 0, 0},
                                                      {"long", "", 11, 404},
                                                      {"longest", "", 0xFFFFFFFF, 413}}))));
  EXPECT_EQ(pod.Comment(), "A comment");
  EXPECT_EQ(pod.Entries()[0].Folder(), "MODELS\\A");
  EXPECT_EQ(pod.Entries()[0].FileName(), "B.BIN");
  EXPECT_EQ(pod.Entries()[1].Folder(), "");
  EXPECT_EQ(pod.ReadEntry(0)->Text(), "0123456789");
  EXPECT_FALSE(pod.ReadEntry(0, &error, 9));
  std::vector<EPodFault> faults;
  for (const SPodEntry& entry : pod.Entries())
    faults.push_back(entry.fault);
  using enum EPodFault;
  EXPECT_EQ(faults, (std::vector{kNone, kNone, kOutside, kOutside, kDirectory, kNone, kTooLong, kTooLong}));
  EXPECT_FALSE(pod.ReadEntry(6, &error));
  EXPECT_FALSE(pod.Load(folder.File("none.pod"), &error));
  EXPECT_TRUE(pod.Entries().empty());
}

TEST(CPodDocument, FindsFilesByNameWithAndWithoutFolder) {
  const CTempFolder folder;
  CPodDocument pod;
  ASSERT_TRUE(pod.Load(folder.Write("a.pod", MakePod({{"ART\\SKY.RAW", "1"},
                                                      {"OLD\\sky.raw", "2"},
                                                      {"Art\\Sky.Raw", "3"},
                                                      {"UI\\\xC9T\xC9.BMP", "4"},
                                                      {"DATA\\B.TXT", "", 9},
                                                      {"\xC9\\\xC3\x89.BMP", "6"},
                                                      {"ART\\\x80\x9A.RAW", "7"}}))));
  EXPECT_EQ(pod.FindAll("sky.RAW"), (std::vector<size_t>{0, 1, 2}));
  EXPECT_EQ(pod.FindAll("art/sky.raw"), (std::vector<size_t>{0, 2}));
  EXPECT_EQ(pod.FindAll("\xC3\x89T\xC3\x89.bmp"), std::vector<size_t>{3}) << "as the user types a name of old";
  EXPECT_TRUE(pod.FindAll("KY.RAW").empty());
  EXPECT_EQ(pod.FindAll("\xE2\x82\xAC\xC5\xA0.raw"), std::vector<size_t>{6})
      << "the euro sign and a capital S with caron";
  EXPECT_EQ(pod.FindAll(pod.Entries()[5].Name()), std::vector<size_t>{5}) << "in two encodings";
  EXPECT_EQ(pod.FindFile("SKY.RAW"), 2u) << "the last in the folder of its type";
  EXPECT_FALSE(pod.FindFile("B.TXT")) << "faulty";
}

}  // namespace
}  // namespace veldra::testing

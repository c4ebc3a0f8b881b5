#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <random>
#include <utility>

#include "archive/podextract.h"
#include "archive/podfile.h"
#include "archive/podwriter.h"
#include "archive/testpod.h"
#include "platform/files.h"
#include "platform/text.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

using namespace std::string_literals;

class CPodWriterTest : public ::testing::Test {
 protected:
  ~CPodWriterTest() override { SetFileFault({}); }

  void Add(const std::string& name, const std::string& content) {
    sources.push_back({name, {folder.Write("in" + std::to_string(sources.size()), content)}});
  }
  bool Create() { return CreatePod(questions, path, sources); }

  CTempFolder folder;
  std::string path = folder.File("new.pod");
  std::vector<SPodSource> sources;
  CScriptedQuestions questions;
};

TEST_F(CPodWriterTest, WritesTheFormatByteForByte) {
  Add("sky.raw", "first");
  Add("sub/x.jpg", "");
  Add("any/where/Big.Trk", "third");
  ASSERT_TRUE(Create());
  std::string expected = "\3\0\0\0Compiled by Veldra Version 2.0.23 }"s;
  expected.resize(84);
  const auto record = [&](std::string name, char size, char offset) {
    name.resize(32);
    expected += name + size + "\0\0\0"s + offset + "\0\0\0"s;
  };
  record("ART\\SKY.RAW", 5, '\xCC');
  record("SUB\\X.JPG", 0, '\xD1');
  record("TRUCK\\BIG.TRK", 5, '\xD1');
  EXPECT_EQ(ReadTestFile(path), expected + "firstthird");
}

TEST_F(CPodWriterTest, RefusesNamesThatTheGameCannotUse) {
  const std::pair<const char*, std::string> rows[] = {
      {"README", "File \"README\" cannot be loaded.\nNo extension specified"},
      {"a/A.B", "File \"A.B\" cannot be loaded.\nNo extension specified"},
      {"ABCDEFGH.JPEG", "File \"ABCDEFGH.JPEG\" cannot be loaded.\nNo extension specified"},
      {"ABCDEFGHI.RAW", "File \"ABCDEFGHI.RAW\" cannot be loaded.\nFile name cannot exceed 8 characters"},
      {"C.N\xC3\xA9", ""},
      {"A\x1B.RAW", "Error loading file \"A\\x1B.RAW\""},
      {"CON.RAW", "Error loading file \"CON.RAW\""},
      {"aaaaaaaaaaaaaaaaaaaaaaaaa/X.JPG", ""},
      {"aaaaaaaaaaaaaaaaaaaaaaaaaa/X.JPG", "Error loading file \"X.JPG\""}};
  for (const auto& [name, text] : rows) {
    sources.clear();
    Add("GOOD.RAW", "good");
    Add(name, "data");
    EXPECT_EQ(Create(), text.empty()) << name;
    const std::vector<std::string> texts = questions.TakeMessageTexts();
    EXPECT_EQ(texts.empty() ? "" : texts[0], text);
    EXPECT_EQ(FileExists(path), text.empty());
    RemoveFile(path);
  }
}

TEST_F(CPodWriterTest, RefusesWhatCannotBeInOneArchive) {
  const std::string old = folder.Write("new.pod", "old");
  const auto refuse = [&](const char* text) {
    EXPECT_FALSE(Create());
    EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{text});
    EXPECT_EQ(ReadTestFile(old), "old");
    sources.clear();
  };
  sources = {{"NONE.RAW", {folder.File("none")}}};
  refuse("Error loading file \"NONE.RAW\"");
  sources = {{"DIR.RAW", {folder.Path()}}};
  refuse("Error loading file \"DIR.RAW\"");
  Add("a/X.RAW", "1");
  Add("b/x.raw", "2");
  refuse("Error loading file \"x.raw\"");
  sources = {{"NEW.TXT", {path}}};
  refuse("Error loading file \"NEW.TXT\"");
  // 84 + 2 × 40 + 1 + 4294967131 is one byte too many for an archive.
  Add("A.RAW", "1");
  sources.push_back({"B.RAW", {path, 0, 4294967131}});
  refuse("The archive would be longer than 4 GB, which its offsets cannot tell.");
  sources = {{"B.RAW", {path, 0, ~uint64_t{0} - 10}}};
  refuse("The archive would be longer than 4 GB, which its offsets cannot tell.");
  sources = {{"B.RAW", {path, 2, 2}}};
  refuse("Error loading file \"B.RAW\"");
}

TEST_F(CPodWriterTest, LeavesTheOldArchiveWhenAnythingFails) {
  for (const char* operation : {"open", "write", "sync", "close", "rename", "grow", "cancel"}) {
    folder.Write("new.pod", "old");
    sources.clear();
    Add("A.RAW", "data");
    Add("B.RAW", "more");
    const bool is_cancel = operation == "cancel"s;
    if (is_cancel) questions.CancelWorkAfter(1);
    bool grows = operation == "grow"s;
    SetFileFault([&](std::string_view each, std::string_view) {
      // The second source grows once its length has been written down.
      if (each == "write" && std::exchange(grows, false)) folder.Write("in1", "more and more");
      return each == operation ? ENOSPC : 0;
    });
    EXPECT_FALSE(Create()) << operation;
    SetFileFault({});
    questions.CancelWorkAfter(-1);
    EXPECT_EQ(questions.TakeMessageTexts().size(), is_cancel ? 0u : 1u) << operation;
    EXPECT_EQ(ReadTestFile(path), "old");
    EXPECT_EQ(ListDirectory(folder.Path()), (std::vector<std::string>{"in0", "in1", "new.pod"})) << operation;
  }
}

TEST_F(CPodWriterTest, AnArchiveCanBeMadeFromItself) {
  Add("A.RAW", "first");
  Add("B.RAW", "second");
  ASSERT_TRUE(Create());
  CPodDocument pod;
  ASSERT_TRUE(pod.Load(path));
  const SPodEntry& second = pod.Entries()[1];
  sources = {{std::string(second.Name()), {path, second.offset, second.length}}};
  Add("C.TXT", "third");
  ASSERT_TRUE(Create());
  ASSERT_TRUE(pod.Load(path));
  ASSERT_EQ(pod.Entries().size(), 2u);
  EXPECT_EQ(pod.Entries()[0].Name(), "ART\\B.RAW");
  EXPECT_EQ(pod.ReadEntry(0)->Text(), "second");
  EXPECT_EQ(pod.ReadEntry(1)->Text(), "third");
}

}  // namespace
}  // namespace veldra::testing

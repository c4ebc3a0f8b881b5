#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <numeric>
#include <sstream>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "archive/podextract.h"
#include "archive/podnames.h"
#include "archive/testpod.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

using namespace std::string_literals;

class CPodExtractTest : public ::testing::Test {
 protected:
  CPodExtractTest() { EXPECT_TRUE(MakeDirectories(destination)); }
  ~CPodExtractTest() override { SetFileFault({}); }

  void Load(const std::vector<STestEntry>& entries) {
    ASSERT_TRUE(pod.Load(folder.Write("a.pod", MakePod(entries))));
    request.entries.resize(entries.size());
    std::iota(request.entries.begin(), request.entries.end(), size_t{0});
  }
  std::string Extract() {
    request.destination = destination;
    result = ExtractPod(questions, pod, request);
    return result.Text();
  }
  std::string Content(const std::string& name) const { return ReadTestFile(JoinPath(destination, name)); }

  CTempFolder folder;
  std::string destination = folder.File("out");
  CPodDocument pod;
  SExtractRequest request;
  SExtractResult result;
  CScriptedQuestions questions;
};

/// Every path below FOLDER, folders and links too.
void ListAll(const std::string& folder, std::vector<std::string>& paths) {
  for (const std::string& name : ListDirectory(folder)) {
    paths.push_back(JoinPath(folder, name));
    if (IsDirectory(paths.back()) && !IsLink(paths.back())) ListAll(paths.back(), paths);
  }
}

TEST_F(CPodExtractTest, HostileNamesLeadNowhere) {
  const std::string names =
      "..\\x;../x;a/../../x;a\\..\\x;..;.;a\\.;.\\x;;\\;/;\\x;/abs;//x\\y;\\\\host\\share\\x;"
      "\\\\?\\C:\\x;\\\\.\\COM1;C:x;C:\\x;c:/x;C:;x:stream;a:b\\c;CON;con.txt;Nul.TXT;ART\\AUX;"
      "PRN .RAW;COM1.BIN;lpt9.a.b;COM0;COM\xB9.RAW;CONIN$;CLOCK$.TXT;CON\\X.RAW;x.;x ;X.RAW.;a. \\x;"
      "...;a\\..;a\\\\b;ART\\;a\tb;a\nb;\x1B[2J;x\x7F;a*b;a?b;a|b;<x>;\"x\";"
      "..\\..\\..\\..\\..\\..\\tmp\\x";
  std::istringstream each(names);
  std::vector<STestEntry> entries;
  for (std::string name; std::getline(each, name, ';');)
    entries.push_back({name, "bad"});
  ASSERT_EQ(entries.size(), 53u);
  entries.push_back({"ART\\GOOD.RAW", "good"});
  std::vector<std::string> before;
  ListAll(folder.Path(), before);
  for (const bool folders : {false, true}) {
    Load(entries);
    request.folders = folders;
    if (folders) {
      EXPECT_TRUE(RemoveFile(JoinPath(destination, "GOOD.RAW")));
    }
    EXPECT_EQ(Extract(), Format("Extracted 1 of %zu files", entries.size()));
    EXPECT_EQ(result.refused, entries.size() - 1);
    EXPECT_EQ(Content(folders ? "ART/GOOD.RAW" : "GOOD.RAW"), "good");
    ASSERT_EQ(questions.Messages().size(), 1u);
    const std::string said = questions.Messages()[0].text + questions.Messages()[0].details;
    for (const STestEntry& entry : entries)
      EXPECT_EQ(said.find('"' + DisplayName(entry.name) + "\": ") != std::string::npos, entry.data == "bad")
          << DisplayName(entry.name);
    EXPECT_EQ(said.find('\x1B'), std::string::npos);
    questions.TakeMessageTexts();
    std::vector<std::string> after;
    ListAll(folder.Path(), after);
    EXPECT_EQ(after.size(), before.size() + (folders ? 3 : 2)) << "the archive, the good file and its folder";
  }
  EXPECT_EQ(SafeRelativePath("\xC9T\xC9.RAW", false).name, "\xC3\x89T\xC3\x89.RAW") << "8-bit letters are letters";
  EXPECT_TRUE(SafeRelativePath("COM10.BIN", false).Ok());
  EXPECT_TRUE(SafeRelativePath("A B.C.D\\CONS.RAW", true).Ok());
}

#ifndef _WIN32
TEST_F(CPodExtractTest, LinksOfTheDestinationLeadNowhereElse) {
  const std::string outside = folder.File("outside");
  ASSERT_TRUE(MakeDirectories(outside) && MakeDirectories(destination + "/REAL"));
  const std::string secret = folder.Write("secret", "untouched");
  const auto link = [&](const std::string& to, const char* name) {
    ASSERT_EQ(symlink(to.c_str(), (destination + "/" + name).c_str()), 0);
  };
  link(outside, "OUT");
  link(folder.File("nowhere"), "GONE");
  link("REAL", "IN");
  link(secret, "FILE.RAW");
  link(folder.File("new"), "DANGLING.RAW");
  Load({{"OUT\\A.RAW", "1"},
        {"GONE\\A.RAW", "2"},
        {"IN\\A.RAW", "3"},
        {"FILE.RAW", "4"},
        {"DANGLING.RAW", "5"},
        {"OUT\\..\\B.RAW", "6"},
        {"OUT", "7"}});
  request.folders = true;
  questions.OnReplace("FILE.RAW", EReplaceAnswer::kYes).OnReplace("DANGLING.RAW", EReplaceAnswer::kYes);
  EXPECT_EQ(Extract(), "Extracted 2 of 7 files");
  EXPECT_EQ(questions.Messages().size(), 1u);
  EXPECT_FALSE(FileExists(destination + "/REAL/A.RAW")) << "a link inside could be made one that leads outside";
  EXPECT_EQ(Content("FILE.RAW"), "4");
  EXPECT_EQ(Content("DANGLING.RAW"), "5");
  EXPECT_FALSE(IsLink(destination + "/FILE.RAW")) << "a link is replaced itself";
  EXPECT_EQ(ReadTestFile(secret), "untouched");
  EXPECT_TRUE(ListDirectory(outside).empty());
  EXPECT_FALSE(FileExists(folder.File("new")) || FileExists(folder.File("nowhere")));
}

TEST_F(CPodExtractTest, LinksPlantedMeanwhileLeadNowhereElse) {
  const std::string outside = folder.File("outside");
  for (const char* moment : {"open", "write", "rename"}) {
    std::filesystem::remove_all(destination);
    ASSERT_TRUE(MakeDirectories(destination + "/A/B") && MakeDirectories(outside + "/B"));
    Load({{"A\\B\\1.RAW", "1"}, {"A\\B\\2.RAW", "2"}, {"C\\3.RAW", "3"}, {"A\\B\\4.RAW", "4"}});
    request.folders = true;
    bool planted = false;
    SetFileFault([&](std::string_view operation, std::string_view) {
      if (operation != moment || std::exchange(planted, true)) return 0;
      std::filesystem::rename(destination + "/A", destination + "/moved");
      std::filesystem::create_symlink(outside, destination + "/A");
      std::filesystem::create_symlink(outside, destination + "/C");
      return 0;
    });
    EXPECT_EQ(Extract(), "Extracted 2 of 4 files") << moment;
    SetFileFault({});
    std::vector<std::string> there;
    ListAll(outside, there);
    EXPECT_EQ(there.size(), 1u) << moment;
    EXPECT_EQ(Content("moved/B/2.RAW"), "2") << "what was being filled is still filled";
    ASSERT_EQ(questions.Messages().size(), 1u);
    EXPECT_NE(questions.Messages()[0].details.find("a link stands where it needs a folder"), std::string::npos);
    questions.TakeMessageTexts();
  }
}
#endif

TEST_F(CPodExtractTest, AsksAboutSharedBytesAndSaysWhenTheDiskIsFull) {
  std::vector<STestEntry> entries;
  for (int i = 0; i < 3000; ++i)
    entries.push_back({Format("%d.RAW", i), "", uint32_t{1} << 31, 3000 * 40 + 84});
  const std::string path = folder.Write("a.pod", MakePod(entries));
  std::filesystem::resize_file(path, (uint64_t{1} << 31) + 3000 * 40 + 84);
  ASSERT_TRUE(pod.Load(path));
  const std::string asked =
      "The files hold 6,442,450,944,000 bytes, 2999 times as much as their archive.\nExtract them all the same?";
  for (size_t i = 0; i < entries.size(); ++i)
    request.entries.push_back(i);
  questions.OnYesNo(asked, EAnswer::kNo).OnYesNo(asked, EAnswer::kYes);
  EXPECT_EQ(Extract(), "Extracted 0 of 3000 files");
  const std::string shared = "2,999 files have bytes in common with another one.";
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{shared});
  EXPECT_EQ(Extract(), "Extracted 0 of 3000 files");
  EXPECT_EQ(questions.TakeMessageTexts(), (std::vector<std::string>{shared, "There is not enough space on the disk."}));
  EXPECT_FALSE(result.done);
  EXPECT_TRUE(ListDirectory(destination).empty());
}

TEST_F(CPodExtractTest, EntriesThatGoToOnePlaceDoNotOverwriteEachOther) {
  ASSERT_TRUE(MakeDirectories(JoinPath(destination, "DIR.RAW")));
  Load({{"ART\\A.RAW", "first"},
        {"ART\\A.RAW", "again"},
        {"art\\a.raw", "case"},
        {"ART", "file"},
        {"B", "file"},
        {"B\\C.RAW", "below"},
        {"DIR.RAW", "folder"},
        {"\xE9.RAW", "1"},
        {"\xC9.RAW", "2"},
        {"D", "last"}});
  request.folders = true;
  EXPECT_EQ(Extract(), "Extracted 4 of 10 files");
  EXPECT_EQ(Content("ART/A.RAW"), "first");
  EXPECT_EQ(Content("B"), "file");
  EXPECT_EQ(Content("D"), "last");
  EXPECT_EQ(Content("\xC3\xA9.RAW"), "1");
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1u);
}

TEST_F(CPodExtractTest, FaultyEntriesAreSkippedWithTheirReason) {
  Load({{"BEHIND.RAW", "", 4, 0x7FFFFFFF}, {"GOOD.RAW", "good"}, {"LONG.RAW", "", 5000}, {"HEAD.RAW", "", 4, 80}});
  request.entries = {0, 1, 1, 2, 3, 1};
  EXPECT_EQ(Extract(), "Extracted 1 of 4 files") << "each counted once";
  EXPECT_FALSE(result.refused != 3 || !result.done);
  EXPECT_EQ(
      questions.TakeMessageTexts(),
      std::vector<std::string>{"3 files cannot be extracted:\n\"BEHIND.RAW\": it begins behind the archive's end\n"
                               "\"LONG.RAW\": it is longer than what the archive has left\n"
                               "\"HEAD.RAW\": its bytes are the archive's own directory"});
  EXPECT_TRUE(pod.Entries()[1].extracted);
  EXPECT_FALSE(pod.Entries()[0].extracted);
}

TEST_F(CPodExtractTest, StopsBeforeAnyQuestionWithoutArchiveOrDestination) {
  Load({{"A.RAW", "new"}});
  folder.Write("out/A.RAW", "old");
  const std::string path = pod.Path();
  const std::string bytes = ReadTestFile(path);
  destination = folder.File("none");
  Extract();
  destination = folder.File("out");
  folder.Write("a.pod", bytes + "more");
  Extract();
  ASSERT_TRUE(RemoveFile(path));
  Extract();
  EXPECT_FALSE(result.started);
  EXPECT_EQ(questions.TakeMessageTexts(),
            (std::vector<std::string>{"Please enter a valid destination directory.", "Failed to open POD file",
                                      "Failed to open POD file"}));
}

TEST_F(CPodExtractTest, EveryQuestionComesBeforeTheFirstByte) {
  using enum EReplaceAnswer;
  const struct {
    std::vector<EReplaceAnswer> answers;
    const char* text;
    const char* content;
  } rows[] = {{{kYes, kNo, kYes}, "Extracted 3 of 4 files", "n-oldn-n-"},
              {{kYes, kYes, kCancel}, "Extracted 0 of 4 files", "oldoldold"},
              {{kNo, kYesToAll}, "Extracted 3 of 4 files", "oldn-n-n-"},
              {{kYesToAll}, "Extracted 4 of 4 files", "n-n-n-n-"},
              {{kNo, kNo, kNo}, "Extracted 1 of 4 files", "oldoldoldn-"}};
  for (const auto& row : rows) {
    RemoveFile(folder.File("out/NEW.RAW"));
    const char* const names[] = {"A.RAW", "B.RAW", "C.RAW"};
    for (const char* name : names)
      folder.Write("out/"s + name, "old");
    Load({{"A.RAW", "n-"}, {"B.RAW", "n-"}, {"C.RAW", "n-"}, {"NEW.RAW", "n-"}});
    for (size_t i = 0; i < row.answers.size(); ++i)
      questions.OnReplace("\"" + JoinPath(destination, names[i]) + "\" already exists.\nReplace existing file?",
                          row.answers[i]);
    bool has_written = false;
    SetFileFault([&](std::string_view, std::string_view) { return has_written = true, 0; });
    EXPECT_EQ(Extract(), row.text);
    SetFileFault({});
    EXPECT_EQ(has_written, result.extracted > 0) << "Cancel comes before the first byte";
    std::string content;
    for (const char* name : {"A.RAW", "B.RAW", "C.RAW", "NEW.RAW"})
      if (FileExists(folder.File("out/"s + name))) content += Content(name);
    EXPECT_EQ(content, row.content);
  }
}

TEST_F(CPodExtractTest, AFailureHalfWayLeavesNoHalfFile) {
  for (const char* operation : {"open", "write", "close", "rename"}) {
    for (int at = 0; at < 3; ++at) {
      Load({{"A.RAW", "new"}, {"B.RAW", "new"}, {"C.RAW", "new"}});
      for (const char* name : {"A.RAW", "B.RAW", "C.RAW"})
        folder.Write("out/"s + name, "old");
      questions.OnReplace("A.RAW", EReplaceAnswer::kYesToAll);
      int calls = 0;
      SetFileFault(
          [&](std::string_view each, std::string_view) { return each == operation && calls++ == at ? ENOSPC : 0; });
      const bool skips = operation == "open"s;
      EXPECT_EQ(Extract(), Format("Extracted %d of 3 files", skips ? 2 : at)) << operation;
      SetFileFault({});
      EXPECT_EQ(result.done, skips);
      EXPECT_EQ(result.refused, 1u);
      const std::vector<std::string> texts = questions.TakeMessageTexts();
      ASSERT_EQ(texts.size(), 1u);
      EXPECT_EQ(texts[0] == "Failed to open destination file", skips);
      std::vector<std::string> there = ListDirectory(destination);
      EXPECT_EQ(there, (std::vector<std::string>{"A.RAW", "B.RAW", "C.RAW"})) << operation;
      for (const std::string& name : there)
        EXPECT_TRUE(Content(name) == "new" || Content(name) == "old");
    }
  }
}

TEST_F(CPodExtractTest, CancelStopsBetweenWholeFiles) {
  Load({{"A.RAW", "aaaa"}, {"B.RAW", "bbbb"}, {"C.RAW", "cccc"}});
  questions.CancelWorkAfter(3);
  EXPECT_EQ(Extract().substr(0, 10), "Extracted ");
  EXPECT_FALSE(result.done);
  EXPECT_EQ(ListDirectory(destination).size(), result.extracted);
  EXPECT_LT(result.extracted, 3u);
  for (const std::string& name : ListDirectory(destination))
    EXPECT_EQ(Content(name).size(), 4u);
}

}  // namespace
}  // namespace veldra::testing

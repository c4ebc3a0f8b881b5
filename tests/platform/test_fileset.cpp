#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <sstream>

#include "platform/bytes.h"
#include "platform/compress.h"
#include "platform/fileset.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/text.h"
#include "support/childtest.h"
#include "support/testfiles.h"

namespace veldra {

namespace {

using testing::CChildTest;
using testing::CTempFolder;
using ::testing::ElementsAre;
using testing::kDiskFull;
using testing::kReadOnlyDisk;
using testing::ReadTestFile;

// What a process of its own is to do: where, and until which call that changes the disk; -1 for none.
constexpr const char* kFolder = "VELDRA_TEST_FOLDER";
constexpr const char* kWork = "VELDRA_TEST_WORK";
constexpr const char* kCall = "VELDRA_TEST_CALL";
constexpr const char* kSettling = "settle";

using Paths = std::array<std::string, 2>;

Paths PathsIn(const std::string& folder) {
  return {JoinPath(folder, "model"), JoinPath(folder, "model.info")};
}

bool SaveAs(const Paths& paths, std::string_view content, SError* error = nullptr) {
  const std::span bytes(reinterpret_cast<const uint8_t*>(content.data()), content.size());
  const SNewFile files[] = {{paths[0], bytes}, {paths[1], bytes}};
  return ReplaceFiles(files, error);
}

std::string Variable(const char* name) {
  return EnvironmentVariable(name).value_or("");
}

/// Several contents, separated by blanks, are saved one after the other.
TEST(FileSetChild, DISABLED_SavesOrSettles) {
  int call = std::stoi(Variable(kCall));
  SetFileFault([&call](std::string_view, std::string_view) {
    if (call-- == 0) testing::KillThisProcess();
    return 0;
  });
  const Paths paths = PathsIn(Variable(kFolder));
  if (Variable(kWork) == kSettling) return SettleFiles(paths);
  std::istringstream contents(Variable(kWork));
  SError error;
  for (std::string content; contents >> content;)
    EXPECT_TRUE(SaveAs(paths, content, &error)) << error.what;
}

/// A file that belongs to another, and the set of both.
class CFileSetTest : public ::testing::Test {
 protected:
  ~CFileSetTest() override { SetFileFault({}); }

  void Start(bool has_old) {
    for (const std::string& name : ListDirectory(folder_.Path()))
      RemoveFile(folder_.File(name));
    folder_.Write("bystander.txt", "bystander");
    if (has_old) folder_.Write("model", "old");
    if (has_old) folder_.Write("model.info", "old");
  }
  bool Save(std::string_view content, SError* error = nullptr) const { return SaveAs(paths_, content, error); }
  /// "old old": what each file holds; "-" for none.
  std::string Read() const {
    std::string result;
    ReadFiles(paths_,
              [&](std::span<const std::string> places) { result = Content(places[0]) + ' ' + Content(places[1]); });
    return result;
  }
  /// Without the writing that would tidy the folder.
  void Put(const std::string& name, const std::string& content) const {
    std::ofstream(folder_.File(name), std::ios::binary) << content;
  }
  std::string OnDisk() const { return Content(paths_[0]) + ' ' + Content(paths_[1]); }
  static std::string Content(const std::string& path) {
    const auto bytes = ReadWholeFile(path);
    return bytes ? std::string(bytes->Text()) : "-";
  }
  /// WORK is the contents to save, or kSettling.
  std::map<std::string, std::string> Task(const std::string& work, int call) const {
    return {{kFolder, folder_.Path()}, {kWork, work}, {kCall, std::to_string(call)}};
  }
  /// In a process of its own that is killed at its CALL-th call that changes the disk; false when it got through
  /// before.
  bool RunAndKill(int call, const std::string& work) const {
    const int status = CChildTest("FileSetChild.DISABLED_SavesOrSettles", Task(work, call)).Wait();
    EXPECT_TRUE(status == 0 || status == CChildTest::kKilled) << status;
    return status == CChildTest::kKilled;
  }

  CTempFolder folder_;
  const Paths paths_ = PathsIn(folder_.Path());
};

TEST_F(CFileSetTest, AFaultAtAnyCallLeavesAllOldOrAllNew) {
  for (const bool has_old : {true, false}) {
    // Either that call alone fails or, as on a disk that is full, all after it do.
    for (const bool lasting : {false, true}) {
      const std::string old = has_old ? "old old" : "- -";
      int fault = 0;
      for (bool was_faulty = true; was_faulty; ++fault) {
        SCOPED_TRACE(Format("old %d, lasting %d, call %d", has_old, lasting, fault));
        Start(has_old);
        int left = fault;
        SetFileFault([&](std::string_view, std::string_view) {
          const bool fails = lasting ? left <= 0 : left == 0;
          --left;
          return fails ? kDiskFull : 0;
        });
        SError error;
        const bool saved = Save("new", &error);
        was_faulty = left < 0;
        EXPECT_EQ(Read(), saved ? "new new" : old);
        EXPECT_NE(saved, error.what.find("disk full") != std::string::npos);
        SetFileFault({});
        EXPECT_EQ(Read(), saved ? "new new" : old);
        EXPECT_EQ(OnDisk(), saved ? "new new" : old);
        if (saved || has_old) {
          EXPECT_TRUE(Save("next"));
          EXPECT_THAT(ListDirectory(folder_.Path()), ElementsAre("bystander.txt", "model", "model.info"));
        }
      }
      EXPECT_GT(fault, 12);
    }
  }
}

TEST_F(CFileSetTest, SeveralSetsAreAllOldOrAllNew) {
  const std::string content = "new";
  const std::span bytes(reinterpret_cast<const uint8_t*>(content.data()), content.size());
  const std::string other = folder_.File("other");
  const std::vector<SNewFile> sets[] = {{{paths_[0], bytes}, {paths_[1], bytes}},
                                        {{folder_.File("new/a"), bytes}, {folder_.File("new/b"), bytes}},
                                        {{other, bytes}}};
  for (const bool has_old : {true, false}) {
    int fault = 0;
    for (bool was_faulty = true; was_faulty; ++fault) {
      SCOPED_TRACE(Format("old %d, call %d", has_old, fault));
      Start(has_old);
      for (const std::string name : {"new/a", "new/b", "other"})
        RemoveFile(folder_.File(name));
      folder_.Write("new/bystander", "");
      if (has_old) folder_.Write("other", "old");
      int left = fault;
      SetFileFault([&](std::string_view, std::string_view) { return left-- == 0 ? kDiskFull : 0; });
      SError error;
      const bool saved = ReplaceFileSets(sets, &error);
      SetFileFault({});
      was_faulty = left < 0;
      const std::string old = has_old ? "old" : "-";
      EXPECT_EQ(Read() + ' ' + Content(other), saved ? "new new new" : old + ' ' + old + ' ' + old);
      EXPECT_EQ(Content(folder_.File("new/a")) + Content(folder_.File("new/b")), saved ? "newnew" : "--");
      EXPECT_NE(saved, error.what.find("disk full") != std::string::npos);
      if (was_faulty) continue;
      EXPECT_THAT(ListDirectory(folder_.Path()), ElementsAre("bystander.txt", "model", "model.info", "new", "other"));
      EXPECT_THAT(ListDirectory(folder_.File("new")), ElementsAre("a", "b", "bystander"));
    }
    EXPECT_GT(fault, 25);
    for (const std::string name : {"new/a", "new/b", "new/bystander", "other"})
      RemoveFile(folder_.File(name));
  }
}

TEST_F(CFileSetTest, AKilledSaveIsFinishedOrTakenBack) {
  for (const bool has_old : {true, false}) {
    const std::string old = has_old ? "old old" : "- -";
    bool was_killed = true;
    for (int call = 0; was_killed; ++call) {
      // Who sets it right can be killed as well.
      for (int second = -1; second < 2; ++second) {
        SCOPED_TRACE(Format("old %d, call %d, then %d", has_old, call, second));
        Start(has_old);
        was_killed = RunAndKill(call, "new");
        if (second >= 0) RunAndKill(second, kSettling);
        // Where nothing may be changed, the files are read where they are.
        SetFileFault([](std::string_view, std::string_view) { return kReadOnlyDisk; });
        const std::string there = Read();
        SetFileFault({});
        EXPECT_TRUE(there == old || there == "new new") << there;
        EXPECT_TRUE(was_killed || there == "new new");
        EXPECT_EQ(Read(), there);
        EXPECT_EQ(OnDisk(), there);
        EXPECT_TRUE(Save("next"));
        EXPECT_THAT(ListDirectory(folder_.Path()), ElementsAre("bystander.txt", "model", "model.info"));
      }
    }
  }
}

TEST_F(CFileSetTest, SaversNeverMix) {
  Start(true);
  constexpr int kSavers = 4;
  constexpr int kTurns = 25;
  std::list<CChildTest> savers;
  for (int number = 0; number < kSavers; ++number) {
    std::string contents;
    for (int turn = 0; turn < kTurns; ++turn)
      contents += Format("%s%d-%d", turn == 0 ? "" : " ", number, turn);
    savers.emplace_back("FileSetChild.DISABLED_SavesOrSettles", Task(contents, -1));
  }
  const auto is_pair = [](const std::string& both) {
    const size_t blank = both.find(' ');
    return both.substr(0, blank) == both.substr(blank + 1);
  };
  int mixed = 0;
  int failed = 0;
  for (CChildTest& saver : savers) {
    while (saver.IsRunning())
      mixed += is_pair(Read()) ? 0 : 1;
    failed += saver.Wait() == 0 ? 0 : 1;
  }
  EXPECT_EQ(mixed, 0);
  EXPECT_EQ(failed, 0);
  EXPECT_TRUE(is_pair(OnDisk())) << OnDisk();
  EXPECT_THAT(ListDirectory(folder_.Path()), ElementsAre("bystander.txt", "model", "model.info"));
}

/// A note that says what NAMES say: for each file of the set the new one and the old one.
std::string Note(const std::vector<std::string>& names) {
  CByteWriter out;
  out.WriteText("VELDSAVE");
  out.WriteU32(static_cast<uint32_t>(names.size() / 2));
  for (const std::string& name : names) {
    out.WriteU32(static_cast<uint32_t>(name.size()));
    out.WriteText(name);
  }
  out.WriteU32(Checksum(out.Bytes()));
  return {out.Bytes().begin(), out.Bytes().end()};
}

TEST_F(CFileSetTest, ANoteMovesNothingButItsOwnTemporaries) {
  Start(true);
  std::error_code no_links;
  std::filesystem::create_symlink("bystander.txt", folder_.File("link"), no_links);
  std::string name;
  for (int call = 0; name.empty() && RunAndKill(call, "new"); ++call)
    for (const std::string& each : ListDirectory(folder_.Path()))
      if (each.ends_with(".save")) name = each;
  ASSERT_FALSE(name.empty());
  const std::string tag = name.substr(8, 16);
  const std::string own = ".veldra-7fffffff-1-" + tag + ".tmp";
  const std::string other = ".veldra-7fffffff-1-0123456789abcdef.tmp";
  const std::string linked = ".veldra-7fffffff-2-" + tag + ".tmp";
  const std::string huge(100000, 'x');
  for (const std::string& note : {
           std::string("garbage"),
           std::string("VELDSAVE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),
           huge,
           Note({own, "", "bystander.txt", "bystander.txt"}),
           Note({own, "", own, "../" + own}),
           Note({own, "", other, other}),
           Note({own, "", linked, linked}),
           Note({own, ""}),
           Note({}),
           Note({own, "", own, "", own, ""}),
           Note({own, own, own, own}).substr(0, 40),
       }) {
    SCOPED_TRACE(note.substr(0, 100));
    Start(true);
    Put(own, "own");
    Put(other, "other");
    if (!no_links) std::filesystem::create_symlink("bystander.txt", folder_.File(linked));
    Put(name, note);
    EXPECT_EQ(Read(), "old old");
    EXPECT_TRUE(Save("new"));
    EXPECT_EQ(OnDisk(), "new new");
    EXPECT_FALSE(IsLink(paths_[1]));
    EXPECT_FALSE(FileExists(folder_.File(name)));
    EXPECT_EQ(Content(folder_.File("bystander.txt")), "bystander");
  }
  // What the note leads to by a link, or what is no file at all, is not written to.
  if (no_links) GTEST_SKIP() << "links cannot be made here: " << no_links.message();
  Start(true);
  std::filesystem::create_symlink("bystander.txt", folder_.File(name));
  EXPECT_EQ(Read(), "old old");
  EXPECT_TRUE(Save("new"));
  EXPECT_EQ(OnDisk(), "new new");
  EXPECT_EQ(Content(folder_.File("bystander.txt")), "bystander");
}

}  // namespace

}  // namespace veldra

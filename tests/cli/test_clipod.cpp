#include "archive/testpod.h"
#include "cli/clifixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using namespace std::string_literals;

class CCliPodTest : public CCliTest {
 protected:
  CCliPodTest() {
    folder.Write("a.pod",
                 MakePod({{"ART\\Sky.raw\0PAL"s, "sky"}, {"DATA\\SKY.TXT", "text", 9}, {"UI\\\xC9.BMP", "x"}}));
    EXPECT_TRUE(MakeDirectories(folder.File("out")));
  }
};

TEST_F(CCliPodTest, ListPrintsTheDirectory) {
  const SResult text = Run("pod list $/a.pod");
  EXPECT_EQ(text.status, 0);
  EXPECT_NE(text.out.find("         3        204  ART\\Sky.raw\n"), std::string::npos) << text.out;
  const auto list = nlohmann::json::parse(Run("pod list $/a.pod --json").out);
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0],
            (nlohmann::json{
                {"name", "ART\\Sky.raw"}, {"trailingName", "PAL"}, {"offset", 204}, {"size", 3}, {"storedSize", 3}}));
  EXPECT_EQ(list[1]["size"], 4) << "the computed one";
  EXPECT_EQ(list[1]["storedSize"], 9);
  EXPECT_EQ(list[2]["name"], "UI\\\xC3\x89.BMP");
  const SResult none = Run("pod list $/none.pod");
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err.find("Veldra - Error: CMTMPODFile::ReadDirectory:\nError opening file:\n" + folder.Path()), 0u);
}

TEST_F(CCliPodTest, ExtractWritesAllOrTheNamedOnes) {
  Expect({{"pod extract $/a.pod $/out sky.RAW", 0, "Extracted 1 of 1 files\n", ""},
          {"pod extract $/a.pod $/out sky.raw data/sky.txt", 1, "Extracted 0 of 2 files\n", "already exists"},
          {"pod extract $/a.pod $/out sky.raw --overwrite no", 0, "Extracted 0 of 1 files\n", "already exists"},
          {"pod extract $/a.pod $/out sky.raw --overwrite YES", 0, "Extracted 1 of 1 files\n", "already exists"},
          {"pod extract $/a.pod $/out --overwrite all", 1, "Extracted 2 of 3 files\n",
           "\"DATA\\SKY.TXT\": it is longer than"},
          {"pod extract $/a.pod $/out --folders art\\sky.raw", 0, "Extracted 1 of 1 files\n", ""},
          {"pod extract $/a.pod $/out s?Y.r* --overwrite all", 0, "Extracted 1 of 1 files\n", "already exists"},
          {"pod extract $/a.pod $/out ui/?.* *\\?.bmp --overwrite all", 0, "Extracted 1 of 1 files\n", "already"},
          {"pod extract $/a.pod $/out UI* *.r", 1, "", "\"UI*\" is not in the archive."},
          {"pod extract $/a.pod $/out none.raw", 1, "", "\"none.raw\" is not in the archive."},
          {"pod extract $/a.pod $/none", 1, "", "Veldra - Error: Please enter a valid destination directory."},
          {"pod extract $/none.pod $/out", 1, "", "Veldra - Error: Failed to open POD file"},
          {"pod extract $/Veldra.cfg $/out", 1, "", "Veldra - Error: Failed to load POD file"},
          {"pod extract $/a.pod $/out --overwrite maybe", 2, "", "--overwrite"},
          {"pod extract $/a.pod", 2, "", "DEST"}});
  EXPECT_EQ(ListDirectory(folder.File("out")), (std::vector<std::string>{"ART", "Sky.raw", "\xC3\x89.BMP"}));
  EXPECT_EQ(ReadTestFile(folder.File("out/ART/Sky.raw")), "sky");
}

TEST_F(CCliPodTest, ExtractTakesDependenciesAlong) {
  folder.Write("t.pod", MakePod({{"ART\\ROAD.RAW", "1"}, {"ART\\ROAD.ACT", "2"}, {"ART\\BARE.RAW", "3"}}));
  Expect({{"pod extract $/t.pod $/out road.raw bare.raw --deps", 0, "Extracted 3 of 3 files\n",
           "BARE.ACT, needed by BARE.RAW: not found"}});
}

TEST_F(CCliPodTest, CreateWritesAnArchiveOrNothing) {
  folder.Write("one.raw", "first");
  folder.Write("bigfoot.trk", "stock");
  folder.Write("toolongname.raw", "x");
  Expect({{"pod create $/new.pod $/one.raw $/bigfoot.trk", 0},
          {"pod list $/new.pod", 0, "TRUCK\\BIGFOOT.TRK"},
          {"pod create $/new.pod --skip-stock $/one.raw $/bigfoot.trk", 0, "Left out bigfoot.trk\n"},
          {"pod create $/no.pod $/one.raw $/toolongname.raw", 1, "",
           "Error: File \"toolongname.raw\" cannot be loaded.\nFile name cannot exceed 8 characters\n"},
          {"pod create $/no.pod --skip-stock $/bigfoot.trk", 1, "", "Every installation has all of these files."},
          {"pod create $/none/no.pod $/one.raw", 1, "", "Error: "}});
  EXPECT_EQ(Run("pod list $/new.pod").out.find("BIGFOOT"), std::string::npos);
  EXPECT_FALSE(FileExists(folder.File("no.pod")));
}

TEST_F(CCliPodTest, StockFilesAreThoseOfTheListBesideTheSettings) {
  Expect({{"pod is-stock bigfoot.trk TRUCK\\BIGFOOT.TRK sky.raw", 0,
           "bigfoot.trk: yes\nTRUCK\\BIGFOOT.TRK: no\nsky.raw: no\n"},
          {"pod stock-list $ $/Veldra.stock", 0, "RAW 1, expected 3812\n"},
          {"pod is-stock bigfoot.trk sky.raw", 0, "bigfoot.trk: no\nsky.raw: yes\n"},
          {"pod stock-list $/out $/Veldra.stock", 1, "", "Error: "}});
}

TEST_F(CCliPodTest, ChangesLeaveTheOtherEntriesAsTheyAre) {
  const std::string before = MakePod({{"ART\\Sky.raw\0PAL"s, "sky"}, {"DATA\\B.TXT", "text"}, {"ui\\C.BMP", "x"}});
  folder.Write("n.txt", "new");
  folder.Write("o.bmp", "other");
  const std::string sky = "ART\\Sky.raw\0PAL"s;
  const struct {
    const char* line;
    std::vector<STestEntry> after;
  } cases[] = {
      {"add $/p.pod $/n.txt", {{sky, "sky"}, {"DATA\\B.TXT", "text"}, {"ui\\C.BMP", "x"}, {"DATA\\N.TXT", "new"}}},
      {"add $/p.pod $/n.txt --as z.bmp",
       {{sky, "sky"}, {"DATA\\B.TXT", "text"}, {"ui\\C.BMP", "x"}, {"UI\\Z.BMP", "new"}}},
      {"remove $/p.pod b.txt *.raw", {{"ui\\C.BMP", "x"}}},
      {"rename $/p.pod b.txt d.bmp", {{sky, "sky"}, {"UI\\D.BMP", "text"}, {"ui\\C.BMP", "x"}}},
      {"replace $/p.pod ui/*.bmp $/o.bmp", {{sky, "sky"}, {"DATA\\B.TXT", "text"}, {"ui\\C.BMP", "other"}}},
  };
  for (const auto& c : cases) {
    folder.Write("p.pod", before);
    Expect({{std::string("pod ") + c.line}});
    EXPECT_EQ(ReadTestFile(folder.File("p.pod")), MakePod(c.after)) << c.line;
  }
  folder.Write("p.pod", before);
  Expect({{"pod cat $/p.pod b.txt", 0, "text", ""},
          {"pod extract $/p.pod - b.txt", 0, "text", ""},
          {"pod cat $/p.pod *", 1, "", "means 3 entries"},
          {"pod cat $/p.pod none", 1, "", "is not in the archive"},
          {"pod add $/p.pod $/o.bmp --as c.bmp", 1, "", "has a \"UI\\C.BMP\" already"},
          {"pod add $/p.pod $/n.txt --as verylongname.txt", 1, "", "cannot exceed 8 characters"},
          {"pod add $/p.pod $/n.txt $/o.bmp --as x.txt", 2, "", "--as"},
          {"pod remove $/p.pod b.txt none", 1, "", "is not in the archive"},
          {"pod rename $/p.pod b.txt c.bmp", 1, "", "already"},
          {"pod replace $/p.pod b.txt $/none", 1, "", "could not be opened"}});
  EXPECT_EQ(ReadTestFile(folder.File("p.pod")), before);
}

TEST_F(CCliPodTest, TestTellsWhatIsWrong) {
  folder.Write("good.pod", MakePod({{"ART\\A.RAW", "1"}, {"ART\\B.RAW", "2"}}));
  Expect({{"pod test $/good.pod", 0, "", ""}, {"pod test $/good.pod --json", 0, "[]\n", ""}});
  folder.Write("bad.pod", MakePod({{"ART\\A.RAW", "1234"},
                                   {"art\\a.raw", "x"},
                                   {"..\\B.RAW", "x"},
                                   {"ART\\LONGERNAME.RAW", "x"},
                                   {"ART\\C.RAW", "x", 9999},
                                   {"ART\\D.RAW", "", 2, 84 + 40 * 6 + 1}}));
  const auto findings = nlohmann::json::parse(Run("pod test $/bad.pod --json").out);
  std::string text;
  for (const auto& row : findings)
    text += row["kind"].get<std::string>() + row["entries"].dump() + "\n";
  EXPECT_EQ(text, "twice[0,1]\nunsafe-name[2]\nunusable-name[3]\nbeyond-end[4]\noverlap[0,5]\n");
  EXPECT_EQ(Run("pod test $/bad.pod").status, 1);
  const auto several = Run("pod test $/good.pod $/none.pod $/bad.pod --json");
  EXPECT_EQ(several.status, 1);
  EXPECT_EQ(nlohmann::json::parse(several.out), findings) << "one that is not there keeps none from being looked at";
}

}  // namespace
}  // namespace veldra::testing

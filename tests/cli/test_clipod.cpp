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
  const auto json = nlohmann::json::parse(Run("pod list $/a.pod --json").out);
  ASSERT_EQ(json.size(), 3u);
  EXPECT_EQ(json[0],
            (nlohmann::json{
                {"name", "ART\\Sky.raw"}, {"trailingName", "PAL"}, {"offset", 204}, {"size", 3}, {"storedSize", 3}}));
  EXPECT_EQ(json[1]["size"], 4) << "the computed one";
  EXPECT_EQ(json[1]["storedSize"], 9);
  EXPECT_EQ(json[2]["name"], "UI\\\xC3\x89.BMP");
  const SResult none = Run("pod list $/none.pod");
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err.find("Veldra - Error: CMTMPODFile::ReadDirectory:\nError opening file:\n" + folder.Path()), 0u);
}

TEST_F(CCliPodTest, ExtractWritesAllOrTheNamedOnes) {
  const struct {
    const char* line;
    int status;
    const char* out;
    const char* err;  ///< part of it
  } rows[] = {{"pod extract $/a.pod $/out sky.RAW", 0, "Extracted 1 of 1 files\n", ""},
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
              {"pod extract $/a.pod", 2, "", "DEST"}};
  for (const auto& row : rows) {
    const SResult result = Run(row.line);
    EXPECT_EQ(result.status, row.status) << row.line << result.err;
    EXPECT_EQ(result.out, row.out) << row.line;
    EXPECT_NE(result.err.find(row.err), std::string::npos) << row.line << result.err;
    EXPECT_EQ(result.err.empty(), *row.err == '\0') << row.line;
  }
  EXPECT_EQ(ListDirectory(folder.File("out")), (std::vector<std::string>{"ART", "Sky.raw", "\xC3\x89.BMP"}));
  EXPECT_EQ(ReadTestFile(folder.File("out/ART/Sky.raw")), "sky");
}

TEST_F(CCliPodTest, ExtractTakesDependenciesAlong) {
  folder.Write("t.pod", MakePod({{"ART\\ROAD.RAW", "1"}, {"ART\\ROAD.ACT", "2"}, {"ART\\BARE.RAW", "3"}}));
  const SResult result = Run("pod extract $/t.pod $/out road.raw bare.raw --deps");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "Extracted 3 of 3 files\n");
  EXPECT_NE(result.err.find("BARE.ACT, needed by BARE.RAW: not found"), std::string::npos) << result.err;
}

TEST_F(CCliPodTest, CreateWritesAnArchiveOrNothing) {
  folder.Write("one.raw", "first");
  folder.Write("bigfoot.trk", "stock");
  folder.Write("toolongname.raw", "x");
  SResult result = Run("pod create $/new.pod $/one.raw $/bigfoot.trk");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(Run("pod list $/new.pod").out.find("TRUCK\\BIGFOOT.TRK"), std::string::npos);
  result = Run("pod create $/new.pod --skip-stock $/one.raw $/bigfoot.trk");
  EXPECT_EQ(result.out, "Left out bigfoot.trk\n");
  EXPECT_EQ(Run("pod list $/new.pod").out.find("BIGFOOT"), std::string::npos);
  result = Run("pod create $/no.pod $/one.raw $/toolongname.raw");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "Veldra - Error: File \"toolongname.raw\" cannot be loaded.\nFile name cannot exceed 8 characters\n");
  EXPECT_FALSE(FileExists(folder.File("no.pod")));
  EXPECT_EQ(Run("pod create $/no.pod --skip-stock $/bigfoot.trk").status, 1);
  EXPECT_EQ(Run("pod create $/none/no.pod $/one.raw").status, 1);
}

TEST_F(CCliPodTest, StockFilesAreThoseOfTheListBesideTheSettings) {
  EXPECT_EQ(Run("pod is-stock bigfoot.trk TRUCK\\BIGFOOT.TRK sky.raw").out,
            "bigfoot.trk: yes\nTRUCK\\BIGFOOT.TRK: no\nsky.raw: no\n");
  const SResult made = Run("pod stock-list $ $/Veldra.stock");
  EXPECT_EQ(made.status, 0) << made.err;
  EXPECT_NE(made.out.find("RAW 1, expected 3812\n"), std::string::npos);
  EXPECT_EQ(Run("pod is-stock bigfoot.trk sky.raw").out, "bigfoot.trk: no\nsky.raw: yes\n");
  EXPECT_EQ(Run("pod stock-list $/out $/Veldra.stock").status, 1);
}

}  // namespace
}  // namespace veldra::testing

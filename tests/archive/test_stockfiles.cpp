#include <gtest/gtest.h>

#include "archive/filelists.h"
#include "archive/stockbuilder.h"
#include "archive/testpod.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {
namespace {

TEST(FileTypes, HaveTheGamesNumbersAndFolders) {
  const struct {
    int type;
    const char *extension, *folder;
  } rows[] = {{0, "TRK", "TRUCK"}, {1, "bin", "MODELS"},   {9, "DLL", "UI"},
              {18, "RA2", "DATA"}, {24, "Map", "FOG"},     {28, "KLP", "SOUND"},
              {32, "AAI", "ART"},  {31, "TRN", "TOURNEY"}, {35, "480", "DATA"}};
  for (const auto& row : rows) {
    EXPECT_EQ(TypeOfExtension(row.extension), row.type);
    EXPECT_EQ(FolderOfType(row.type), row.folder);
  }
  EXPECT_FALSE(TypeOfExtension("JPG"));
  EXPECT_FALSE(TypeOfExtension(""));
  EXPECT_EQ(FolderOfType(kTypeOther), "OTHER");
  EXPECT_EQ(TypeOfFile("X.Y.raw"), kTypeRaw);
  EXPECT_EQ(TypeOfFile("raw"), kTypeOther);
}

TEST(CStockFiles, KnowsBareNamesInAnyCaseByExtension) {
  const CStockFiles stock;
  for (const char* name : {"bigfoot.trk", "02CACTUS.RAW", "02cactus.act", "BAJA.RA5", "POWERBIG.480", "mtm2-fun.loc",
                           "Whirl.trn", "FI480.AAI", "SEX.MOD"})
    EXPECT_TRUE(stock.IsStockFile(name)) << name;
  for (const char* name : {"TRUCK\\BIGFOOT.TRK", "README", "A.B", ".TRK", "BIGFOOT.BIN", "BIGFOOT.JPG", "BIGFOOTTRK",
                           "BIGFOO.TRK", "", "POWERBIG.481"})
    EXPECT_FALSE(stock.IsStockFile(name)) << name;
}

TEST(CStockFiles, BuildsItsTablesOnce) {
  const CTempFolder folder;
  StockNames names;
  names[kTypeTrk] = {"MINE"};
  const std::vector<uint8_t> list = WriteStringList(names);
  folder.Write(kStockFileName, list);
  const CStockFiles own(folder.Path());
  EXPECT_TRUE(own.IsStockFile("mine.trk"));
  EXPECT_FALSE(own.IsStockFile("bigfoot.trk")) << "a list of one's own takes the place of the shipped one";
  EXPECT_EQ(own.Note(), "");
  folder.Write(kStockFileName, "broken");
  EXPECT_TRUE(own.IsStockFile("mine.trk")) << "read once";
  EXPECT_TRUE(CStockFiles(folder.Path()).IsStockFile("bigfoot.trk")) << "a broken one does not";
}

TEST(StringList, ReadsBackAndRefusesEveryOtherLength) {
  StockNames names;
  names[0] = {"A", "BB"};
  names[kFileTypeCount - 1] = {"CCC", ""};
  const std::vector<uint8_t> list = WriteStringList(names);
  EXPECT_EQ(list.size(), 144u + 2 + 3 + 4 + 1);
  EXPECT_EQ(list[0], 2);
  EXPECT_EQ(std::string(list.begin() + 144, list.begin() + 149), std::string("A\0BB\0", 5));
  EXPECT_EQ(ReadStringList(list), names);
  for (size_t length = 0; length < list.size(); ++length)
    EXPECT_FALSE(ReadStringList(std::span(list).first(length))) << length;
  std::vector<uint8_t> longer = list;
  longer.push_back(0);
  EXPECT_FALSE(ReadStringList(longer));
  std::vector<uint8_t> many = list;
  many[3] = 0xFF;
  EXPECT_FALSE(ReadStringList(many));
  EXPECT_TRUE(ReadStringList(PodZipFilesResource()));
}

TEST(StockList, IsMadeFromAllArchivesOfTheGame) {
  const CTempFolder folder;
  CScriptedQuestions questions;
  SStockList list;
  EXPECT_FALSE(WriteStockList(questions, folder.Path(), folder.File("out"), list));
  folder.Write("b.POD", MakePod({{"TRUCK\\zed.trk", "1"}, {"ART\\A.RAW", "2"}, {"X.JPG", "3"}}));
  folder.Write("a.pod", MakePod({{"TRUCK\\Able.Trk", "1"}, {"OTHER\\ZED.TRK", "2"}}));
  folder.Write("c.txt", "no archive");
  ASSERT_TRUE(WriteStockList(questions, folder.Path(), folder.File("out"), list));
  EXPECT_EQ(list.names[kTypeTrk], (std::vector<std::string>{"ABLE", "ZED"}));
  EXPECT_EQ(list.names[kTypeRaw], std::vector<std::string>{"A"});
  EXPECT_EQ(list.archives, 2u);
  EXPECT_EQ(list.CountsText().substr(0, 19), "TRK 2, expected 20\n");
  EXPECT_NE(list.CountsText().find("3 names from 2 archives, expected 9016\n"), std::string::npos);
  const std::string written = ReadTestFile(folder.File("out"));
  EXPECT_EQ(ReadStringList({reinterpret_cast<const uint8_t*>(written.data()), written.size()}), list.names);
  folder.Write("d.pod", "broken");
  EXPECT_FALSE(WriteStockList(questions, folder.Path(), folder.File("out"), list));
  EXPECT_EQ(ReadTestFile(folder.File("out")), written);
  EXPECT_EQ(questions.TakeMessageTexts(),
            (std::vector<std::string>{"There are no archives in \"" + folder.Path() + "\".", kFailedToLoadPod}));
}

TEST(FileLists, AreTidiedAndGiveTheirColorTables) {
  std::vector<std::string> names = {"b.raw", "", "A.RAW", "B.Raw", "c", "a.raw"};
  TidyFileList(names);
  EXPECT_EQ(names, (std::vector<std::string>{"B.RAW", "A.RAW", "C"}));
  EXPECT_EQ(ColorTablesOf(names), (std::vector<std::string>{"B.ACT", "A.ACT", "C.ACT"}));
}

}  // namespace
}  // namespace veldra::testing

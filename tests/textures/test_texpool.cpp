#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "textures/texpool.h"

namespace veldra::testing {
namespace {

class CTexPoolTest : public ::testing::Test {
 protected:
  CTexPoolTest() : act(folder.Write("t.act", std::string(15, '\0') + "\12\24\36" + std::string(750, '\0'))) {}
  /// The pool leaves its textures to others.
  ~CTexPoolTest() override {
    for (const auto& [key, entry] : pool.Textures()) {
      const std::unique_ptr<uint8_t, decltype(&std::free)> pixels(entry->pixels, &std::free);
      const std::unique_ptr<TexPoolEntry> owned(entry);
    }
  }

  CTempFolder folder;
  std::string act;
  CScriptedQuestions questions;
  CMTMTexPool pool{questions};
};

TEST_F(CTexPoolTest, ConvertsTheFirstPixelsToBlueGreenRed) {
  const std::string raw = folder.Write("a/Tex.raw", std::string("\5\0\5\5\0\5", 6) + "longer");
  EXPECT_EQ(pool.ReadTexACT(raw, 3, 2, act), 6);
  const TexPoolEntry& entry = *pool.Textures().at("TEX.RAW");
  EXPECT_EQ(entry.color_table, act);
  EXPECT_EQ(entry.width, 3);
  EXPECT_EQ(entry.height, 2);
  EXPECT_EQ(std::vector<uint8_t>(entry.pixels, entry.pixels + 9),
            (std::vector<uint8_t>{30, 20, 10, 0, 0, 0, 30, 20, 10}));
  EXPECT_EQ(pool.ReadTexACT("b\\tex.raw", 900, 900, "none"), 0) << "one file name is one texture: nothing is read";
  EXPECT_EQ(pool.Textures().size(), 1u);
}

TEST_F(CTexPoolTest, SaysWhatIsMissingOrTooSmallAndStaysAsItWas) {
  const std::string raw = folder.Write("t.raw", "123456");
  const std::string none = folder.File("none");
  const struct {
    std::string raw, act;
    int32_t width, height;
    std::string text;
  } rows[] = {{none, act, 2, 3, "Texture \"" + none + "\"\nnot found."},
              {raw, none, 2, 3, "Color Table \"" + raw + "\"\nnot found."},
              {folder.Path(), act, 2, 3, "Could not open \"" + folder.Path() + "\"."},
              {raw, act, 7, 1, "File \"" + raw + "\"\ntoo small for 7 x 1 texture."},
              {raw, act, 65536, 65536, "File \"" + raw + "\"\ntoo small for 65536 x 65536 texture."},
              {raw, act, -2, -3, "File \"" + raw + "\"\ntoo small for -2 x -3 texture."}};
  for (const auto& row : rows) {
    EXPECT_EQ(pool.ReadTexACT(row.raw, row.width, row.height, row.act), -1) << row.text;
    EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{"Texture Pool Error:\n" + row.text});
  }
  EXPECT_TRUE(pool.Textures().empty());
  EXPECT_EQ(pool.ReadTexACT(raw, 2, 3, folder.Write("short.act", "ab")), 6) << "that the table is there is enough";
  EXPECT_EQ(pool.ReadTexACT(folder.Write("empty.raw", ""), 0, 5, act), 0);
  EXPECT_EQ(pool.Textures().size(), 2u);
}

}  // namespace
}  // namespace veldra::testing

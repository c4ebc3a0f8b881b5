#include "cli/clifixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using CCliUsageTest = CCliTest;

TEST_F(CCliUsageTest, WrongUsageEndsWithTwoAndAHint) {
  WriteModel("m.bin", {});
  const char* const lines[] = {
      "",
      "frobnicate",
      "texture frobnicate",
      "info",
      "info $/m.bin extra",
      "info $/m.bin --face abc",
      "info $/m.bin --face",
      "--yes --no info $/m.bin",
      "--yes info $/m.bin --no",
      "--yes=false info $/m.bin",
      "--blank-texture 100 info $/m.bin",
      "--blank-texture 0x40 info $/m.bin",
      "--unknown-face 0x20 info $/m.bin",
      "--unknown-face 0 info $/m.bin",
      "--unknown-face perhaps info $/m.bin",
      "convert $/m.bin $/o.bin",
      "convert $/m.bin $/o.bin --to dxf",
      "convert $/m.bin $/o.bin --to hellbender --scale big",
      "edit $/m.bin $/o.bin",
      "edit $/m.bin $/o.bin --scale 1,2",
      "edit $/m.bin $/o.bin --scale 1,2,nan",
      "edit $/m.bin $/o.bin --translate 1,2,3.5",
      "edit $/m.bin $/o.bin --translate 1,2,99999999999",
      "edit $/m.bin $/o.bin --rotate w,90",
      "edit $/m.bin $/o.bin --rotate x",
      "edit $/m.bin $/o.bin --mirror xy",
      "edit $/m.bin $/o.bin --merge -1",
      "edit $/m.bin $/o.bin --face-type 0x18",
      "edit $/m.bin $/o.bin --face-type 0x18,0x20",
      "edit $/m.bin $/o.bin --center=no",
      "edit $/m.bin $/o.bin --center --explode",
      "texture",
      "texture export $/a.raw",
      "render $/m.bin $/o.png --size 800",
      "render $/m.bin $/o.png --size 0x600",
      "render $/m.bin $/o.png --size 800x16385",
      "render $/m.bin $/o.png --mode lines",
      "render $/m.bin $/o.png --rotate 1,2",
      "render $/m.bin $/o.png --background 12345g",
      "render $/m.bin $/o.png --background -12345",
  };
  for (const char* line : lines) {
    SCOPED_TRACE(line);
    const SResult result = Run(line);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("--help"), std::string::npos) << result.err;
  }
  EXPECT_FALSE(FileExists(folder.File("o.bin")) || FileExists(folder.File("o.png")));
}

TEST_F(CCliUsageTest, WhatIsWrongIsNamedWithTheNearestKnownWord) {
  const std::pair<const char*, const char*> lines[] = {
      {"inof m.bin", "\"inof\" was not expected, did you mean \"info\"?\nRun with"},
      {"frobnicate", "\"frobnicate\" was not expected\nRun with"},
      {"texture EXPROT", "\"EXPROT\" was not expected, did you mean \"export\"?\n"},
      {"info m.bin b --fase=1 c",
       "\"b\" was not expected\n\"--fase=1\" was not expected, did you mean \"--face\"?\n\"c\" was not"},
      {"info m.bin --pallete x", "\"--pallete\" was not expected, did you mean \"--palette\"?\n"},
      {"convert a b --too mtm", "did you mean \"--to\"?\n\"mtm\" was not expected\n--to is required\n"},
      {"render a b --mode texturd", "--mode: \"texturd\" is none of vertices|wireframe|solid|textured, did you mean "},
      {"render a b --size 99999x2", "--size: \"99999x2\" has a side that is not from 1 to 16384\n"},
      {"info m.bin --yes --no", "--no: --yes and --no exclude each other\n"},
  };
  for (const auto& [line, message] : lines)
    EXPECT_NE(Run(line).err.find(message), std::string::npos) << line << '\n' << Run(line).err;
}

TEST_F(CCliUsageTest, ProgramOptionsMayStandBehindTheCommand) {
  WriteModel("m.bin", {});
  folder.Write("Veldra.cfg", "");
  for (const char* line : {"--art $ info $/m.bin", "info --art $ $/m.bin", "info $/m.bin --art=$"})
    EXPECT_EQ(Run(line).status, 0) << line;
  EXPECT_EQ(Run("info $/m.bin").status, 1);
  EXPECT_EQ(Run("info $/m.bin --art $ --cfg $/none.cfg").status, 0) << "the defaults";
}

TEST_F(CCliUsageTest, HelpAndVersionGoToStandardOutput) {
  const std::pair<const char*, const char*> lines[] = {
      {"--help", "convert"},          {"info --help", "--vertex"},   {"dump --help", "OUT"},
      {"edit --help", "--face-type"}, {"texture --help", "import"},  {"texture import --help", "--palette"},
      {"render --help", "--rotate"},  {"convert --help", "--scale"}, {"-h", "--unknown-face"},
  };
  for (const auto& [line, word] : lines) {
    SCOPED_TRACE(line);
    const SResult result = Run(line);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find(word), std::string::npos) << result.out;
  }
  EXPECT_EQ(Run("--version").out, "2.0.23\n");
  EXPECT_EQ(Run("--version").status, 0);
}

TEST_F(CCliUsageTest, OutputThatCannotBeWrittenEndsWithOne) {
  WriteModel("m.bin", {});
  folder.Write("t.raw", std::string(64 * 64, '\0'));
  ASSERT_EQ(Run("texture export $/t.raw $/t.png").status, 0);
  for (const char* line :
       {"dump $/m.bin $/no/o", "json $/m.bin $/no/o", "textures $/m.bin $/no/o", "convert $/m.bin $/no/o --to mtm",
        "convert $/m.bin $/no/o --to obj", "edit $/m.bin $/no/o --center", "texture export $/t.raw $/no/o",
        "dump $/m.bin $", "info $/m.bin --cfg $", "texture import $/t.png $/no/o.raw",
        "convert $/m.bin $ --to backdrop"}) {
    SCOPED_TRACE(line);
    const SResult result = Run(line);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.rfind("Veldra - Error: ", 0), 0U) << result.err;
  }
  for (const char* words : {"dump m.bin ", "edit --center m.bin ", "texture import t.png "}) {
    std::vector<std::string> arguments = SplitText(words, ' ');
    std::ostringstream out, err;
    EXPECT_EQ(RunCli(arguments, out, err), 1) << words;
    EXPECT_NE(err.str().find(" is empty. What is written needs a name.\n"), std::string::npos) << err.str();
  }
  std::ostringstream full;
  std::ostringstream err;
  full.setstate(std::ios::badbit);
  EXPECT_EQ(RunCli({"--art", folder.Path(), "info", folder.File("m.bin")}, full, err), 1);
  EXPECT_NE(err.str(), "");
}

}  // namespace
}  // namespace veldra::testing

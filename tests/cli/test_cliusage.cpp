#include "archive/testpod.h"
#include "cli/clifixture.h"
#include "cli/command.h"
#include "cli/globaloptions.h"
#include "cli/manual.h"
#include "platform/files.h"
#include "platform/text.h"

namespace veldra::testing {
namespace {

using CCliUsageTest = CCliTest;

TEST_F(CCliUsageTest, WrongUsageIsNamedWithTheNearestKnownWord) {
  WriteModel("m.bin", {});
  const std::pair<const char*, const char*> rows[] = {
      {"inof m.bin", "\"inof\" was not expected, did you mean \"info\"?\nRun with"},
      {"frobnicate", "\"frobnicate\" was not expected\nRun with"},
      {"texture EXPROT", "\"EXPROT\" was not expected, did you mean \"export\"?\n"},
      {"info m.bin b --fase=1 c",
       "\"b\" was not expected\n\"--fase=1\" was not expected, did you mean \"--face\"?\n\"c\" was not"},
      {"info m.bin --pallete x", "\"--pallete\" was not expected, did you mean \"--palette\"?\n"},
      {"convert a b --too mtm", "did you mean \"--to\"?\n\"mtm\" was not expected\n--to is required\n"},
      {"render a b --mode texturd", "--mode: \"texturd\" is none of vertices|wireframe|solid|textured, did you mean "},
      {"render a b --size 99999x2", "--size: \"99999x2\" has a side that is not from 1 to 16384\n"},
      {"info m.bin --yes --no", "--no: --yes and --no exclude each other\n"}};
  for (const auto& [line, message] : rows)
    Expect({{line, 2, "", message}});
  const std::pair<std::string, std::vector<std::string>> malformed[] = {
      {"", {"", "info", "--yes info $/m.bin --no", "texture", "texture export $/a.raw"}},
      {"info $/m.bin ",
       {"extra", "--face abc", "--face", "--yes=false", "--blank-texture 100", "--blank-texture 0x40",
        "--unknown-face 0x20", "--unknown-face 0", "--unknown-face perhaps"}},
      {"convert $/m.bin $/o.bin ", {"", "--to dxf", "--to hellbender --scale big"}},
      {"edit $/m.bin $/o.bin ",
       {"", "--scale 1,2", "--scale 1,2,nan", "--translate 1,2,3.5", "--translate 1,2,99999999999", "--rotate w,90",
        "--rotate x", "--mirror xy", "--merge -1", "--face-type 0x18", "--face-type 0x18,0x20", "--center=no",
        "--center --explode"}},
      {"render $/m.bin $/o.png ",
       {"--size 800", "--size 0x600", "--size 800x16385", "--mode lines", "--rotate 1,2", "--background 12345g",
        "--background -12345"}}};
  for (const auto& [command, ends] : malformed)
    for (const std::string& end : ends)
      Expect({{command + end, 2, "", "--help"}});
  EXPECT_FALSE(FileExists(folder.File("o.bin")) || FileExists(folder.File("o.png")));
}

TEST_F(CCliUsageTest, ProgramOptionsMayStandBehindTheCommand) {
  folder.Write("models/x", "");
  WriteModel("models/m.bin", {});
  folder.Write("Veldra.cfg", "");
  Expect({{"--art $ info $/models/m.bin", 0, "Number of"},
          {"info --art $ $/models/m.bin", 0, "Number of"},
          {"info $/models/m.bin --art=$", 0, "Number of"},
          {"info $/models/m.bin --art $ --cfg $/none.cfg", 1, "", "none.cfg\" could not be read."},
          {"info $/models/m.bin", 1, "", "ROAD.RAW"}});
}

/// The help of COMMAND, which stands behind LINE, and of those in it.
void ExpectHelp(const SCommandRow& command, const std::vector<std::string>& line) {
  std::vector<std::string> words = line;
  words.push_back("--help");
  std::ostringstream out, err;
  EXPECT_EQ(RunCli(words, out, err), 0);
  EXPECT_EQ(err.str(), "");
  for (const SOptionRow& option : command.options)
    EXPECT_NE(out.str().find(option.name + (option.IsFlag() ? " " : " " + option.form)), std::string::npos)
        << out.str();
  for (const SCommandRow& inner : command.commands) {
    EXPECT_NE(out.str().find("\n  " + inner.name + " "), std::string::npos) << out.str();
    words.back() = inner.name;
    ExpectHelp(inner, words);
  }
}

TEST_F(CCliUsageTest, HelpAndVersionGoToStandardOutput) {
  SGlobalOptions options;
  ExpectHelp(Program(options), {});
  EXPECT_EQ(Run("-h").out, Run("--help").out);
  EXPECT_EQ(Run("--version").out, "2.0.23\n");
}

TEST(CliManual, IsMadeOfTheRows) {
  const SCommandRow group = {
      .name = "pod",
      .help = "Archives",
      .commands = {{.name = "list",
                    .help = "It's a \\ list",
                    .options = {{.name = "POD", .form = "", .help = "An archive", .take = {}, .required = true},
                                {.name = "--as", .form = "a|b", .help = "How", .take = {}, .words = {"a", "b"}}}}}};
  const SCommandRow program = {.name = "p-cli", .help = "", .options = {}, .commands = {group}};
  const std::pair<std::string, std::vector<const char*>> cases[] = {
      {ManualPage(program, "1.2", {.summary = "does", .description = ".text", .files = "", .see_also = "q(1)"}),
       {".TH P\\-CLI 1 \"\" \"Veldra 1.2\"", "\n\\&.text\n", ".SS \"pod list POD\"\nIt's a \\e list.\n",
        "\\fB\\-\\-as\\fR \\fIa|b"}},
      {BashCompletion(program),
       {"':pod') command='pod' ;;", "'pod:list') command='pod list' ;;", "'pod list:--as') words='a b'",
        "'pod list':-*) words='--help --as'", "complete -o default -F _p_cli p-cli"}},
      {ZshCompletion(program), {"#compdef p-cli\n", "'list:It'\\''s a \\ list'", "'pod list:--as') compadd -- a b"}},
      {FishCompletion(program),
       {"-a list -d 'It\\'s a \\\\ list'",
        "__fish_seen_subcommand_from pod; and __fish_seen_subcommand_from list' -l as"}}};
  for (const auto& [text, parts] : cases)
    for (const char* part : parts)
      EXPECT_NE(text.find(part), std::string::npos) << part << "\nis not in\n" << text;
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
    Expect({{line, 1, "", "Veldra - Error: "}});
  }
  for (const char* line : {"dump m.bin ''", "edit --center m.bin ''", "texture import t.png ''"})
    Expect({{line, 1, "", " is empty. What is written needs a name.\n"}});
  std::ostringstream full;
  std::ostringstream err;
  full.setstate(std::ios::badbit);
  EXPECT_EQ(RunCli({"--art", folder.Path(), "info", folder.File("m.bin")}, full, err), 1);
  EXPECT_NE(err.str(), "");
}

#ifndef _WIN32  // where no file can have such a name

/// Characters that a terminal would obey, those that turn text round, and a line of the file's own.
constexpr std::string_view kHostile = "\x1B\x9B\xE2\x80\xAE\nA";

TEST_F(CCliUsageTest, HostileNamesNeverReachTheTerminal) {
  const std::string name(kHostile);
  WriteModel("m.bin", {.texture = name + ".RAW"});
  WriteModel("none.bin", {.texture = name + ".RAX"});
  ASSERT_TRUE(RemoveFile(folder.File(name + ".RAX")));
  folder.Write("m.bin.info", "1\nX\x1B\x9B\n0\n1\nY\xE2\x80\xAE\n0\n0\n");
  folder.Write("t.trk",
               "MTM2 truckName\r\n" + std::string("\x1B\x9B\xE2\x80\xAE") + "\r\ntruckModelBaseName\r\n\x1B\x9B\r\n");
  folder.Write("w.obj",
               "mtllib \x1B\x9B.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\ng \x1B\x9B\nusemtl \x1B\nf 1 2 3\nf 1 \x1B\x9B 3\n");
  folder.Write("p.pod", MakePod({{name + ".RAW", "x"}, {"ART\\\xC2\x9B.RAW", "x"}}));
  for (const char* line :
       {"info $/m.bin --face 0", "dump $/m.bin", "json $/m.bin", "textures $/m.bin", "info $/none.bin",
        "truck show $/t.trk", "truck show $/t.trk --json", "truck deps $/t.trk", "--no truck pack $/t.trk $/t.pod",
        "pod list $/p.pod", "pod list $/p.pod --json", "pod extract $/p.pod $", "pod extract $/p.pod $ \x1B",
        "pod is-stock \x1B\x9B", "pod create $/q.pod $/\x1B\x9B", "import obj $/w.obj $/w.bin", "info $/\x1B\x9B",
        "\x1B\x9B", "info --\x1B\x9B"}) {
    const SResult result = Run(line);
    const std::string all = result.out + result.err;
    EXPECT_FALSE(all.empty()) << line;
    EXPECT_EQ(DisplayText(all), all) << line;
    EXPECT_EQ(all.find("\nA.RA"), std::string::npos) << line << ": a name makes no line";
  }
  EXPECT_EQ(nlohmann::json::parse(Run("pod list $/p.pod --json").out)[0]["name"], ToUtf8(name + ".RAW"));
}

#endif

}  // namespace
}  // namespace veldra::testing

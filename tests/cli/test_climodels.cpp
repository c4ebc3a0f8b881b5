#include "cli/clifixture.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/png.h"

namespace veldra::testing {
namespace {

class CCliModelsTest : public CCliTest {
 protected:
  /// Off the centre, with an unused vertex and a texture of 128: each save check has a question.
  void WriteBadModel() {
    WriteModel("bad.bin",
               {.points = {{0, 0, 0}, {10, 0, 0}, {10, 20, 0}, {5, 5, 5}}, .texture = "BIG.RAW", .width = 128});
  }
};

TEST_F(CCliModelsTest, ReportsGoToStandardOutputOrAFile) {
  WriteModel("Truck.bin", {});
  const std::pair<const char*, const char*> reports[] = {
      {"dump", "Model Name - Truck.bin\nNumber of Vertices - 3\n"}, {"json", "{"}, {"textures", "ROAD.RAW\n"}};
  for (const auto& [command, start] : reports) {
    const SResult printed = Run(std::string(command) + " $/Truck.bin");
    EXPECT_EQ(printed.status, 0);
    EXPECT_EQ(printed.out.rfind(start, 0), 0U) << printed.out;
    const SResult written = Run(std::string(command) + " $/Truck.bin $/report");
    EXPECT_EQ(written.out, "");
    EXPECT_EQ(ReadTestFile(folder.File("report")), printed.out);
  }
}

TEST_F(CCliModelsTest, InfoDescribesAFaceAndAVertexThatExist) {
  WriteModel("m.bin", {});
  const SResult both = Run("info $/m.bin --face 0 --vertex=2");
  EXPECT_EQ(both.status, 0);
  EXPECT_NE(both.out.find("INFORMATION FOR FACE# 0\n"), std::string::npos);
  EXPECT_NE(both.out.find("INFORMATION FOR VERTEX# 2\n   Position: 10,10,0\n"), std::string::npos);
  for (const char* line : {"info $/m.bin --face 1", "info $/m.bin --face -1", "info $/m.bin --vertex 3"})
    Expect({{line, 1, "", "the model has "}});
}

TEST_F(CCliModelsTest, ConvertWritesTheKindAskedFor) {
  WriteModel("m.bin", {.type = kFaceTransparentMtm2, .scale_word = 0x18000});
  const struct {
    const char* line;
    int type, scale;
  } cases[] = {{"convert $/m.bin $/o.bin --to mtm", 0x33, 0x10000},
               {"convert $/m.bin $/o.bin --to backdrop", 0x11, 0x10000},
               {"--no convert $/m.bin $/o.bin --to hellbender", 0x33, 0x18000},
               {"--yes convert $/m.bin $/o.bin --to hellbender --scale 0.1", 0x18, 6553},
               {"--yes convert $/m.bin $/o.bin --to hellbender --scale=-.5", 0x18, -32768}};
  folder.Write("Veldra.cfg", "ARTDIR " + folder.Path() + "\nSCALEFACTOR 7\nSAVETODEFDIR 1\nBINDIR " + folder.Path());
  for (const auto& c : cases) {
    SCOPED_TRACE(c.line);
    RemoveFile(folder.File("o.bin"));
    EXPECT_EQ(Run(c.line).status, 0);
    const nlohmann::json model = JsonOf("o.bin");
    EXPECT_EQ(model["faces"][0]["type"], c.type);
    EXPECT_EQ(model["scale"], c.scale);
  }
  EXPECT_EQ(Run("convert $/m.bin $/m.obj --to obj").status, 0);
  EXPECT_NE(ReadTestFile(folder.File("m.obj")).find("\nf 1 2 3\n"), std::string::npos);

  RemoveFile(folder.File("o.bin"));
  EXPECT_EQ(Run("convert $/m.bin $/o.bin --to hellbender").status, 1) << "the face types' question is cancelled";
  EXPECT_EQ(Run("--yes convert $/m.bin $/o.bin --to hellbender --scale 32768").status, 1);
  EXPECT_FALSE(FileExists(folder.File("o.bin")));
}

TEST_F(CCliModelsTest, SaveChecksAreAnsweredByTheOptions) {
  WriteBadModel();
  const std::string load = "This model uses a texture size not supported by MTM2.";
  const std::string centered = "Veldra: Model is not centered along the vertical axis.";
  const std::string unused = "Veldra: This model contains unused vertices";
  const struct {
    const char* options;
    const char* settings;
    int status;
    size_t vertices;
    int first_y;
    std::string asked;
  } cases[] = {{"", "", 1, 0, 0, load},
               {"", "TEXTURESIZEMSG 0\n", 1, 0, 0, centered},
               {"", "TEXTURESIZEMSG 0\nNOTCENTEREDMSG 0\n", 1, 0, 0, unused},
               {"", "TEXTURESIZEMSG 0\nNOTCENTEREDMSG 0\nUNUSEDVERTSMSG 0\n", 0, 4, 0, ""},
               {"--no ", "TEXTURESIZEMSG 0\n", 0, 4, 0, centered},
               {"--no ", "", 1, 0, 0, load},
               {"--yes ", "", 0, 3, -10, load}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.options) + c.settings);
    RemoveFile(folder.File("o.bin"));
    folder.Write("Veldra.cfg", "ARTDIR " + folder.Path() + "\n" + c.settings);
    const SResult result = Run(std::string(c.options) + "convert $/bad.bin $/o.bin --to mtm");
    EXPECT_EQ(result.status, c.status);
    EXPECT_NE(result.err.find(c.asked), std::string::npos) << result.err;
    EXPECT_EQ(FileExists(folder.File("o.bin")), c.status == 0);
    if (c.status != 0) continue;
    folder.Write("Veldra.cfg", "ARTDIR " + folder.Path() + "\nTEXTURESIZEMSG 0\n");
    EXPECT_EQ(JsonOf("o.bin")["vertices"].size(), c.vertices);
    EXPECT_EQ(JsonOf("o.bin")["vertices"][0][1], c.first_y);
  }
}

TEST_F(CCliModelsTest, UnknownFacesFollowTheOption) {
  // One triangle without a texture, then one whose type nobody knows.
  CByteWriter bytes;
  for (const uint32_t word : {0x14U, 0x10000U, 2U, 0U, 3U, 0U, 0U, 0U, 9U, 0U, 0U, 9U, 9U, 0U})
    bytes.WriteU32(word);
  for (const uint32_t type : {0x19U, 0x77U}) {
    for (const uint32_t word : {type, 3U, 0U, 0U, 65535U, 0U})
      bytes.WriteU32(word);
    for (const uint32_t vertex : {0U, 1U, 2U}) {
      bytes.WriteU32(vertex);
      if (type == 0x77) bytes.WriteU32(0), bytes.WriteU32(0);
    }
  }
  bytes.WriteU32(0);
  folder.Write("odd.bin", std::vector<uint8_t>(bytes.Bytes().begin(), bytes.Bytes().end()));
  for (const auto& [option, status] : std::map<std::string, int>{
           {"", 1}, {"--unknown-face abort ", 1}, {"--unknown-face ignore ", 0}, {"--unknown-face 0x18 ", 1}}) {
    const SResult result = Run(option + "json $/odd.bin");
    EXPECT_EQ(result.status, status) << option;
    EXPECT_EQ(result.err.rfind("Veldra - Unknown Face: This model contains the unknown face\ntype (0x77). What", 0),
              0U);
  }
  EXPECT_EQ(nlohmann::json::parse(Run("--unknown-face ignore json $/odd.bin").out)["faces"].size(), 1U);
}

TEST_F(CCliModelsTest, MissingTexturesFollowTheOptions) {
  WriteModel("m.bin", {.texture = "GONE.RAW"});
  ASSERT_TRUE(RemoveFile(folder.File("GONE.RAW")));
  folder.Write("spare.raw", std::string(256 * 256, '\0'));
  folder.Write("short.raw", std::string(100, '\0'));
  const struct {
    const char* options;
    int status, width;
  } cases[] = {{"", 1, 0},
               {"--missing-texture $/spare.raw ", 0, 256},
               {"--missing-texture $/none.raw ", 1, 0},
               {"--missing-texture $/short.raw ", 1, 0},
               {"--blank-texture 64 ", 0, 64},
               {"--missing-texture $/none.raw --blank-texture 64 ", 0, 64}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.options);
    const SResult result = Run(std::string(c.options) + "json $/m.bin");
    EXPECT_EQ(result.status, c.status);
    EXPECT_NE(result.err.find("Texture GONE.RAW not found. Please select another texture."), std::string::npos);
    if (c.status != 0) continue;
    const nlohmann::json texture = nlohmann::json::parse(result.out)["textures"][0];
    EXPECT_EQ(texture["name"], "GONE.RAW");
    EXPECT_EQ(texture["width"], c.width);
  }
  EXPECT_EQ(Run("--art $/no json $/m.bin").status, 1);
}

TEST_F(CCliModelsTest, EveryFailedLoadGivesAReason) {
  // A textured face before any texture: the editor shows no box for it.
  WriteModel("bare.bin", {.type = kFaceTextured, .texture = ""});
  const SResult bare = Run("info $/bare.bin");
  EXPECT_EQ(bare.status, 1);
  EXPECT_EQ(bare.err.rfind("Veldra - Error: ", 0), 0U) << bare.err;
  EXPECT_NE(bare.err.find("bare.bin: at byte "), std::string::npos) << bare.err;
  folder.Write("cut.bin", std::string("\x14\0\0\0\0\0\1\0\2", 9));
  EXPECT_NE(Run("info $/cut.bin").err.find("Veldra - Error: Model is currupt and cannot be loaded\n"),
            std::string::npos);
  EXPECT_EQ(Run("info $/cut.bin").status, 1);
}

TEST_F(CCliModelsTest, RenderWritesAPictureOfTheSizeAskedFor) {
  WriteModel("m.bin", {});
  const SResult result = Run(
      "render $/m.bin $/m.png --size 64x48 --mode solid --rotate -.5,0,1e1 --background #102030 --axes --transparency");
  if (result.err.find("could not be drawn") != std::string::npos) GTEST_SKIP() << result.err;
  ASSERT_EQ(result.status, 0) << result.err;
  const auto picture = ReadPng(folder.File("m.png"));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 64);
  EXPECT_EQ(picture->height, 48);
  EXPECT_EQ(std::vector<uint8_t>(picture->rgba.begin(), picture->rgba.begin() + 3), (std::vector<uint8_t>{16, 32, 48}));
  ASSERT_EQ(Run("render $/m.bin $/m.png").status, 0);
  EXPECT_EQ(ReadPng(folder.File("m.png"))->width, 800);
}

}  // namespace
}  // namespace veldra::testing

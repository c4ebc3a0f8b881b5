#include "cli/clifixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using nlohmann::json;

class CliImport : public CCliTest {
 protected:
  CliImport() { folder.Write("road.raw", std::string(4096, 'x')); }
};

TEST_F(CliImport, WavefrontBecomesAModelFile) {
  folder.Write("in.OBJ", "v 0 0 0\nv 1 0 0\nv 1 2 0\nv 0 2 0.5\ng lid\nf 1 2 3 4\n");
  const struct {
    const char* options;
    json vertices;
    json corners;
    int type;
  } rows[] = {{"--texture ROAD.RAW --scale 10 --face-type 0x33",
               {{0, 0, 0}, {10, 0, 0}, {10, 20, 0}, {0, 20, 5}},
               {0, 1, 2, 3},
               0x33},
              {"--texture road.raw --scale=10 --swap-yz --center",
               {{-5, -2, -10}, {5, -2, -10}, {5, -2, 10}, {-5, 3, 10}},
               {0, 3, 2, 1},
               0x18}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.options);
    const SResult result = Run(std::string("import $/in.OBJ $/out.bin ") + row.options);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err + result.out, "");
    const json model = JsonOf("out.bin");
    EXPECT_EQ(model["vertices"], row.vertices);
    EXPECT_EQ(model["faces"][0]["corners"], row.corners);
    EXPECT_EQ(model["faces"][0]["type"], row.type);
    EXPECT_EQ(model["textures"][0]["name"], "ROAD.RAW");
    EXPECT_EQ(model["faceGroups"], json::parse(R"([{"name": "lid", "members": [0]}])"));
  }
}

TEST_F(CliImport, FailuresLeaveTheOldFile) {
  folder.Write("Old.bin", "old");
  folder.Write("bad.3ds", "MM");
  folder.Write("bad.obj", "v 0 0 0\nf 1 2 3\n");
  folder.Write("large.obj", "v 1e10 0 0\n");
  const struct {
    const char* line;
    int status;
    const char* err;
  } rows[] = {
      {"$/bad.3ds $/Old.bin --texture road.raw", 1, "could not be imported.\nthe file of 2 bytes is too short\n"},
      {"$/large.obj $/Old.bin --texture road.raw", 1, "line 1: (1e+10, 0, 0) does not fit into 32 bits"},
      {"$/large.obj $/Old.bin --texture none.raw --scale .1", 1, "Texture none.raw not found."},
      {"$/large.obj $/Old.bin --texture ABCDEFGHI.RAW --scale .1", 1, "too long for a model file: 12 characters fit."},
      {"$/x.txt $/Old.bin --texture road.raw", 2, "is neither a .3ds nor an .obj file"},
      {"$/bad.3ds $/Old.bin --texture road.raw --center", 2, "only for .obj files"},
      {"$/bad.obj $/Old.bin --texture road.raw --scale 0", 2, "\"0\" is not a number above 0"},
      {"$/bad.obj $/Old.bin", 2, "--texture is required"}};
  for (const auto& row : rows) {
    Expect({{std::string("import ") + row.line, row.status, "", row.err}});
    EXPECT_EQ(ReadTestFile(folder.File("Old.bin")), "old");
  }
}

}  // namespace
}  // namespace veldra::testing

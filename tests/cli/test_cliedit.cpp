#include "cli/clifixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using CCliEditTest = CCliTest;
using Json = nlohmann::json;

TEST_F(CCliEditTest, OperationsChangeTheModelInTheOrderGiven) {
  WriteModel("m.bin", {.points = {{2, 4, 6}, {12, 4, 6}, {12, 24, 6}}});
  const struct {
    const char* operations;
    Json vertices;
  } cases[] = {{"--center", {{-5, -10, 0}, {5, -10, 0}, {5, 10, 0}}},
               {"--center-x", {{-5, 4, 6}, {5, 4, 6}, {5, 24, 6}}},
               {"--scale .5,-1,1e1", {{1, -4, 60}, {6, -4, 60}, {6, -24, 60}}},
               {"--scale -.5,1,1", {{-1, 4, 6}, {-6, 4, 6}, {-6, 24, 6}}},
               {"--translate=-5,0,0x10", {{-3, 4, 22}, {7, 4, 22}, {7, 24, 22}}},
               {"--rotate z,90", {{-4, 2, 6}, {-4, 12, 6}, {-24, 12, 6}}},
               {"--mirror y", {{2, -4, 6}, {12, -4, 6}, {12, -24, 6}}},
               {"--translate 1,0,0 --scale 2,1,1", {{6, 4, 6}, {26, 4, 6}, {26, 24, 6}}},
               {"--center-x --translate 1,0,0 --center-x", {{-5, 4, 6}, {5, 4, 6}, {5, 24, 6}}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.operations);
    RemoveFile(folder.File("o.bin"));
    const SResult result = Run(std::string("edit $/m.bin $/o.bin ") + c.operations);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(JsonOf("o.bin")["vertices"], c.vertices);
  }
}

TEST_F(CCliEditTest, MergeAndDeleteSayHowMany) {
  WriteModel("m.bin", {.points = {{0, 0, 0}, {50, 0, 0}, {50, 50, 0}, {0, 3, 0}, {0, 90, 0}}});
  const SResult result = Run("edit $/m.bin $/o.bin --merge 0 --merge 5 --delete-unused");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "Merged 0 vertices\nMerged 1 vertices\nDeleted 1 vertices\n");
  EXPECT_EQ(result.err, "") << "no save check";
  EXPECT_EQ(JsonOf("o.bin")["vertices"].size(), 3U);
  WriteModel("m.bin", {.points = {{0, 0, 0}, {46341, 0, 0}, {0, 0, 1}}});
  EXPECT_EQ(Run("edit $/m.bin $/o.bin --merge 0").err, std::string("Veldra: ") + kMergeDistancesWrapText + "\n");
}

TEST_F(CCliEditTest, FaceTypesNeedATexture) {
  WriteModel("textured.bin", {});
  WriteModel("bare.bin", {.type = kFaceUntextured, .texture = ""});
  const SResult changed = Run("edit $/textured.bin $/o.bin --face-type 24,0x29");
  EXPECT_EQ(changed.status, 0) << changed.err;
  EXPECT_EQ(JsonOf("o.bin")["faces"][0]["type"], 0x29);
  EXPECT_NE(Run("edit $/bare.bin $/bad.bin --face-type 0x19,0x18").err, "");
  EXPECT_FALSE(FileExists(folder.File("bad.bin")));
}

TEST_F(CCliEditTest, AppendAddsAnotherModel) {
  WriteModel("m.bin", {});
  WriteModel("other.bin", {.texture = "MUD.RAW"});
  ASSERT_EQ(Run("edit $/m.bin $/o.bin --append $/other.bin --translate 1,0,0 --append $/m.bin").status, 0);
  const Json model = JsonOf("o.bin");
  EXPECT_EQ(model["vertices"].size(), 9U);
  EXPECT_EQ(model["faces"][2]["corners"], Json({6, 7, 8}));
  EXPECT_EQ(model["vertices"][3][0], 1);
  EXPECT_EQ(model["vertices"][6][0], 0);
  EXPECT_EQ(model["textures"].size(), 2U);
}

TEST_F(CCliEditTest, NothingIsWrittenWhenAnOperationFails) {
  WriteModel("m.bin", {});
  folder.Write("bad.bin", "bad");
  folder.Write("o.bin", "old");
  WriteModel("long.bin", {.texture = "ABCDEFGHI.RAW"});
  for (const char* operations :
       {"--center --append $/missing.bin", "--append $/bad.bin", "--append $/long.bin", "--scale 1e9,1e9,1e9"}) {
    SCOPED_TRACE(operations);
    const SResult result = Run(std::string("edit $/m.bin $/o.bin ") + operations);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err, "");
    EXPECT_EQ(ReadTestFile(folder.File("o.bin")), "old");
  }
  const SResult folder_as_target = Run("edit $/m.bin $ --center");
  EXPECT_EQ(folder_as_target.status, 1);
  EXPECT_EQ(folder_as_target.err.rfind("Veldra - Error: Model could not be saved.\n", 0), 0U);
}

}  // namespace
}  // namespace veldra::testing

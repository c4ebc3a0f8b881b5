#include "cli/clifixture.h"
#include "model/binbytes.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using Json = nlohmann::json;
using CCliShapeTest = CCliTest;

TEST_F(CCliShapeTest, AShapeBecomesAModelWithItsGroups) {
  folder.Write("ROAD.RAW", std::string(64 * 64, '\1'));
  Expect({{"shape cube $/plain.bin --size 10,20,31 --at 5,0,0"},
          {"shape square $/flat.bin --texture ROAD.RAW --face-type 0x29 --two-sided"},
          {"shape sphere $/both.bin --into $/plain.bin --sides 8 --rings 4"},
          {"shape cube $/twice.bin --into $/plain.bin"}});
  const Json plain = JsonOf("plain.bin");
  EXPECT_EQ(plain["bounds"], Json({0, -10, -15, 10, 10, 16}));
  EXPECT_EQ(plain["faces"][0]["type"], 0x19);
  EXPECT_EQ(plain["faceGroups"], Json({{{"name", "cube"}, {"members", {0, 1, 2, 3, 4, 5}}}}));
  EXPECT_EQ(plain["vertexGroups"][0]["members"].size(), 8U);
  const Json flat = JsonOf("flat.bin");
  EXPECT_EQ(flat["faces"].size(), 2U);
  EXPECT_EQ(flat["faces"][0]["type"], 0x29);
  EXPECT_GT(flat["faces"][0]["normal"][1], 0);
  EXPECT_EQ(flat["faces"][1]["u"].size(), 4U);
  EXPECT_EQ(JsonOf("both.bin")["faceGroups"][1]["name"], "sphere");
  EXPECT_EQ(JsonOf("twice.bin")["faceGroups"][1]["name"], "cube 2");
}

TEST_F(CCliShapeTest, WhatCannotBeMadeWritesNothing) {
  Expect({{"shape sphere $/o.bin --size 5,5,5 --sides 100", 1, "", "would fall together"},
          {"shape cube $/o.bin --size 0,10,10", 1, "", "would fall together"},
          {"shape polygon $/o.bin --sides 2", 2, "", "is not a number from 3 to 256"},
          {"shape sphere $/o.bin --rings 129", 2, "", "is not a number from 2 to 128"},
          {"shape polyhedron $/o.bin --solid 7", 2, "", "--solid"},
          {"shape cubee $/o.bin", 2, "", "did you mean \"cube\"?"},
          {"shape cube $/o.bin --size -1,10,10", 2, "", "--size"},
          {"shape cube $/o.bin --face-type 0x18", 2, "", "without --texture"},
          {"shape cube $/o.bin --texture none.raw", 1, "", "not found"},
          {"shape cube $/o.bin --into $/none.bin", 1, "", "none.bin"},
          {"shape cube -", 2, "", "standard output"}});
  EXPECT_FALSE(FileExists(folder.File("o.bin")));
}

class CCliCheckTest : public CCliTest {
 protected:
  /// "KIND faces vertices texture", a line a finding.
  std::string Findings(const std::string& line) const {
    std::string text;
    for (const Json& row : Json::parse(Run(line).out))
      text += row["kind"].get<std::string>() + " " + row["faces"].dump() + " " + row["vertices"].dump() + " " +
              (row["texture"].is_null() ? "-" : row["texture"].get<std::string>()) + "\n";
    return text;
  }
};

TEST_F(CCliCheckTest, FindsWhatALoadMendsOrCutsOff) {
  constexpr uint32_t kEnd = 0x00FFFFFF;
  CBinBytes file;
  file.Words({0x14, 0x10000, 2, 0, 9});
  file.Point(0, 0, 0).Point(100, 0, 0).Point(100, 100, 0).Point(0, 100, 2).Point(0, 100, 1).Point(50, 0, 0);
  file.Point(100, 0, 0).Point(50000, 0, 0).Point(7, 7, 7);
  file.Texture("LONGER-NAME-1").Face(0x18, {{0, 0, 0}, {1, kEnd, 0}, {2, kEnd, kEnd}, {3, 0, kEnd + 1}});
  file.Texture("WIDE.RAW").Face(0x18, {{0}, {1}, {2}, {4}});
  file.Animation({"GOOD.RAW", "GONE.RAW"}, 0x10000).Face(0x18, {{0}, {5}, {7}});
  file.Face(0x19, {{1}, {2}, {0}, {1}}).Face(0x19, {{2}, {4}, {6}}).Face(0x18, {{4}, {6}, {2}}).End();
  folder.Write("m.bin", file.bytes);
  folder.Write("LONGER-NAME-.RAW", std::string(64 * 64, '\1'));
  folder.Write("WIDE.RAW", std::string(128 * 128, '\1'));
  folder.Write("GOOD.RAW", std::string(256 * 256, '\1'));
  EXPECT_EQ(Findings("check $/m.bin --json"),
            "missing-texture [2,5] [] GONE.RAW\n"
            "texture-size [1] [] WIDE.RAW\n"
            "long-name [0] [] LONGER-NAME-1\n"
            "no-area [2] [] -\n"
            "bent-quad [0] [] -\n"
            "double-face [4,5] [] -\n"
            "repeated-corner [3] [1] -\n"
            "same-place [] [1,6] -\n"
            "unused-vertex [] [8] -\n"
            "off-texture [0] [3] -\n"
            "too-large [] [] -\n");
  const SResult text = Run("check $/m.bin");
  EXPECT_EQ(text.status, 1);
  EXPECT_NE(text.out.find("m.bin: bent-quad: face 0"), std::string::npos) << text.out;
}

TEST_F(CCliCheckTest, SaysNothingOfAGoodModelAndGoesOnAfterADamagedOne) {
  folder.Write("ROAD.RAW", std::string(64 * 64, '\1'));
  ASSERT_EQ(Run("shape sphere $/good.bin --texture ROAD.RAW").status, 0);
  folder.Write("bad.bin", "bad");
  Expect({{"check $/good.bin", 0, "", ""},
          {"check $/good.bin --json", 0, "[]\n", ""},
          {"check $/none.bin $/good.bin", 1, "", "none.bin"},
          {"check $/bad.bin", 1, "", "bad.bin: at byte 0"}});
}

class CCliGroupsTest : public CCliTest {
 protected:
  CCliGroupsTest() {
    folder.Write("ROAD.RAW", std::string(64 * 64, '\1'));
    folder.Write("MUD.RAW", std::string(256 * 256, '\1'));
    EXPECT_EQ(Run("shape cube $/m.bin --texture ROAD.RAW --size 63,20,10").status, 0);
    EXPECT_EQ(Run("shape pyramid $/m.bin --into $/m.bin --texture MUD.RAW --at 0,50,0").status, 0);
  }
  Json Edited(const std::string& operations) const {
    RemoveFile(folder.File("o.bin"));
    const SResult result = Run("edit $/m.bin $/o.bin " + operations);
    EXPECT_EQ(result.status, 0) << result.err;
    return JsonOf("o.bin");
  }
};

TEST_F(CCliGroupsTest, GroupsGetTexturesAndTypesAndGo) {
  const Json before = JsonOf("m.bin");
  const Json assigned = Edited("--assign cube,MUD.RAW --group-type cube,0x29");
  EXPECT_EQ(assigned["textures"].size(), 1U);
  EXPECT_EQ(assigned["faces"][0]["type"], 0x29);
  EXPECT_EQ(assigned["faces"][0]["u"], before["faces"][0]["u"]);
  EXPECT_EQ(assigned["faces"][6]["type"], 0x18);
  EXPECT_EQ(Edited("--replace-texture road,MUD.RAW")["textures"].size(), 1U);
  const Json deleted = Edited("--delete-faces cube");
  EXPECT_EQ(deleted["faces"].size(), 5U);
  EXPECT_EQ(deleted["vertices"].size(), 5U) << "those of the pyramid, which is on its own";
  Expect({{"edit $/m.bin $/o.bin --delete-faces cub", 1, "", "did you mean \"cube\"?"},
          {"edit $/m.bin $/o.bin --assign cube,none.raw", 1, "", "none.raw"},
          {"edit $/m.bin $/o.bin --replace-texture rode,MUD.RAW", 1, "", "did you mean \"ROAD\"?"},
          {"edit $/m.bin $/o.bin --group-type cube,7", 2, "", "GROUP,TYPE"},
          {"edit $/m.bin $/o.bin --fit 0", 2, "", "--fit"},
          {"edit $/m.bin $/o.bin --map round", 2, "", "--map"}});
}

TEST_F(CCliGroupsTest, FitMakesTheLargestDimensionThatLong) {
  for (const int size : {7, 63, 1000, 12345}) {
    const Json bounds = Edited("--fit " + std::to_string(size))["bounds"];
    const int largest =
        std::max({bounds[3].get<int>() - bounds[0].get<int>(), bounds[4].get<int>() - bounds[1].get<int>(),
                  bounds[5].get<int>() - bounds[2].get<int>()});
    EXPECT_NEAR(largest, size, 1);
  }
}

TEST_F(CCliGroupsTest, MapsFollowTheCoordinates) {
  for (const char* const map : {"planar,x", "planar,y", "planar,z", "box"}) {
    SCOPED_TRACE(map);
    const Json model = Edited(std::string("--map ") + map + ",cube");
    for (size_t f = 0; f < 6; ++f) {
      const Json& face = model["faces"][f];
      char axis = map[std::string(map).size() - 1];
      if (axis == 'x' && std::string(map) == "box") {
        const Json& normal = face["normal"];
        axis = normal[0] != 0 ? 'x' : normal[1] != 0 ? 'y' : 'z';
      }
      for (size_t k = 0; k < 4; ++k) {
        const Json& at = model["vertices"][face["corners"][k].get<size_t>()];
        const double x = (at[0].get<int>() + 31) / 63.0;
        const double y = (at[1].get<int>() + 10) / 20.0;
        const double z = (at[2].get<int>() + 5) / 10.0;
        EXPECT_NEAR(face["u"][k].get<double>(), axis == 'x' ? z : x, 1e-9);
        EXPECT_NEAR(face["v"][k].get<double>(), axis == 'y' ? z : 1 - y, 1e-9);
      }
    }
  }
}

}  // namespace
}  // namespace veldra::testing

#include "interchange/waveimport.h"

#include "interchange/importfixture.h"
#include "interchange/wavefront.h"
#include "interchange/wavematerials.h"
#include "platform/text.h"

namespace veldra {
namespace {

class WaveImport : public testing::CImportTest {
 protected:
  bool Import(const std::string& text, const SWaveOptions& options = {}) {
    return ImportWavefront(model, {folder.Write("in.obj", text), Road()}, options, context, fault);
  }
};

constexpr const char* kSquare = "v 0 0 0\nv 10 0 0\nv 10 10 0\nv 0 10 0\n";

TEST_F(WaveImport, AnExportedModelComesBack) {
  for (const SPoint& p :
       {SPoint{-2147483647 - 1, 2147483647, 3}, SPoint{10, 0, -7}, SPoint{0, 0, 0}, SPoint{1, 2, 0}, SPoint{9, 1, 0}}) {
    model.AddVertex(p);
  }
  CBinTexture& road = model.AddTexture(std::make_unique<CBinTexture>(model, "ROAD.RAW", textures.GetTexture(Road())));
  // A concave quad, one without area, a triangle.
  for (const std::vector<int32_t>& corners : {std::vector<int32_t>{2, 1, 3, 4}, {0, 1, 2, 3}, {4, 2, 1}})
    testing::MakeFace(model, corners, &road, kFaceTextured);
  const auto positions = Positions();
  const auto polygons = Polygons();
  const std::string text = WavefrontText(model);
  model.Clear();
  ASSERT_TRUE(Import(text)) << fault.what;
  EXPECT_EQ(Positions(), positions);
  EXPECT_EQ(Polygons(), polygons);
  EXPECT_TRUE(model.FaceGroups().empty());
  EXPECT_EQ(WavefrontText(model), text);
  model.Clear();
  EXPECT_TRUE(Import(WavefrontText(model))) << "of an empty model";
  EXPECT_TRUE(questions.Messages().empty());
}

TEST_F(WaveImport, OptionsAreScaleThenAxesThenCentre) {
  const std::string text = "v 1.9 -1.9 3\nv 5 6 7\nv 8 8 8\nf 1 2 3\n";
  const struct {
    SWaveOptions options;
    std::vector<SPoint> positions;
    std::vector<int32_t> corners;
  } rows[] = {{{}, {{1, -1, 3}, {5, 6, 7}, {8, 8, 8}}, {0, 1, 2}},
              {{.scale = 10}, {{19, -19, 30}, {50, 60, 70}, {80, 80, 80}}, {0, 1, 2}},
              {{.swap_yz = true}, {{1, 3, -1}, {5, 7, 6}, {8, 8, 8}}, {0, 2, 1}},
              {{.scale = 10, .center = true}, {{-30, -49, -25}, {1, 30, 15}, {31, 50, 25}}, {0, 1, 2}}};
  for (const auto& row : rows) {
    model.Clear();
    ASSERT_TRUE(Import(text, row.options));
    EXPECT_EQ(Positions(), row.positions);
    EXPECT_EQ(Polygons(), (std::vector<std::vector<int32_t>>{row.corners}));
    const auto mesh = ReadWavefront(folder.File("in.obj"), questions, fault);
    ASSERT_TRUE(mesh);
    EXPECT_EQ(WaveBounds(*mesh, row.options), model.Bounds());
  }
}

TEST_F(WaveImport, CoordinatesThatDoNotFitAreRefusedWithTheirLine) {
  const std::string text = "\xEF\xBB\xBFv 0 0 0\nv 1 1 \\\n1\nv 0 2147483648 0\n";
  EXPECT_FALSE(Import(text));
  EXPECT_EQ(fault.what, "line 4: (0, 2.14748e+09, 0) does not fit into 32 bits at a scale of 1");
  EXPECT_FALSE(Import(text, {.scale = 1e308}));
  EXPECT_EQ(model.VertexCount(), 0);
  EXPECT_TRUE(Import(text, {.scale = 0.5}));
  model.Clear();
  EXPECT_TRUE(Import("v 4e9 0 0\nv 4000000005 0 0\n", {.center = true}));
  EXPECT_EQ(Positions(), (std::vector<SPoint>{{-2, 0, 0}, {3, 0, 0}}));
}

TEST_F(WaveImport, TextureCoordinatesTurnAndWrap) {
  const struct {
    const char* coords;  ///< of the three corners
    std::vector<STexCoord> expected;
  } rows[] = {{"vt 0 0\nvt 1 0\nvt 1 1\n", {{0, 1}, {1, 1}, {1, 0}}},
              {"vt 0.25 0.25 0\nvt .5 .75\nvt 1 .5\n", {{0.25, 0.75}, {0.5, 0.25}, {1, 0.5}}},
              // Moved by whole textures, so that the face shows the same part.
              {"vt 2 -3\nvt 3 -2\nvt 2.5 -2.5\n", {{0, 1}, {1, 0}, {0.5, 0.5}}},
              {"vt -1 0\nvt -0.5 0\nvt 0.00001 0\n", {{0, 1}, {0.5, 1}, {1, 1}}},
              // The texture twice in a row: cut off, each direction for itself.
              {"vt 0 5\nvt 1.25 5\nvt -0.25 5.5\n", {{0, 1}, {1, 1}, {0, 0.5}}},
              {"vt 3 0\nvt 5 0\nvt 4 1\n", {{0, 1}, {1, 1}, {1, 0}}},
              // A digit short of texel 2 of 63.
              {"vt .0317 0\nvt .5 0\nvt 1 0\n", {{2 / 63.0, 1}, {0.5, 1}, {1, 1}}}};
  for (const auto& row : rows) {
    model.Clear();
    ASSERT_TRUE(Import(kSquare + std::string(row.coords) + "f 1/1 2/2 3/3\n"));
    for (int k = 0; k < 3; ++k) {
      EXPECT_NEAR(model.Face(0).TexCoord(k).u, row.expected[static_cast<size_t>(k)].u, 1e-5) << row.coords << k;
      EXPECT_NEAR(model.Face(0).TexCoord(k).v, row.expected[static_cast<size_t>(k)].v, 1e-4) << row.coords << k;
    }
  }
  model.Clear();
  ASSERT_TRUE(Import(kSquare + std::string("vt .5 .5\nf 1/1 2/1 3\n")));
  EXPECT_EQ(model.Face(0).TexCoord(2), (STexCoord{1, 1})) << "the whole texture when one has none";
  model.Clear();
  ASSERT_TRUE(Import(kSquare + std::string("vt .1 0\nvt .2 0\nvt .3 0\nf 1/1 2/2 3/3\n"), {.swap_yz = true}));
  EXPECT_EQ(model.Face(0).TexCoord(1).u, 0.3) << "coordinates stay with their corners";
}

TEST_F(WaveImport, MaterialsPickTexturesByTheNameOfTheirPicture) {
  folder.Write("car.MTL",
               "newmtl grass\r\n  map_Kd -s 2 2 1 -o 0.5 -clamp on C:\\art\\Grass.png\r\n"
               "newmtl lost\nmap_kd lost.png\nnewmtl plain\nKd 1 1 1\n");
  folder.Write("art/averylongname.raw", std::string(4096, 'x'));
  folder.Write("more.mtl", "newmtl long\nmap_Kd averylongname.png");
  ASSERT_TRUE(Import(std::string("mtllib folder/car.mtl more.mtl none.mtl\n") + kSquare +
                     "f 1 2 3\nusemtl grass\nf 1 2 3\nf 1 2 3 4\nusemtl lost\nf 1 2 3\nusemtl plain\nf 1 2 3\n"
                     "usemtl long\nf 1 2 3\nusemtl unknown\nf 1 2 3\nusemtl grass\nf 1 2 3\nusemtl\nf 1 2 3\n"));
  std::string used;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    used += model.Face(i).Texture()->Name() + " ";
  EXPECT_EQ(used, "ROAD.RAW GRASS.RAW GRASS.RAW ROAD.RAW ROAD.RAW ROAD.RAW ROAD.RAW GRASS.RAW ROAD.RAW ");
  EXPECT_EQ(model.Texture(1).Width(), 128);
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_EQ(questions.Messages()[0].text, "\"in.obj\" was imported, but not all of it.");
  EXPECT_EQ(questions.Messages()[0].details,
            "material file none.mtl: there is no such file\n"
            "The texture name \"AVERYLONGNAME.RAW\" is too long for a model file: 12 characters fit.\n"
            "materials without a texture: lost, plain, long, unknown\n");
}

TEST_F(WaveImport, MaterialFilesMayHaveBlanksInTheirNames) {
  folder.Write("my car.mtl", "newmtl grass\nmap_Kd my pictures/grass.png");
  ASSERT_TRUE(Import(std::string("mtllib my car.mtl\n") + kSquare + "usemtl grass\nf 1 2 3\n"));
  EXPECT_EQ(model.Face(0).Texture()->Name(), "GRASS.RAW");
  EXPECT_TRUE(questions.Messages().empty());
}

TEST_F(WaveImport, GroupsHoldThePiecesOfTheirFaces) {
  model.AddVertex({0, 0, 0});
  ASSERT_TRUE(Import(std::string(kSquare) +
                     "v 5 1 0\ng none\ng arrow all\nf 1 2 5 4\ng rest all\nf 1 2 3 4\ng\nf 1 2 3\ng arrow\nf 2 3 4\n"
                     "o Big Box\ng\nf 1 2 3\no\nf 1 2 3\n"));
  EXPECT_EQ(Polygons().size(), 7U);
  std::string groups;
  for (const CBinGroup& group : model.FaceGroups()) {
    groups += group.Name() + ":";
    for (const int32_t member : group.Members())
      groups += Format(" %d", member);
    groups += "\n";
  }
  EXPECT_EQ(groups, "arrow: 0 1 4\nall: 0 1 2\nrest: 2\nBig_Box: 5\n");
  EXPECT_EQ(model.CheckInvariants(), "");
}

TEST_F(WaveImport, FailuresLeaveTheModelAsItWas) {
  model.AddVertex({1, 2, 3});
  const uint64_t revision = model.Revision();
  EXPECT_FALSE(Import("v 0 0 0\nf 1 2 3\n"));
  EXPECT_EQ(fault.what, "line 2: a corner names vertex 3, there are 1");
  questions.OnTexture("not found", {});
  EXPECT_FALSE(ImportWavefront(model, {folder.Write("in.obj", kSquare), "nowhere/none.raw"}, {}, context, fault));
  EXPECT_EQ(fault.what, "the texture nowhere/none.raw could not be loaded");
  const SWaveFiles files = {folder.Write("in.obj", kSquare + std::string("f 1 2 3\n")), Road()};
  const auto mesh = ReadWavefront(files.path, questions, fault);
  ASSERT_TRUE(mesh);
  questions.CancelWorkAfter(0);
  for (const bool is_read : {false, true}) {
    fault = {};
    EXPECT_FALSE(is_read ? ImportWaveMesh(model, *mesh, files, {}, context, fault)
                         : ImportWavefront(model, files, {}, context, fault));
    EXPECT_TRUE(fault.is_told);
  }
  EXPECT_EQ(model.VertexCount(), 1);
  EXPECT_EQ(model.Revision(), revision);
}

}  // namespace
}  // namespace veldra

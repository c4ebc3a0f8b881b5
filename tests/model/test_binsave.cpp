#include <gmock/gmock.h>

#include <limits>

#include "model/infofile.h"
#include "model/loadfixture.h"
#include "model/modelbuilder.h"
#include "model/normals.h"
#include "platform/assert.h"
#include "platform/text.h"

namespace veldra::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int32_t kNone = std::numeric_limits<int32_t>::min();

std::vector<uint8_t> Saved(const CBinModel& model, const SSaveOptions& options = {}) {
  CByteWriter out;
  SaveBin(model, options, out);
  return {out.Bytes().begin(), out.Bytes().end()};
}

/// A quad and a triangle with textures and a triangle without, every normal another.
class CBinSaveTest : public ::testing::Test {
 protected:
  CBinSaveTest() {
    builder.Vertices({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 7}});
    CBinTexture& road = builder.Plain("ROAD.RAW");
    CBinTexture& flag = builder.Animated("FLAG", {"F1.RAW", "F2.RAW"}, 10.0);
    CBinFace& quad = builder.Face({0, 1, 2, 3}, &road, 0x29);
    quad.SetTexCoord(1, {1.0, 0.0});
    quad.SetTexCoord(2, {1.0, 0.5});
    quad.SetStored({5, 5, 5}, 5);
    builder.Face({2, 3, 4}, &flag, 0x18).SetTexCoord(0, {0.25, 1.0});
    builder.Face({3, 0, 4}, &flag, 0x19);
  }

  CBinBytes Start() const {
    CBinBytes file;
    file.Words({0x14, 0x10000, 2, 0, 5}).Point(0, 0, 0).Point(10, 0, 0).Point(10, 10, 0).Point(0, 10, 0).Point(0, 0, 7);
    return file;
  }

  CModelBuilder builder;
};

TEST_F(CBinSaveTest, WritesEveryByteOfAModel) {
  CBinBytes file = Start();
  file.Words({0x03, 0, 5}).Point(-46340, 0, 46340).Point(0, 0, 65535).Point(0, 19702, 62503);
  file.Point(-30429, 17449, 55357).Point(-46340, 26573, 37963);
  file.Texture("ROAD.RAW").FaceHead(0x29, 4, 0, 0, 65535, 0).Corners(0x29, {{0}, {1, kOne}, {2, kOne, 8388607}, {3}});
  file.Animation({"F1.RAW", "F2.RAW"}, 6553);
  file.FaceHead(0x18, 3, 0, 37581, 53688, 375810).Corners(0x18, {{2, 4194303, kOne}, {3}, {4}});
  file.Words({0x0A, 0}).FaceHead(0x19, 3, -65535, 0, 0, 0).Corners(0x19, {{3}, {0}, {4}}).End();
  EXPECT_EQ(Saved(builder.model, {.vertex_normals = true}), file.bytes);
  EXPECT_EQ(builder.model.Face(0).StoredNormal(), (SPoint{5, 5, 5})) << "saving changes nothing";
}

TEST_F(CBinSaveTest, WritesEveryByteOfABackdrop) {
  CBinBytes file = Start();
  file.Texture("ROAD.RAW").FaceHead(0x11, 4, 0, 0, 65535, kNone);
  file.Corners(0x11, {{0}, {1, kOne}, {2, kOne, 8388607}, {3}}).Animation({"F1.RAW", "F2.RAW"}, 6553);
  file.FaceHead(0x11, 3, 0, 37581, 53688, kNone).Corners(0x11, {{2, 4194303, kOne}, {3}, {4}});
  file.FaceHead(0x11, 3, -65535, 0, 0, kNone).Corners(0x11, {{3}, {0}, {4}}).End();
  EXPECT_EQ(Saved(builder.model, {.backdrop = true}), file.bytes);
}

TEST(BinSave, SelectsATextureOnlyWhereItChanges) {
  CModelBuilder builder;
  builder.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  CBinTexture& a = builder.Plain("ABCDEFGHIJKL.RAW");  // fills its field
  CBinTexture& b = builder.Plain("B.RAW");
  for (CBinTexture* texture : std::vector<CBinTexture*>{nullptr, &a, &a, nullptr, &a, &b})
    builder.Face({0, 1, 2}, texture);
  CBinBytes file;
  file.Words({0x14, 0x10000, 2, 0, 3}).Point(0, 0, 0).Point(1, 0, 0).Point(0, 1, 0);
  const auto face = [&](uint32_t type) {
    if (type == 0x19) file.Words({0x0A, 0});
    file.FaceHead(type, 3, 0, 0, 65535, 0).Corners(type, {{0}, {1}, {2}});
  };
  face(0x19);
  file.Texture("ABCDEFGHIJKL.RAW");
  face(0x18), face(0x18), face(0x19);
  file.Texture("ABCDEFGHIJKL.RAW");
  face(0x18);
  file.Texture("B.RAW");
  face(0x18);
  EXPECT_EQ(Saved(builder.model), file.End().bytes);
}

TEST(BinSave, PeriodsAreTruncated) {
  const struct {
    double rate;
    uint32_t period;
  } rows[] = {
      {8.0, 8192},
      {65536.0 / 7281.0, 7280},              // 65536 / (65536 / 7281) is 7280.999...
      {65536.0 / 4294967296.0, 0x80000000},  // beyond the word
      {65536.0 / 3000000000.0, 3000000000},
      {std::numeric_limits<double>::infinity(), 0},
      {-1.0, 0x80000000},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.period);
    CModelBuilder builder;
    builder.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}).Face({0, 1, 2}, &builder.Animated("A", {"F.RAW"}, row.rate));
    const auto saved = Saved(builder.model);
    const auto expected = CBinBytes().Words({0x1D, 0, 1, 0, row.period, 0, 0}).bytes;
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), saved.begin() + 56));
  }
}

TEST(BinSave, FacesWithoutAreaAndExtremeCoordinatesHaveDefinedNormals) {
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
  constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
  CModelBuilder builder;
  builder.Vertices({{1, 2, 3}, {2, 4, 6}, {3, 6, 9}, {kMin, kMin, 0}, {kMax, kMin, 0}, {kMax, kMax, 0}, {9, 9, 9}});
  const CBinFace& line = builder.Face({0, 1, 2});
  const CBinFace& huge = builder.Face({3, 4, 5});
  EXPECT_EQ(CalcFaceNormal(line), (SPoint{kNone, kNone, kNone}));
  EXPECT_EQ(line.UnitNormal().x, 0.0);
  EXPECT_EQ(CalcMagic(line), 0);  // 6 × 0x80000000, wrapped
  EXPECT_EQ(CalcFaceNormal(huge), (SPoint{0, 0, 65535}));
  EXPECT_EQ(huge.UnitNormal().z, 1.0);
  EXPECT_EQ(CalcVertexNormal(builder.model.Vertex(6)), (SPoint{kNone, kNone, kNone}));
  EXPECT_EQ(CalcVertexNormal(builder.model.Vertex(0)), (SPoint{-37836, -37836, -37836}));
  builder.Face({6, 4, 5});
  builder.Face({5, 4, 6});
  EXPECT_EQ(CalcVertexNormal(builder.model.Vertex(6)), (SPoint{kNone, kNone, kNone})) << "opposite faces";
}

TEST(BinSave, NamesThatDoNotFitAreNamedBeforeAnythingIsWritten) {
  const CTempFolder folder;
  CModelBuilder builder;
  builder.Vertices({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
  CBinTexture& name = builder.Plain("ABCDEFGHIJKLM.RAW");
  CBinTexture& frame = builder.Animated("A very long name of an animation", {"F.RAW", "ABCDEFGHIJKL.RAW"}, 8.0);
  EXPECT_EQ(NameFault(builder.model), "") << "no face uses them";
  builder.Face({0, 1, 2}, &frame);
  EXPECT_EQ(
      NameFault(builder.model),
      "The texture name \"ABCDEFGHIJKL.RAW\" in the animation \"A very long name of an animation\" is too long for "
      "a model file: 15 characters fit.");
  builder.Face({0, 1, 2}, &name);
  SError error;
  EXPECT_FALSE(SaveBinFile(builder.model, {}, folder.File("m.bin"), &error));
  EXPECT_EQ(error.what, "The texture name \"ABCDEFGHIJKLM.RAW\" is too long for a model file: 16 characters fit.");
  EXPECT_THAT(ListDirectory(folder.Path()), IsEmpty());
}

class CStabilityTest : public CLoadTest {};

TEST_F(CStabilityTest, WhatWasLoadedAndSavedLoadsAndSavesTheSame) {
  art.Write("F1.RAW", std::string(4096, '\1'));
  CBinBytes file;
  file.Header(5).Face(0x19, {{0}, {1}, {2}}).Animation({"F1.RAW", "W256.RAW"}, 8192).Face(0x29, {{0}, {1}, {2}, {3}});
  file.Texture("W256").Texture("road");
  for (uint32_t k = 0; k <= 63; ++k)
    file.Face(0x18, {{0, k * 266305 + k, 0}, {1, kOne - k, k}, {4}});
  file.Texture("W256");
  for (uint32_t k = 0; k <= 255; ++k)
    file.Face(0x18, {{0, k * 65793, 7}, {1, k * 65793 + 9, 0}, {2}});
  file.Animation({"F1.RAW", "W256.RAW"}, 8192).Face(0x00, {{4}, {3}, {2}}).Animation({"F1.RAW"}, 3).End();
  ASSERT_TRUE(Load(file.bytes, "1\nhood\n0 5\n0\n3\nFLAG\nFLAG\nUNUSED\n"));
  const auto saved = Save({.vertex_normals = true, .scale_word = 3});
  const std::string info = WriteInfo(model, AnimationNamesInFileOrder(model));
  EXPECT_EQ(info, "1\nhood\n0 5\n0\n3\nFLAG\nFLAG\nUNUSED\n");
  std::vector<STexCoord> coords;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    coords.insert(coords.end(), {model.Face(i).TexCoord(0), model.Face(i).TexCoord(1)});

  ASSERT_TRUE(Load(saved, info));
  EXPECT_EQ(model.ScaleWord(), 3);
  EXPECT_EQ(model.TextureCount(), 3) << "FLAG twice is one, and the unused animation is not in the file: "
                                        "FLAG, ROAD.RAW, W256.RAW";
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    EXPECT_EQ(model.Face(i).TexCoord(0), coords[static_cast<size_t>(2 * i)]);
    EXPECT_EQ(model.Face(i).TexCoord(1), coords[static_cast<size_t>(2 * i + 1)]);
    EXPECT_EQ(model.Face(i).StoredNormal(), CalcFaceNormal(model.Face(i)));
    EXPECT_EQ(model.Face(i).StoredMagic(), CalcMagic(model.Face(i)));
  }
  EXPECT_EQ(Save({.vertex_normals = true, .scale_word = 3}), saved);
}

/// Model and sidecar on disk.
class CSaveFileTest : public CLoadTest {
 protected:
  ~CSaveFileTest() override { SetFileFault({}); }
};

TEST_F(CSaveFileTest, ModelAndSidecarAreOneSave) {
  ASSERT_TRUE(Load(CBinBytes().Header(3).Texture("ROAD").Face(0x18, {{0}, {1}, {2}}).End().bytes, "1\nnew\n0\n0\n0\n"));
  const CTempFolder folder;
  const std::string path = folder.Write("truck.bin", "old model");
  folder.Write("truck.bin.info", "old info");
  SetFileFault([&](std::string_view call, std::string_view file) { return call == "rename" && file == path ? 28 : 0; });
  SError error;
  EXPECT_FALSE(SaveBinFile(model, {}, path, &error));
  SetFileFault({});
  EXPECT_NE(error.what, "");
  EXPECT_EQ(ReadTestFile(path) + ReadTestFile(InfoPath(path)), "old modelold info");
  EXPECT_TRUE(SaveBinFile(model, {}, path, &error));
  EXPECT_EQ(ReadTestFile(InfoPath(path)), "1\nnew\n0\n0\n0\n");
  EXPECT_THAT(ListDirectory(folder.Path()), ElementsAre("truck.bin", "truck.bin.info"));
}

TEST_F(CSaveFileTest, LoadsFromDiskWithTheSidecarBesideIt) {
  const CTempFolder folder;
  const auto file = CBinBytes().Header(3).Texture("ROAD").Face(0x18, {{0}, {1}, {2}}).End().bytes;
  const std::string path = folder.Write("Truck.BIN", file);
  folder.Write("TRUCK.BIN.INFO", "1\nhood\n0\n0\n0\n");
  ASSERT_TRUE(LoadBinFile(model, path, Context()));
  EXPECT_NE(model.FindGroup(EGroupKind::kFaces, "hood"), nullptr);
  // One that is of another model is said by its name, and the model is there all the same.
  folder.Write("TRUCK.BIN.INFO", "1\nhood\n0 1 2\n0\n0\n");
  ASSERT_TRUE(LoadBinFile(model, path, Context()));
  EXPECT_NE(UpperCase(questions.Messages().at(0).details).find("TRUCK.BIN.INFO"), std::string::npos);
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1U);
  EXPECT_FALSE(LoadBinFile(model, folder.File("none.bin"), Context(), &diagnosis));
  EXPECT_EQ(model.VertexCount(), 0);
  EXPECT_FALSE(diagnosis.Empty());
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1U);
}

}  // namespace

}  // namespace veldra::testing

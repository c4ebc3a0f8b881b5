#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "model/loadfixture.h"

namespace veldra::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using EChoice = SUnknownFaceAnswer::EChoice;

constexpr const char* kSizeQuestion =
    "This model uses a texture size not supported by MTM2.\nWould you like to continue loading anyway?";

class CBinLoadTest : public CLoadTest {};

TEST_F(CBinLoadTest, ReadsHeaderVerticesAndFaces) {
  CBinBytes file;
  file.Words({0x14, 0xFFFE0000, 77, 88, 3}).Point(1, -2, 3).Point(0, 5, 0).Point(-7, 0, INT32_MAX);
  file.Texture("road.bmp").Words({0x0A, 5}).FaceHead(0x33, 3, -1, 2, -3, 9);
  file.Corners(0x33, {{2, 0, kOne}, {0, kOne, 0}, {1}}).End();
  ASSERT_TRUE(Load(file.bytes));
  EXPECT_EQ(model.ScaleWord(), -0x20000);
  EXPECT_EQ(model.Vertex(2).Position(), (SPoint{-7, 0, INT32_MAX}));
  EXPECT_EQ(model.Bounds(), (SBounds{{-7, -2, 0}, {1, 5, INT32_MAX}}));
  ASSERT_EQ(model.FaceCount(), 1);
  const CBinFace& face = model.Face(0);
  EXPECT_EQ(face.Type(), 0x33U);
  EXPECT_THAT(Corners(0), ElementsAre(2, 0, 1));
  EXPECT_EQ(face.StoredNormal(), (SPoint{-1, 2, -3}));
  EXPECT_EQ(face.StoredMagic(), 9);
  EXPECT_EQ(face.TexCoord(0), (STexCoord{0.0, 1.0}));
  EXPECT_EQ(face.TexCoord(1), (STexCoord{1.0, 0.0}));
  EXPECT_EQ(face.Texture()->Name(), "ROAD.RAW");
  EXPECT_EQ(face.Texture()->UseCount(), 1);
}

TEST_F(CBinLoadTest, EndsQuietlyWhereverARecordCouldBegin) {
  const struct {
    const char* label;
    CBinBytes tail;
  } rows[] = {
      {"at a record's end", {}},
      {"a zero word", CBinBytes().Words({0})},
      {"the last word is not interpreted", CBinBytes().Words({0x18})},
      {"less than a word", CBinBytes().Text("abc", 3)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    CBinBytes file;
    file.Header(3).Texture("ROAD").Face(0x18, {{0}, {1}, {2}});
    file.bytes.insert(file.bytes.end(), row.tail.bytes.begin(), row.tail.bytes.end());
    EXPECT_TRUE(Load(file.bytes));
    EXPECT_EQ(model.FaceCount(), 1);
  }
  EXPECT_TRUE(Load(CBinBytes().Header(0).bytes));
  EXPECT_EQ(model.VertexCount(), 0);
}

TEST_F(CBinLoadTest, RepeatedCornersAreDroppedWithTheirCoordinates) {
  CBinBytes file;
  file.Header(4).Texture("W256");
  file.Face(0x18, {{0, kOne}, {1, 0, kOne}, {0, 5, 5}, {2, kOne, kOne}});  // a triangle
  file.Face(0x18, {{3}, {3}, {1}, {1}});                                   // dropped
  file.Face(0x19, {{0}, {0}, {1}, {2}});                                   // a triangle without coordinates
  file.Face(0x18, {}).Face(0x18, {{0}}).Face(0x18, {{0}, {1}});            // dropped
  file.Face(0x18, {{0}, {1}, {2}, {3, 65793, 0}}).End();
  ASSERT_TRUE(Load(file.bytes));
  ASSERT_EQ(model.FaceCount(), 3);
  EXPECT_THAT(Corners(0), ElementsAre(0, 1, 2));
  EXPECT_EQ(model.Face(0).TexCoord(1), (STexCoord{0.0, 1.0}));
  EXPECT_EQ(model.Face(0).TexCoord(2), (STexCoord{1.0, 1.0}));
  EXPECT_THAT(Corners(1), ElementsAre(0, 1, 2));
  EXPECT_THAT(Corners(2), ElementsAre(0, 1, 2, 3));
  EXPECT_EQ(model.Face(2).TexCoord(3).u, 1.0 / 255.0);
  EXPECT_EQ(model.Texture(0).UseCount(), 3);
}

TEST_F(CBinLoadTest, CoordinatesSnapToTheTexelGrid) {
  ask_texture_size = false;
  const struct {
    const char* texture;
    uint32_t raw;
    double expected;
  } rows[] = {
      {"ROAD", 0, 0.0},
      {"ROAD", kOne, 1.0},
      {"ROAD", 266304, 0.0},         // one below the first texel, 16777215 / 63 = 266305
      {"ROAD", 266305, 1.0 / 63.0},  //
      {"ROAD", 0x1000000, 1.0},      // beyond 1.0: 63 again
      {"ROAD", 0xFFFFFFFF, 1.0},     // read without sign, then clamped
      {"W256", 65793, 1.0 / 255.0},
      {"W256", 16777214, 254.0 / 255.0},
      {"W512", 32833, 1.0 / 511.0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.texture) + " " + std::to_string(row.raw));
    CBinBytes file;
    file.Header(3).Texture(row.texture).Face(0x18, {{0, row.raw, 0}, {1, 0, row.raw}, {2}});
    ASSERT_TRUE(Load(file.bytes));
    EXPECT_EQ(model.Face(0).TexCoord(0), (STexCoord{row.expected, 0.0}));
    EXPECT_EQ(model.Face(0).TexCoord(1), (STexCoord{0.0, row.expected}));
  }
}

TEST_F(CBinLoadTest, TextureNamesAreTakenByRule) {
  const struct {
    std::string_view field;
    const char* name;
  } rows[] = {
      {"road", "ROAD.RAW"},
      {"ROAD.RAWxyz", "ROAD.RAW"},
      {"roadsign.rawtail", "ROADSIGN.RAW"},
      {"abcdefghijklmnop", "ABCDEFGHIJKL.RAW"},
      {std::string_view("a.b.c\0junk", 10), "A.B.RAW"},
      {"", ".RAW"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    art.Write(row.name, std::string(4096, '\1'));
    CBinBytes file;
    file.Header(3).Texture(row.field).Face(0x18, {{0}, {1}, {2}}).Texture(row.name).Face(0x18, {{0}, {1}, {2}});
    ASSERT_TRUE(Load(file.bytes));
    ASSERT_EQ(model.TextureCount(), 1) << "the name of the field and of the file are one";
    EXPECT_EQ(model.Texture(0).Name(), row.name);
    EXPECT_EQ(model.Texture(0).UseCount(), 2);
  }
}

TEST_F(CBinLoadTest, AsksOnceALoadAboutTextureSizes) {
  CBinBytes file;
  file.Header(3).Texture("ROAD").Texture("W128").Texture("W256").Texture("W128").Texture("W512").End();
  questions.OnYesNo(kSizeQuestion, EAnswer::kYes);
  EXPECT_TRUE(Load(file.bytes));
  EXPECT_EQ(model.TextureCount(), 4);
  questions.OnYesNo(kSizeQuestion, EAnswer::kNo);
  EXPECT_FALSE(Load(file.bytes));
  EXPECT_THAT(diagnosis.what, HasSubstr("W128.RAW is 128 texels wide"));
  ask_texture_size = false;
  EXPECT_TRUE(Load(file.bytes));
  EXPECT_THAT(questions.TakeMessageTexts(), IsEmpty());
}

TEST_F(CBinLoadTest, MissingTexturesAreAskedForAndKeepTheirNames) {
  CBinBytes file;
  file.Header(3).Texture("gone").Face(0x18, {{0}, {1}, {2}}).Animation({"gone.raw", "Lost.raw"}, 8192).End();
  questions.OnTexture("Texture GONE.RAW not found.", {STextureAnswer::EChoice::kFile, art.File("W256.RAW")});
  questions.OnTexture("Texture Lost.raw not found.", {STextureAnswer::EChoice::kBlank, "", 64});
  ASSERT_TRUE(Load(file.bytes));
  EXPECT_EQ(model.Texture(0).Name(), "GONE.RAW");
  EXPECT_EQ(model.Texture(0).Width(), 256);
  EXPECT_EQ(model.Texture(1).Frames()[1].name, "Lost.raw");

  CTextureFinder anew{store, questions, art.Path() + "/none"};
  questions.OnTexture("Texture GONE.RAW not found.", {STextureAnswer::EChoice::kGiveUp});
  EXPECT_FALSE(LoadBin(model, file.bytes, "", {anew, questions, true}, &diagnosis));
  EXPECT_THAT(diagnosis.what, HasSubstr("GONE.RAW"));
  EXPECT_EQ(model.VertexCount(), 0);
}

TEST_F(CBinLoadTest, AnimationsTakeNamesFromTheSidecarInFileOrder) {
  art.Write("F1.RAW", std::string(4096, '\1'));
  const std::string info = "0\n0\n4\nFLAG\nWHEEL\nFLAG\nFLAG\n";
  CBinBytes file;
  file.Header(3).Animation({"f1.raw", "W256.RAW"}, 6553).Face(0x18, {{0}, {1}, {2}});
  file.Animation({"W256.RAW"}, 0).Face(0x29, {{0, kOne}, {1}, {2}});
  file.Animation({"f1.raw", "W256.RAW"}, 6553).Face(0x18, {{0}, {1}, {2}});
  file.Animation({"f1.raw"}, 6553).Animation({"f1.raw"}, 6553).End();
  ASSERT_TRUE(Load(file.bytes, info));
  // The third record is the first one's animation selected again; the fourth has its name only.
  ASSERT_EQ(model.TextureCount(), 4);
  const CBinTexture& flag = model.Texture(0);
  EXPECT_EQ(flag.Name(), "FLAG");
  EXPECT_EQ(flag.UseCount(), 2);
  EXPECT_EQ(flag.Rate(), 65536.0 / 6553.0);
  EXPECT_EQ(flag.Frames()[0].name, "f1.raw");
  EXPECT_EQ(flag.Frames()[1].image->size, 256);
  EXPECT_EQ(model.Texture(1).Name(), "WHEEL");
  EXPECT_TRUE(std::isinf(model.Texture(1).Rate()));
  EXPECT_EQ(model.Face(1).TexCoord(0).u, 1.0);
  EXPECT_EQ(model.Texture(2).Name(), "FLAG");
  EXPECT_EQ(model.Texture(3).Name(), "ANIMTEXTURE5");
}

TEST_F(CBinLoadTest, UnknownFacesAreAskedForOnceATag) {
  CBinBytes file;
  file.Header(4).Texture("ROAD");
  file.Face(0x99, {{0, kOne}, {1}, {2}}).Face(0x77, {{1}, {2}, {3}, {0}}).Face(0x99, {{3}, {2}, {1}});
  file.Face(0x19, {{0}, {1}, {3}}).End();
  questions.OnUnknownFace(0x99, {EChoice::kChange, 0x29}).OnUnknownFace(0x77, {EChoice::kIgnore});
  ASSERT_TRUE(Load(file.bytes));
  ASSERT_EQ(model.FaceCount(), 3);
  EXPECT_EQ(model.Face(0).Type(), 0x29U);
  EXPECT_EQ(model.Face(0).TexCoord(0).u, 1.0);
  EXPECT_THAT(Corners(1), ElementsAre(3, 2, 1));
  questions.OnUnknownFace(0x99, {EChoice::kIgnore}).OnUnknownFace(0x77, {EChoice::kAbort});
  EXPECT_FALSE(Load(file.bytes));
  EXPECT_EQ(diagnosis.what, "face 1 (type 0x77): an unknown type");
  EXPECT_THAT(questions.TakeMessageTexts(), IsEmpty());
  // As a face without coordinates, the record is laid out as one: the check before it looked at more than is then read.
  const auto bare = CBinBytes().Header(4).Words({0x99, 3, 0, 0, 0, 0, 0, 1, 2, 0x03, 0, 0, 0x03, 0, 0}).End();
  questions.OnUnknownFace(0x99, {EChoice::kChange, 0x19});
  ASSERT_TRUE(Load(bare.bytes));
  EXPECT_THAT(Corners(0), ElementsAre(0, 1, 2));
  // Exactly 20 + 12 n bytes are enough, also without a closing word.
  questions.OnUnknownFace(0x99, {EChoice::kChange, 0x18});
  EXPECT_TRUE(Load(CBinBytes().Header(3).Texture("ROAD").Face(0x99, {{0}, {1}, {2}}).bytes));
  EXPECT_EQ(model.FaceCount(), 1);
}

TEST_F(CBinLoadTest, OtherKindsOfFileAreNamed) {
  EXPECT_FALSE(Load(CBinBytes().Words({0x20}).bytes));
  EXPECT_THAT(questions.TakeMessageTexts(),
              ElementsAre("This is an animation control BIN that\ndoes not contain any BIN model data."));

  const char* question = "Unknown BIN type 0xabc.\nVeldra may crashwhen you attempt to load it.\nContinue loading?";
  questions.OnYesNo(question, EAnswer::kNo).OnYesNo(question, EAnswer::kYes);
  EXPECT_FALSE(Load(CBinBytes().Header(2, 0xABC).bytes));
  EXPECT_TRUE(Load(CBinBytes().Header(2, 0xABC).bytes));
  EXPECT_EQ(model.VertexCount(), 2);
  EXPECT_THAT(questions.TakeMessageTexts(), IsEmpty());
}

TEST_F(CBinLoadTest, TexturedFaceBeforeAnyTextureFailsWithoutAMessage) {
  EXPECT_FALSE(Load(CBinBytes().Header(3).Face(0x18, {{0}, {1}, {2}}).bytes));
  EXPECT_EQ(diagnosis.Text(), "at byte 56: face 0 (type 0x18): no texture is selected before it");
  EXPECT_TRUE(Load(CBinBytes().Header(3).Face(0x19, {{0}, {1}, {2}}).End().bytes));
  EXPECT_EQ(model.Face(0).Texture(), nullptr);
  EXPECT_THAT(questions.TakeMessageTexts(), IsEmpty());
}

TEST_F(CBinLoadTest, DamageIsReportedWithPlaceAndCause) {
  const CBinBytes start = CBinBytes().Header(3).Texture("ROAD");  // 80 bytes
  const auto head = [](uint32_t vertices) { return CBinBytes().Words({0x14, 0, 2, 0, vertices}).Point(1, 2, 3); };
  const auto behind = [&](const CBinBytes& record) {
    CBinBytes file = start;
    file.bytes.insert(file.bytes.end(), record.bytes.begin(), record.bytes.end());
    return file.End().End();
  };
  CBinBytes cut = start;
  cut.FaceHead(0x99, 1, 0, 0, 0, 0).Words({0, 0});
  const struct {
    CBinBytes file;
    size_t offset;
    const char* what;
  } rows[] = {
      {CBinBytes(), 0, "header: the file of 0 bytes ends within it"},
      {CBinBytes().Words({0x14, 0, 2, 0}), 8, "header: the file of 16 bytes ends within it"},
      {head(2), 16, "header: 2 vertices, the file has room for 1"},
      {head(0xFFFFFFFF), 16, "header: 4294967295 vertices, the file has room for 1"},
      {head(0x15555556), 16, "header: 357913942 vertices, the file has room for 1"},  // × 12 wraps to 8
      {behind(CBinBytes().Words({3, 0, 0xFFFFFFFF})), 88,
       "vertex normals: 4294967295 of them, the file has room for 0"},
      {behind(CBinBytes().Animation({}, 1)), 88, "animated texture 0: an animation needs at least one frame"},
      {behind(CBinBytes().Words({0x1D, 0, 0x08000000, 0, 1, 0, 0})), 88,
       "animated texture 0: 134217728 frames, the file has room for 0"},
      {behind(CBinBytes().FaceHead(0x18, 5, 0, 0, 0, 0)), 84, "face 0 (type 0x18): 5 corners, 0 to 4 are possible"},
      {behind(CBinBytes().FaceHead(0x19, 0xFFFFFFFF, 0, 0, 0, 0)), 84,
       "face 0 (type 0x19): -1 corners, 0 to 4 are possible"},
      {behind(CBinBytes().Face(0x18, {{0}, {1}, {3}})), 128,
       "face 0 (type 0x18): corner 2 names vertex 3, the model has 3"},
      {behind(CBinBytes().Face(0x19, {{0}, {0xFFFFFFFF}, {1}})), 108,
       "face 0 (type 0x19): corner 1 names vertex 4294967295, the model has 3"},
      {behind(CBinBytes().Face(0x18, {{0}, {1}}).Face(0x18, {{0}, {0}, {7}})), 176,
       "face 1 (type 0x18): corner 2 names vertex 7, the model has 3"},
      {behind(CBinBytes().FaceHead(0x99, 5, 0, 0, 0, 0)), 84, "face 0 (type 0x99): 5 corners, 0 to 4 are possible"},
      {cut, 84, "face 0 (type 0x99): 28 bytes are left, 32 needed"},
      {behind(CBinBytes().Face(0x99, {{0}, {3}})), 116, "face 0 (type 0x99): corner 1 names vertex 3, the model has 3"},
      {behind(CBinBytes().Words({0x17})), 88, ""},  // the two words behind it are the pair: well-formed
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const bool is_damaged = *row.what != '\0';
    if (std::string_view(row.what).find("0x99") != std::string_view::npos)
      questions.OnUnknownFace(0x99, {EChoice::kIgnore});
    EXPECT_EQ(Load(row.file.bytes), !is_damaged);
    ASSERT_EQ(questions.Messages().size(), is_damaged ? 1U : 0U);
    if (!is_damaged) continue;
    EXPECT_EQ(diagnosis.what, row.what);
    EXPECT_EQ(diagnosis.offset, row.offset);
    EXPECT_EQ(questions.Messages()[0].details, diagnosis.Text());
    EXPECT_THAT(questions.TakeMessageTexts(), ElementsAre("Model is currupt and cannot be loaded"));
  }
}

TEST_F(CBinLoadTest, EveryPrefixLoadsOrIsRefusedCleanly) {
  CBinBytes file;
  file.Header(4).Words({3, 0, 4}).Point(1, 2, 3).Point(1, 2, 3).Point(1, 2, 3).Point(1, 2, 3);
  file.Texture("ROAD").Face(0x18, {{0, kOne}, {1}, {2}, {3}}).Words({0x0A, 0}).Face(0x19, {{0}, {1}, {2}});
  file.Words({0x17, 1, 2}).Animation({"ROAD.RAW", "W256.RAW"}, 6553).Face(0x29, {{0}, {1}, {2}, {2}});
  file.Texture("W256").Face(0x00, {{3}, {2}, {1}}).End();
  int loaded = 0;
  for (size_t size = 0; size <= file.bytes.size(); ++size) {
    SCOPED_TRACE(size);
    std::vector<uint8_t> prefix(file.bytes.begin(), file.bytes.begin() + static_cast<std::ptrdiff_t>(size));
    const bool is_loaded = Load(prefix);
    loaded += is_loaded ? 1 : 0;
    EXPECT_EQ(questions.TakeMessageTexts().size(), is_loaded ? 0U : 1U);
    EXPECT_LE(diagnosis.offset, size);
  }
  // Behind the vertices and each of the ten records, and with up to one whole word more.
  EXPECT_EQ(loaded, 11 * 5);
}

}  // namespace

}  // namespace veldra::testing

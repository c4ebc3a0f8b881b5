#include "interchange/3dstudiofile.h"

#include <sstream>

#include "interchange/import3ds.h"
#include "interchange/importfixture.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {
namespace {

using testing::Bytes;
using testing::Chunk;
using testing::FaceList;
using testing::Join;
using testing::Mesh;
using testing::Object;
using testing::StudioFile;
using testing::TextOf;
using testing::VertexList;

const Bytes kTriangle = VertexList({0, 0, 0, 1, 0, 0, 0, 1, 0});
const Bytes kVersion3 = Chunk(0x0002, {3, 0, 0, 0});

Bytes Light(const Bytes& inside) {
  return StudioFile({Object("Lamp", {Chunk(0x4600, Join({Bytes(12), inside}))})});
}

class C3dsTest : public testing::CImportTest {
 protected:
  bool Import(const Bytes& file) {
    return ImportFrom3ds(model, folder.Write("in.3ds", TextOf(file)), Road(), context, &fault);
  }
  std::string TracedBy(const Bytes& file) {
    std::string traced;
    const TraceSink before = SetTraceSink([&](std::string_view text) { traced += text; });
    EXPECT_TRUE(C3DStudioFile("").ReadBytes(file, questions));
    SetTraceSink(before);
    return traced;
  }
};

TEST_F(C3dsTest, MeshesOfAllObjectsBecomeOneModel) {
  const Bytes materials = Chunk(0x4130, {'m', 0, 1, 0, 0, 0});
  ASSERT_TRUE(Import(
      StudioFile({Object("A", {Chunk(0x4100, Join({kTriangle, FaceList({2, 0, 1, 7}, materials)}))}),
                  Chunk(0xAFFF, Chunk(0xA000, {'m', 0})),
                  Object("B", {Chunk(0x4600, Bytes(12)), Chunk(0x4100, Join({Chunk(0x4140, {1, 0, 0, 0}), kTriangle,
                                                                             FaceList({0, 1, 2, 0, 1, 1, 2, 0})}))})},
                 {kVersion3, Chunk(0xB000, Bytes(30, 0xFF))})))
      << fault.what;
  EXPECT_EQ(model.VertexCount(), 6);
  // A triangle with a corner twice is left out.
  EXPECT_EQ(Polygons(), (std::vector<std::vector<int32_t>>{{2, 0, 1}, {3, 4, 5}}));
  EXPECT_EQ(model.Vertex(4).Position(), (SPoint{10000, 0, 0}));
  EXPECT_EQ(model.CheckInvariants(), "");
  ASSERT_EQ(model.TextureCount(), 1);
  EXPECT_EQ(model.Texture(0).Name(), "ROAD.RAW");
  for (int32_t i = 0; i < 2; ++i) {
    const CBinFace& face = model.Face(i);
    EXPECT_EQ(face.Type(), kFaceShiny);
    EXPECT_EQ(face.TexCoord(0), (STexCoord{0, 0}));
    EXPECT_EQ(face.TexCoord(1), (STexCoord{1, 0}));
    EXPECT_EQ(face.TexCoord(2), (STexCoord{1, 1}));
  }
}

TEST_F(C3dsTest, CoordinatesAreCutOffTowardZero) {
  ASSERT_TRUE(Import(StudioFile(
      {Mesh({VertexList({0.00019F, -0.00019F, 0.00009F, 0.0001F, -0.0F, 214748.36F, -214748.36F, 1, 2})})})));
  // 0.0001 as a float is a little less than that.
  EXPECT_EQ(Positions(), (std::vector<SPoint>{{1, -1, 0}, {0, 0, 2147483593}, {-2147483593, 10000, 20000}}));
}

TEST_F(C3dsTest, AddsToWhatTheModelHas) {
  model.AddVertex({5, 5, 5});
  model.AddTexture(std::make_unique<CBinTexture>(model, "ROAD.RAW", textures.GetTexture(Road())));
  const uint64_t revision = model.Revision();
  ASSERT_TRUE(Import(StudioFile({Mesh({kTriangle, FaceList({0, 1, 2, 0})})})));
  EXPECT_EQ(model.Revision(), revision + 1) << "one operation";
  EXPECT_EQ(Polygons(), (std::vector<std::vector<int32_t>>{{1, 2, 3}}));
  EXPECT_EQ(model.TextureCount(), 1);
}

TEST_F(C3dsTest, NewerVersionsAreRefusedWithTheMessage) {
  EXPECT_FALSE(Import(StudioFile({Mesh({kTriangle})}, {Chunk(0x0002, {4, 0, 0, 0})})));
  EXPECT_TRUE(fault.is_told);
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_EQ(questions.Messages()[0].text, "This version of the 3ds file format is not supported");
  EXPECT_EQ(questions.Messages()[0].caption, "Veldra");
  EXPECT_EQ(questions.Messages()[0].icon, EIcon::kWarning);
}

TEST_F(C3dsTest, DamagedFilesSayWhereAndChangeNothing) {
  const Bytes mesh = Mesh({kTriangle, FaceList({0, 1, 2, 0})});
  Bytes many_faces = {0x2C, 0x01};
  many_faces.resize(2 + 17);
  Bytes most_vertices = {0xFF, 0xFF};
  most_vertices.resize(2 + 10);
  const struct {
    const char* name;
    Bytes file;
    const char* what;
  } rows[] = {
      {"empty", {}, "the file of 0 bytes is too short"},
      {"one byte", {'M'}, "the file of 1 bytes is too short"},
      {"another format", Bytes(20, 'x'), "it begins with 0x7878, a 3ds file with 0x4D4D"},
      {"cut short", Chunk(0x4D4D, mesh, 1), "chunk 0x4D4D at byte 0: its length is 83, the file has 82 bytes"},
      {"no room for a chunk", Chunk(0x4D4D, {1, 2, 3}), "at byte 6: 3 bytes are left, a chunk needs 6"},
      {"too long", Chunk(0x4D4D, Chunk(0x1234, {}, 1)), "chunk 0x1234 at byte 6: its length is 7, 6 bytes are left"},
      {"faces", StudioFile({Mesh({kTriangle, Chunk(0x4120, many_faces)})}),
       "chunk 0x4120 at byte 72: 300 faces need 2400 bytes, 17 are left"},
      {"vertices", StudioFile({Mesh({Chunk(0x4110, most_vertices)})}),
       "chunk 0x4110 at byte 28: 65535 vertices need 786420 bytes, 10 are left"},
      {"no count", StudioFile({Mesh({Chunk(0x4110, {1})})}),
       "chunk 0x4110 at byte 28: the number of vertices needs 2 bytes, 1 are left"},
      {"no end of a name", StudioFile({Chunk(0x4000, {'n', 'a'})}),
       "chunk 0x4000 at byte 12: the object's name does not end"},
      {"two lists", StudioFile({Mesh({kTriangle, kTriangle})}),
       "chunk 0x4110 at byte 72: a second list of vertices in one mesh"},
      {"faces first", StudioFile({Mesh({FaceList({0, 1, 2, 0}), kTriangle})}),
       "chunk 0x4120 at byte 28: faces before the list of vertices"},
      {"index", StudioFile({Mesh({kTriangle, FaceList({0, 1, 2, 0, 0, 1, 3, 0})})}),
       "chunk 0x4120 at byte 72: face 1 names vertex 3, the mesh has 3"},
      {"version", StudioFile({}, {Chunk(0x0002, {3})}), "chunk 0x0002 at byte 6: a version needs 4 bytes, 1 are left"},
      {"too large", StudioFile({Mesh({VertexList({0, 0, 214749})})}),
       "vertex 0: (0, 0, 214749) times 10000 does not fit into 32 bits"},
      {"no number", StudioFile({Mesh({VertexList({0, std::numeric_limits<float>::quiet_NaN(), 0})})}),
       "vertex 0: (0, nan, 0) times 10000 does not fit into 32 bits"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    fault = {};
    EXPECT_FALSE(Import(row.file));
    EXPECT_EQ(fault.what, row.what);
    EXPECT_FALSE(fault.is_told);
  }
  for (int length = 0; length < 6; ++length) {
    EXPECT_FALSE(Import(StudioFile({Chunk(0x4000, {}, length - 6)})));
    EXPECT_EQ(fault.what, Format("chunk 0x4000 at byte 12: a length of %d is less than its header", length));
  }
  EXPECT_FALSE(ImportFrom3ds(model, folder.File("none.3ds"), Road(), context));
  EXPECT_EQ(model.VertexCount() + model.TextureCount(), 0);
}

/// Every beginning of a file, in a block of just its size.
TEST_F(C3dsTest, CutFilesNeverReadOutside) {
  const Bytes file = StudioFile({Mesh({kTriangle, FaceList({0, 1, 2, 0}, Chunk(0x4150, Bytes(4)))})}, {kVersion3});
  for (size_t size = 0; size < file.size(); ++size) {
    const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(C3DStudioFile("").ReadBytes(cut, questions)) << size;
  }
}

TEST_F(C3dsTest, DeepNestingIsPassedOver) {
  CByteWriter nested;
  constexpr uint32_t kDepth = 1000000;
  for (uint32_t i = 0; i < kDepth; ++i) {
    nested.WriteU16(i == 0 ? 0x4D4D : i == 1 ? 0x3D3D : 0xAFFF);
    nested.WriteU32(6 * (kDepth - i));
  }
  C3DStudioFile file("");
  EXPECT_TRUE(file.ReadBytes(nested.Bytes(), questions));
  EXPECT_TRUE(file.Vertices().empty());
}

TEST_F(C3dsTest, PaddingBehindTheMainChunkAndDamagedLightsAreNoMatter) {
  const Bytes light = Object("Lamp", {Chunk(0x4600, Join({Bytes(12), Chunk(0x4610, {1}), Chunk(0x465B, {}, 99)}))});
  C3DStudioFile file("");
  ASSERT_TRUE(file.ReadBytes(Join({StudioFile({light, Mesh({kTriangle})}), Bytes(9, 0)}), questions));
  EXPECT_EQ(file.Vertices().size(), 3U);
  EXPECT_EQ(file.BoundingBox().max, (std::array<float, 3>{1, 1, 0}));
  EXPECT_EQ(file.ScaleFactor(), 10000.0F);
}

TEST_F(C3dsTest, TracesWhatItMeets) {
  EXPECT_EQ(TracedBy(StudioFile({Chunk(0x7777, Bytes(5)), Mesh({kTriangle})}, {kVersion3, Chunk(0xB000, Bytes(8))})),
            "Version chunk found.Keyframer chunk found. Skipping 8 bytes\nEditor chunk found\n"
            "Unknown chunk 0x7777 found - 5 bytes skipped\nFound editor object(0x36 bytes)\n"
            ">> C3DStudioFile::ReadFile(): object Box\nFound object trimesh(0x2c bytes)\n"
            "Found trimesh vertlist(0x26 bytes)\n");
}

/// Ids and names as they have always been, spelling and all.
TEST_F(C3dsTest, TracesTheNameOfEachChunkThatIsPassedOver) {
  const struct {
    const char* place;
    const char* chunks;
    Bytes (*around)(const Bytes& chunk);
  } rows[] = {
      {"editor",
       "0100 one unit;1100 background bitmap;1101 use bitmap indicator;1200 background color;"
       "1201 use background color indicator;1300 gradient colors;1301 use gradient colors indicator;"
       "1400 shadow map bias;1420 shadow map size;1450 shadow map range;1460 ray trace bias;1470 ray trace on;"
       "2100 ambient color;2200 editor fog;2201 use fog indicator;2210 editor fog background;2300 distance queue;"
       "2301 use distance queue indicator;2302 layered fog;2303 use layered fog indicator;"
       "2310 dim background indicator;3D3E mesh version",
       [](const Bytes& chunk) { return StudioFile({chunk}); }},
      {"object", "4010 hidden indicator;4012 no cast shaodws indicator;4013 matte;4015 eternal proc",
       [](const Bytes& chunk) { return StudioFile({Object("A", {chunk})}); }},
      {"trimesh",
       "4130 face materials;4140 map coordinates;4150 smooth groups;4160 local coordinates;4165 object coordinates;"
       "4181 eternal procedure name;4182 eternal procedure parameters",
       [](const Bytes& chunk) { return StudioFile({Mesh({chunk})}); }},
      {"material", "A000 name", [](const Bytes& chunk) { return StudioFile({Chunk(0xAFFF, chunk)}); }},
      {"sub-material", "A300 file name",
       [](const Bytes& chunk) { return StudioFile({Chunk(0xAFFF, Chunk(0xA200, chunk))}); }},
      {"light", "465B multiplier", [](const Bytes& chunk) { return Light(chunk); }},
      {"spotlight", "4656 roll",
       [](const Bytes& chunk) {
         return Light(Chunk(0x4610, Join({Bytes(20), chunk})));
       }},
      {"camera", "7001 window settings",
       [](const Bytes& chunk) {
         return StudioFile({Object("A", {Chunk(0x4700, Join({Bytes(32), chunk}))})});
       }},
  };
  for (const auto& row : rows) {
    std::istringstream chunks(row.chunks);
    for (std::string chunk; std::getline(chunks, chunk, ';');) {
      const auto id = static_cast<uint16_t>(std::stoi(chunk.substr(0, 4), nullptr, 16));
      const std::string traced = TracedBy(row.around(Chunk(id, Bytes(5))));
      EXPECT_TRUE(traced.ends_with(Format("Found %s %s(0x5 bytes)\n", row.place, chunk.c_str() + 5))) << traced;
    }
  }
}

TEST_F(C3dsTest, StoppingLeavesTheModelAsItWas) {
  questions.CancelWorkAfter(0);
  EXPECT_FALSE(Import(StudioFile({Mesh({kTriangle, FaceList({0, 1, 2, 0})})})));
  EXPECT_TRUE(fault.is_told);
  EXPECT_EQ(model.VertexCount(), 0);
}

TEST_F(C3dsTest, ExportWritesNothing) {
  ExportTo3ds(model, folder.File("out.3ds"));
  EXPECT_FALSE(FileExists(folder.File("out.3ds")));
}

}  // namespace
}  // namespace veldra

#include <bit>

#include "cli/clifixture.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/png.h"
#include "platform/text.h"

namespace veldra::testing {
namespace {

using nlohmann::json;

class CliImport : public CCliTest {
 protected:
  CliImport() { folder.Write("road.raw", std::string(4096, 'x')); }

  /// wood.obj, a square of two pictures with the same first letters, one plain material and one that has a RAW file.
  void WriteWood() const {
    for (const int side : {100, 200}) {
      const auto bytes = static_cast<size_t>(side * side * 4);
      const std::string name = Format("Wooden Panel %d.png", side);
      ASSERT_TRUE(WritePng(folder.File(name), {side, side, std::vector<uint8_t>(bytes, 200)}));
    }
    folder.Write("my wood.mtl",
                 "newmtl Light Wood\r\nmap_Kd -s 1 1 1 Wooden Panel 100.png\r\nnewmtl b_0x33\r\n"
                 "MAP_KD C:\\Me\\WOODEN PANEL 200.PNG\r\nnewmtl plain_0x29\r\nnewmtl gone\r\nmap_Kd gone.png\r\n");
    folder.Write("wood.obj",
                 "mtllib my wood.mtl\no My Box\nv 0 0 0\nv 1 0 0\nv 1 1 .2\nvt 5 5\nvt 6 6\nvt 5 7.5\nf 1 2 3\n"
                 "usemtl Light Wood\nf -3/1 -2/2 -1/2\nusemtl b_0x33\nf 1/1 2/2 3/3\nusemtl plain_0x29\nf 1 2 3\n"
                 "usemtl gone\nf 1 2 3\nusemtl Road_0x11.001\nf 1 2 3\n");
  }
};

TEST_F(CliImport, MaterialsBecomeTextures) {
  WriteWood();
  const SResult first = Run("import $/wood.obj $/out.bin --pictures $/made --fit 50");
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.out, "Cut off the texture coordinates of 1 faces\n");
  EXPECT_EQ(first.err, "Veldra: \"wood.obj\" was imported, but not all of it.\n" + folder.Path() + "/wood.obj" +
                           "\nmaterial gone: there is no picture gone.png\n"
                           "materials without a texture: plain_0x29, gone\n"
                           "1 face shows more than the whole texture: cut off\n\n");
  EXPECT_EQ(ListDirectory(folder.File("made")),
            (std::vector<std::string>{"WOODENP1.ACT", "WOODENP1.RAW", "WOODENPA.ACT", "WOODENPA.RAW"}));
  EXPECT_EQ(ReadTestFile(folder.File("made/WOODENP1.RAW")).size(), 65536U);
  EXPECT_EQ(Run("import $/wood.obj $/out.bin --pictures $/made --fit 50").status, 0);
  EXPECT_EQ(ListDirectory(folder.File("made")).size(), 4U) << "they are there already";

  folder.Write("WOODENPA.RAW", ReadTestFile(folder.File("made/WOODENPA.RAW")));
  folder.Write("WOODENP1.RAW", ReadTestFile(folder.File("made/WOODENP1.RAW")));
  const json model = JsonOf("out.bin");
  EXPECT_EQ(model["bounds"], (json{0, 0, 0, 50, 50, 10}));
  EXPECT_EQ(model["faceGroups"], json::parse(R"([{"name": "My_Box", "members": [0, 1, 2, 3, 4, 5]}])"));
  const std::vector<std::pair<int, json>> faces = {{0x19, nullptr},        {0x18, "WOODENPA.RAW"},
                                                   {0x33, "WOODENP1.RAW"}, {0x19, "WOODENP1.RAW"},
                                                   {0x19, "WOODENP1.RAW"}, {0x11, "ROAD.RAW"}};
  for (size_t i = 0; i < faces.size(); ++i) {
    // A model file cannot say of a face between others that it has no texture.
    const json& texture = model["faces"][i]["texture"];
    EXPECT_EQ(model["faces"][i]["type"], faces[i].first) << i;
    EXPECT_EQ(texture.is_null() ? json() : model["textures"][texture.get<size_t>()]["name"], faces[i].second) << i;
  }
  EXPECT_EQ(model["faces"][1]["v"], (json{1.0, 0.0, 0.0}));
  EXPECT_EQ(model["faces"][2]["v"], (json{1.0, 1.0, 127 / 255.0}));
}

TEST_F(CliImport, MaterialsOfGltfBringTheirPictures) {
  // A square of three triangles' materials: a picture beside it, one within, and a colour.
  CByteWriter packed;
  for (const float part : {0.F, 0.F, 0.F, 2.F, 0.F, 0.F, 2.F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.F, 1.F, 1.F})
    packed.WriteU32(std::bit_cast<uint32_t>(part));
  ASSERT_TRUE(WritePng(folder.File("My Wood.png"), {64, 64, std::vector<uint8_t>(size_t{64} * 64 * 4, 200)}));
  const std::string picture = ReadTestFile(folder.File("My Wood.png"));
  packed.WriteText(picture);
  const std::string text = Format(
      R"({"asset":{"version":"2.0"},"nodes":[{"mesh":0,"name":"Body"}],"buffers":[{"uri":"a%%20b.bin"}],
"bufferViews":[{"buffer":0,"byteLength":60},{"buffer":0,"byteOffset":60,"byteLength":%zu}],
"accessors":[{"bufferView":0,"componentType":5126,"type":"VEC3","count":3},
{"bufferView":0,"byteOffset":36,"componentType":5126,"type":"VEC2","count":3}],
"images":[{"uri":"../../my%%20wood.PNG"},{"name":"Skin","bufferView":1}],"textures":[{"source":0},{"source":1}],
"materials":[{"name":"a","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}},
{"name":"b_0x33","pbrMetallicRoughness":{"baseColorTexture":{"index":1}}},
{"name":"Red","pbrMetallicRoughness":{"baseColorFactor":[1,0,0,1]}}],"meshes":[{"primitives":[
{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":0},{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":1},
{"attributes":{"POSITION":0},"material":2}]}]})",
      picture.size());
  folder.Write("A B.BIN", std::vector<uint8_t>(packed.Bytes().begin(), packed.Bytes().end()));
  folder.Write("car.gltf", text);
  Expect({{"import $/car.gltf $/out.bin --pictures $/made --fit 100", 0, "", ""}});
  EXPECT_EQ(ListDirectory(folder.File("made")),
            (std::vector<std::string>{"MYWOOD.ACT", "MYWOOD.RAW", "RED.ACT", "RED.RAW", "SKIN.ACT", "SKIN.RAW"}));
  EXPECT_EQ(ReadTestFile(folder.File("made/RED.ACT")).substr(0, 3), std::string("\xFF\0\0", 3));
  for (const std::string name : {"MYWOOD", "RED", "SKIN"})
    folder.Write(name + ".RAW", ReadTestFile(folder.File("made/" + name + ".RAW")));
  const json model = JsonOf("out.bin");
  EXPECT_EQ(model["vertices"], (json{{0, 0, 0}, {100, 0, 0}, {100, 50, 0}}));
  EXPECT_EQ(model["textures"][1]["name"], "SKIN.RAW");
  EXPECT_EQ(model["faces"][1]["type"], 0x33);
  EXPECT_EQ(model["faces"][0]["v"], (json{0.0, 0.0, 1.0})) << "counted from the picture's first row, as here";
  EXPECT_EQ(model["faceGroups"][0]["name"], "Body");

  ASSERT_TRUE(RemoveFile(folder.File("A B.BIN")));
  Expect({{"import $/car.gltf $/new.bin", 1, "", "its buffer a%20b.bin: there is no such file beside it"}});
  EXPECT_FALSE(FileExists(folder.File("new.bin")));
}

TEST_F(CliImport, TexturesAreFoundWhereThoseOfModelsAre) {
  const std::string texture(4096, 'x');
  folder.Write(
      "game/MESHES/wall.obj",
      "mtllib wall.mtl\nv 0 0 0\nv 9 0 0\nv 9 9 0\nusemtl beside\nf 1 2 3\nusemtl art\nf 1 2 3\nusemtl packed\n"
      "f 1 2 3\n");
  folder.Write("game/MESHES/wall.mtl", "newmtl beside\nmap_Kd Brick.png\n");
  folder.Write("game/MESHES/brick.raw", texture);
  folder.Write("game/Art/ART.RAW", texture);
  folder.Write("packed.raw", texture);
  folder.Write("chosen.raw", texture);
  Expect({{"pod create $/game/MESHES/x.pod $/packed.raw $/chosen.raw", 0}});
  ASSERT_TRUE(RemoveFile(folder.File("packed.raw")) && RemoveFile(folder.File("chosen.raw")));
  Expect({{"import $/game/MESHES/wall.obj $/out.bin --texture CHOSEN.RAW", 0, "", ""},
          {"textures $/out.bin --blank-texture 64", 0, "BRICK.RAW\nART.RAW\nPACKED.RAW\n", "BRICK.RAW not found"},
          {"import $/game/MESHES/wall.obj $/out.bin --texture NOWHERE.RAW", 1, "", "Texture NOWHERE.RAW not found."}});
}

TEST_F(CliImport, ASizeThatVanishesIsSaid) {
  folder.Write("small.obj", "v 0 0 0\nv .5 0 0\nv .5 .2 3\nf 1 2 3\n");
  Expect({{"import $/small.obj $/s.bin", 0, "",
           "The mesh is 0.5 x 0.2 x 3 units large. In whole units nothing of it is left along x and y. --fit 450"}});
  EXPECT_EQ(JsonOf("s.bin")["faces"][0]["type"], 0x19);
  // Even where cutting off would take a unit and more.
  folder.Write("odd.obj", "v -10.9 0 0\nv 9.9 0 0\nv 0 1 0\nf 1 2 3\n");
  Expect({{"import $/odd.obj $/s.bin --fit 20.8", 0}});
  EXPECT_EQ(JsonOf("s.bin")["bounds"], (json{-11, 0, 0, 10, 1, 0}));
}

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
  folder.Write("point.obj", "v 1 1 1\n");
  WriteWood();
  const struct {
    const char* line;
    int status;
    const char* err;
  } rows[] = {
      {"$/bad.3ds $/Old.bin --texture road.raw", 1, "could not be imported.\nthe file of 2 bytes is too short\n"},
      {"$/large.obj $/Old.bin --texture road.raw", 1, "line 1: (1e+10, 0, 0) does not fit into 32 bits"},
      {"$/large.obj $/Old.bin --texture none.raw --scale .1", 1, "Texture none.raw not found."},
      {"$/large.obj $/Old.bin --texture ABCDEFGHI.RAW --scale .1", 1, "too long for a model file: 12 characters fit."},
      {"$/x.txt $/Old.bin --texture road.raw", 2, "is no mesh file (*.obj *.3ds *.gltf *.glb *.ply *.stl)"},
      {"$/bad.3ds $/Old.bin --texture road.raw --center", 2, "not for .3ds files"},
      {"$/bad.obj $/Old.bin --texture road.raw --scale 0", 2, "\"0\" is not a number above 0"},
      {"$/bad.obj $/Old.bin --fit 0", 2, "\"0\" is not a number above 0"},
      {"$/point.obj $/Old.bin --fit 10", 1, "it has no extent that could be scaled"},
      {"$/wood.obj $/Old.bin --pictures $/no/where", 1, "There is no such folder."},
      {"$/wood.obj $/no/Old.bin --pictures $/made", 1, "Model could not be saved."}};
  for (const auto& row : rows) {
    Expect({{std::string("import ") + row.line, row.status, "", row.err}});
    EXPECT_EQ(ReadTestFile(folder.File("Old.bin")), "old");
    EXPECT_FALSE(FileExists(folder.File("made")));
  }
}

}  // namespace
}  // namespace veldra::testing

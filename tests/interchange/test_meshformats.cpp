#include "interchange/meshformats.h"

#include <algorithm>
#include <bit>

#include "interchange/gltfreader.h"
#include "interchange/importfixture.h"
#include "interchange/plyreader.h"
#include "interchange/stlreader.h"
#include "platform/text.h"

namespace veldra::testing {
namespace {

/// "0 0 0, 1 0 0 | 0 1 2 | Box": vertices, faces with their texture coordinates, groups; or what is wrong.
std::string Summary(const std::optional<SWaveMesh>& mesh, const SImportFault& fault) {
  if (!mesh) return "! " + fault.what;
  std::string text;
  for (const auto& [x, y, z] : mesh->vertices)
    text += Format("%s%g %g %g", text.empty() ? "" : ", ", x, y, z);
  for (size_t face = 0; face < mesh->FaceCount(); ++face) {
    text += face == 0 ? " |" : ",";
    for (size_t i = mesh->FirstCorner(face); i < mesh->face_ends[face]; ++i) {
      text += Format(" %d", mesh->corners[i]);
      const int32_t coord = mesh->corner_coords.empty() ? -1 : mesh->corner_coords[i];
      if (coord < 0) continue;
      const STexCoord& uv = mesh->coords[static_cast<size_t>(coord)];
      text += Format("(%g %g)", uv.u, uv.v);
    }
  }
  for (const auto& section : mesh->sections)
    for (const int32_t group : section.groups)
      text += Format(" | %zu:", section.first_face) + mesh->group_names[static_cast<size_t>(group)];
  return text + mesh->remarks.Text();
}

Bytes FloatBytes(const std::vector<float>& values, bool is_big_endian = false) {
  Bytes bytes;
  for (const float value : values)
    for (uint32_t i = 0; i < 4; ++i)
      bytes.push_back(static_cast<uint8_t>(std::bit_cast<uint32_t>(value) >> 8 * (is_big_endian ? 3 - i : i)));
  return bytes;
}

Bytes BytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

constexpr const char* kPlyParts =
    "element vertex 3\nproperty float x\nproperty float y\nproperty float z\nelement face 1\n"
    "property list uchar uchar vertex_indices\nend_header\n";

TEST(MeshFormats, PlyFilesGiveTheirPolygons) {
  const std::string parts = kPlyParts;
  const Bytes corners = {3, 0, 1, 2};
  const std::vector<float> points = {0, 0, 0, 1, 0, 0, 0, 2, 0};
  const std::string triangle = "0 0 0, 1 0 0, 0 2 0 | 0 1 2";
  const struct {
    Bytes file;
    std::string expected;
  } rows[] = {
      {BytesOf("ply\r\nformat ascii 1.0\r\nelement vertex 4\r\nproperty float x\r\nproperty float y\r\n"
               "property float z\r\nproperty float nx\r\nproperty float s\r\nproperty float t\r\nelement face 3\r\n"
               "property list uchar int vertex_index\r\nproperty uchar red\r\nend_header\r\n"
               "0 0 0 nan 0 0\r\n1 0 0 0 1 0\r\n1 1 0 0 1 1\r\n0 1 0 0 0 1\r\n4 0 1 2 3 255\r\n3 0 0 1 9\r\n4 1 0 2 0 "
               "9\r\n"),
       "0 0 0, 1 0 0, 1 1 0, 0 1 0 | 0(0 0) 1(1 0) 2(1 1) 3(0 1), 1(1 0) 0(0 0) 2(1 1)1 face left out\n"},
      {Join({BytesOf("ply\nformat binary_little_endian 1.0\n" + parts), FloatBytes(points), corners}), triangle},
      {Join({BytesOf("ply\nformat binary_big_endian 1.0\n" + parts), FloatBytes(points, true), corners}), triangle},
      {BytesOf("ply\nformat ascii 1.0\nelement face 1\nproperty list uchar int vertex_index\n"
               "property list uchar float texcoord\nelement vertex 3\nproperty float x\nproperty float y\n"
               "property float z\nend_header\n3 0 1 2 6 0 0 .5 0 0 1\n0 0 0\n1 0 0\n0 2 0\n"),
       "0 0 0, 1 0 0, 0 2 0 | 0(0 0) 1(0.5 0) 2(0 1)"},
      {Join({BytesOf("ply\nformat binary_little_endian 1.0\n" + parts), FloatBytes(points)}), "! face 0 is not whole"},
      {Join({BytesOf("ply\nformat binary_little_endian 1.0\n" + parts), FloatBytes(points), {3, 0, 1, 3}}),
       "! a face names vertex 3, there are 3"},
      {Join({BytesOf("ply\nformat binary_little_endian 1.0\n" + parts), FloatBytes(points), {200, 0, 1, 2}}),
       "! face 0 is not whole"},
      {BytesOf("ply\nformat ascii 1.0\nelement vertex 4000000000\nelement face 1\n"
               "property list uchar int vertex_index\nend_header\n3 0 1 2\n"),
       "! it has no vertices"},
      {BytesOf("ply\nformat ascii 1.0\nelement vertex 4000000000\nproperty float x\nend_header\n3 0 1 2\n"),
       "! it ends before its 4000000000 of \"vertex\""},
      {BytesOf("ply\nformat ascii 1.0\nproperty float x\nend_header\n"),
       "! line 3: \"property float x\" is not understood"},
      {BytesOf("ply\nformat ascii 1.0\n"), "! its header has no end"},
      {BytesOf("plain"), "! it does not begin with \"ply\""}};
  for (const auto& [file, expected] : rows) {
    SImportFault fault;
    EXPECT_EQ(Summary(ParsePly(file, nullptr, fault), fault), expected) << TextOf(file);
  }
}

TEST(MeshFormats, StlFilesGiveTrianglesThatShareVertices) {
  const auto binary = [](uint8_t count, const std::vector<float>& points) {
    Bytes file = BytesOf("solid, but binary");
    file.resize(80);
    file.insert(file.end(), {count, 0, 0, 0});
    for (size_t i = 0; i + 9 <= points.size(); i += 9)
      file = Join({file,
                   FloatBytes({0, 0, 1}),
                   FloatBytes({points.begin() + static_cast<int64_t>(i), points.begin() + static_cast<int64_t>(i) + 9}),
                   {0, 0}});
    return file;
  };
  const std::vector<float> two = {0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 2, 0, 1, 0, -0.F, 1, 2, 0};
  const struct {
    Bytes file;
    std::string expected;
  } rows[] = {
      {binary(2, two), "0 0 0, 1 0 0, 0 2 0, 1 2 0 | 0 1 2, 2 1 3"},
      {binary(3, two), "! it should hold 3 triangles, 2 are there"},
      {binary(1, {0, 0, 0, 1, 0, 0, 0, 0, std::nanf("")}), "! triangle 1 has no place"},
      {binary(1, {0, 0, 0, 0, 0, 0, 1, 1, 1}), "! it has no triangles"},
      {BytesOf("solid"), "! it has no triangles"},
      {BytesOf("short"), "! the file of 5 bytes is too short"},
      {BytesOf("  solid Left Door\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1e0 0 0\nvertex 0 2 0\n"
               "endloop\nendfacet\nendsolid\nsolid\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 3 3 0\nendloop\n"),
       "0 0 0, 1 0 0, 0 2 0, 0 0 0, 1 0 0, 3 3 0 | 0 1 2, 3 4 5 | 0:Left Door"},
      {BytesOf("solid\nouter loop\nvertex 0 0\n"), "! line 3: a vertex needs three coordinates"},
      {BytesOf("solid\nouter loop\nvertex 0 0 0\n"), "! its last loop has no end"}};
  for (const auto& [file, expected] : rows) {
    SImportFault fault;
    EXPECT_EQ(Summary(ParseStl(file, nullptr, fault), fault), expected) << TextOf(file);
  }
}

/// The points (0 0 0), (1 0 0), (0 2 0), (1 2 0), (0 2 0), then u and v of five, then indices of 8 and of 16 bits.
class Gltf : public ::testing::Test {
 protected:
  std::string Read(const std::string& rest, const Bytes* file = nullptr) const {
    const std::string text =
        R"({"asset":{"version":"2.0"},"buffers":[{"uri":"b"}],"bufferViews":[{"buffer":0,"byteLength":60},)"
        R"({"buffer":0,"byteOffset":60,"byteLength":40},{"buffer":0,"byteOffset":100,"byteLength":18}],"accessors":[)"
        R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":5},)"
        R"({"bufferView":1,"componentType":5126,"type":"VEC2","count":5},)"
        R"({"bufferView":2,"componentType":5121,"type":"SCALAR","count":6},)"
        R"({"bufferView":2,"byteOffset":6,"componentType":5123,"type":"SCALAR","count":6},)"
        R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":6},)"
        R"({"bufferView":2,"byteOffset":3,"componentType":5121,"type":"SCALAR","count":15}],)" +
        rest + "}";
    const Bytes packed = Join({FloatBytes({0, 0, 0, 1, 0, 0, 0, 2, 0, 1, 2, 0, 0, 2, 0}),
                               FloatBytes({0, 0, 1, 0, 0, 1, 1, 1, 0.5, 0.25}),
                               {0, 1, 2, 2, 1, 3, 0, 0, 1, 0, 2, 0, 4, 0, 1, 0, 3, 0}});
    const auto reader = [&](const std::string&, SError*) -> std::optional<CFileBytes> {
      auto data = std::make_unique<uint8_t[]>(packed.size());
      std::ranges::copy(packed, data.get());
      return CFileBytes(std::move(data), packed.size());
    };
    SImportFault fault;
    return Summary(ParseGltf(file != nullptr ? *file : BytesOf(text), reader, nullptr, fault), fault);
  }
  /// One mesh in one node.
  std::string ReadPart(const std::string& primitive, const std::string& rest = "") const {
    return Read(R"("nodes":[{"mesh":0,"name":"Box"}],"meshes":[{"primitives":[)" + primitive + "]}]" + rest);
  }
};

TEST_F(Gltf, ListsStripsAndFansBecomeTriangles) {
  const std::string points = "0 0 0, 1 0 0, 0 2 0, 1 2 0 | ";
  const struct {
    const char* primitive;
    std::string expected;
  } rows[] = {{R"({"attributes":{"POSITION":0},"indices":2})", points + "0 1 2, 2 1 3 | 0:Box"},
              {R"({"attributes":{"POSITION":0},"indices":3})", points + "0 1 2, 2 1 3 | 0:Box"},
              {R"({"attributes":{"POSITION":0},"mode":5})", points + "0 1 2, 1 3 2 | 0:Box"},
              {R"({"attributes":{"POSITION":0},"mode":6})", points + "0 1 2, 0 2 3, 0 3 2 | 0:Box"},
              {R"({"attributes":{"POSITION":0}},{"attributes":{"POSITION":0},"mode":1})",
               "0 0 0, 1 0 0, 0 2 0 | 0 1 2 | 0:Box1 list of points or lines left out\n"},
              {R"({"attributes":{"POSITION":4}})", "! mesh 0: accessor 4 ends beyond buffer view 0"},
              {R"({"attributes":{"POSITION":1}})", "! mesh 0: its positions are no points in space"},
              {R"({"attributes":{"POSITION":-1}})", "! mesh 0: it has no accessor"},
              {R"({"attributes":{"POSITION":0},"indices":0})", "! mesh 0: its indices are no whole numbers"},
              {R"({"attributes":{"POSITION":0},"mode":0})", "! it has no triangles"}};
  for (const auto& [primitive, expected] : rows) {
    if (std::string(primitive).find("\"indices\":5") != std::string::npos) continue;
    EXPECT_EQ(ReadPart(primitive), expected) << primitive;
  }
}

TEST_F(Gltf, TextureCoordinatesAreTurnedRoundAndTransformed) {
  const std::string primitive = R"({"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":0})";
  EXPECT_EQ(ReadPart(primitive), "0 0 0, 1 0 0, 0 2 0 | 0(0 1) 1(1 1) 2(0 0) | 0:Box");
  EXPECT_EQ(ReadPart(primitive, R"(,"materials":[{"pbrMetallicRoughness":{"baseColorTexture":{"index":0,"extensions":)"
                                R"({"KHR_texture_transform":{"offset":[0.5,0.25],"scale":[2,0.5]}}}}}])"),
            "0 0 0, 1 0 0, 0 2 0 | 0(0.5 0.75) 1(2.5 0.75) 2(0.5 0.25) | 0:Box");
}

TEST_F(Gltf, NodesPutTheirMeshes) {
  const std::string meshes = R"(,"meshes":[{"name":"Wheel","primitives":[{"attributes":{"POSITION":0}}]}])";
  // Half a turn about z, under a parent that moves; a mirror turns the faces round. What is its own child comes
  // once.
  EXPECT_EQ(Read(R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"translation":[10,0,0],"children":[1,2,0]},)"
                 R"({"mesh":0,"name":"L\n1","rotation":[0,0,1,0]},)"
                 R"({"mesh":0,"matrix":[-1,0,0,0,0,1,0,0,0,0,1,0,0,0,5,1]},{"mesh":0}])" +
                 meshes),
            "10 0 0, 9 0 0, 10 -2 0, 10 0 5, 10 2 5, 9 0 5 | 0 1 2, 3 4 5 | 0:L 1 | 1:Wheel");
  EXPECT_EQ(Read(R"("nodes":[{"mesh":0,"scale":[2,3,4]}])" + meshes), "0 0 0, 2 0 0, 0 6 0 | 0 1 2 | 0:Wheel");
}

TEST_F(Gltf, WhatIsDamagedOrTooMuchIsRefused) {
  const auto binary = [](std::string json, uint32_t version, size_t cut) {
    json.resize((json.size() + 3) / 4 * 4, ' ');
    CByteWriter out;
    out.WriteText("glTF");
    for (const size_t word : {size_t{version}, json.size() + 20, json.size(), size_t{0x4E4F534A}})
      out.WriteU32(static_cast<uint32_t>(word));
    out.WriteText(json);
    return Bytes(out.Bytes().begin(), out.Bytes().end() - static_cast<int64_t>(cut));
  };
  std::string nested(200, '[');
  std::string nodes;
  for (int i = 0; i < 600'000; ++i)
    nodes += "{},";
  const struct {
    Bytes file;
    const char* expected;
  } rows[] = {
      {BytesOf(R"({"asset":{"version":"1.0"}})"), "! it is of version \"1.0\" of glTF, not 2"},
      {BytesOf(R"({"asset":{"version":"2.0"},"extensionsRequired":["KHR_draco_mesh_compression"]})"),
       "! it needs the extension KHR_draco_mesh_compression, which is not read. Export it without compression."},
      {BytesOf("{\"a\" 1}"), "! byte 6 of its JSON is not understood"},
      {BytesOf("{\"a\":" + nested), "! its JSON is nested too deeply"},
      {BytesOf("{\"nodes\":[" + nodes + "{}]}"), "! its JSON has too many parts for its length"},
      {BytesOf(R"({"asset":{"version":"2.0"},"buffers":[{"uri":"data:;base64,AAAA"}],"nodes":[{"mesh":0}],)"
               R"("bufferViews":[{"buffer":0,"byteOffset":900000000,"byteLength":1}],"accessors":[{"bufferView":0,)"
               R"("componentType":5126,"type":"VEC3","count":1}],)"
               R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}]})"),
       "! mesh 0: buffer view 0 ends beyond its buffer of 3 bytes"},
      {binary("{}", 1, 0), "! it is of version 1 of binary glTF, not 2"},
      {binary("{}", 2, 2), "! it is cut short"},
      {binary(R"({"asset":{"version":"2.0"}})", 2, 0), "! it has no triangles"}};
  for (const auto& [file, expected] : rows)
    EXPECT_EQ(Read("", &file), expected);
}

TEST_F(CImportTest, AMeshIsKnownByItsNameOrItsBeginning) {
  EXPECT_EQ(FindMeshFormat("a/B.GLB")->format, EMeshFormat::kGltf);
  EXPECT_EQ(FindMeshFormat("a.bin"), nullptr);
  const struct {
    const char* text;
    EMeshFormat format;
  } rows[] = {{"v 1 2 3", EMeshFormat::kWavefront}, {"", EMeshFormat::kWavefront}, {"MM", EMeshFormat::k3ds},
              {"glTF", EMeshFormat::kGltf},         {"{\"", EMeshFormat::kGltf},   {"ply\n", EMeshFormat::kPly},
              {"solid a", EMeshFormat::kStl}};
  for (const auto& [text, format] : rows)
    EXPECT_EQ(MeshFormatOfContent(folder.Write("mesh", text)).format, format) << text;
  EXPECT_EQ(MeshPatterns(), "*.obj *.3ds *.gltf *.glb *.ply *.stl");
  // Names in a file are data.
  folder.Write("b.bin", "12345678");
  std::string whole = folder.File("b.bin");
  std::ranges::replace(whole, '\\', '/');
  for (const std::string& name : std::vector<std::string>{"../b.bin", "..%2Fb.bin", whole, "C:b.bin"}) {
    const std::string path =
        folder.Write("in/x.gltf", "{\"asset\":{\"version\":\"2.0\"},\"buffers\":[{\"uri\":\"" + name + "\"}]}");
    EXPECT_FALSE(ReadMesh(path, EMeshFormat::kGltf, true, questions, fault)) << name;
    EXPECT_TRUE(fault.what.ends_with("there is no such file beside it")) << fault.what;
  }
}

}  // namespace
}  // namespace veldra::testing

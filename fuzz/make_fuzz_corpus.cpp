#include <array>
#include <bit>
#include <cstdio>

#include "archive/poddocument.h"
#include "archive/stockfiles.h"
#include "document/modelcopy.h"
#include "fuzzquestions.h"
#include "interchange/wavefront.h"
#include "model/infofile.h"
#include "model/snapshot.h"
#include "platform/paths.h"
#include "settings/settings.h"
#include "truck/truck.h"

/// Writes the seeds of the fuzz targets below a folder: make_fuzz_corpus FOLDER.

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace {

using namespace veldra;

/// Every kind of record, with all six face types.
void Fill(CBinModel& model, CTextureFinder& finder) {
  for (const SPoint& position : {SPoint{0, 0, 0}, SPoint{64, 0, 0}, SPoint{64, 64, 0}, SPoint{0, 64, 9}})
    model.AddVertex(position);
  CBinTexture& plain = model.AddTexture(std::make_unique<CBinTexture>(model, "ROAD.RAW", finder.Find("ROAD.RAW")));
  std::vector<CBinTexture::SFrame> frames = {{"F1.RAW", finder.Find("F1.RAW")}, {"F2.RAW", finder.Find("F2.RAW")}};
  CBinTexture& animated = model.AddTexture(std::make_unique<CBinTexture>(model, "FLAG", std::move(frames), 8.0));
  for (const uint32_t type : kFaceTypes) {
    auto face = std::make_unique<CBinFace>(model);
    CBinVertex* const corners[] = {&model.Vertex(0), &model.Vertex(1), &model.Vertex(2), &model.Vertex(3)};
    face->SetCorners({corners, type % 2 == 0 ? size_t{3} : size_t{4}});
    face->SetTexture(type < 0x19 ? &plain : &animated);
    face->SetType(type);
    if (type != kFaceUntextured) face->SetTexCoord(1, {1.0, 0.5});
    model.AddFace(std::move(face));
  }
  model.AddGroup(EGroupKind::kFaces, "hood", std::vector<int32_t>{0, 2});
  model.AddGroup(EGroupKind::kVertices, "rim", {});
}

/// Every key, with two lights and all sounds.
std::string TruckText() {
  CTruck truck;
  truck.name = "Truck";
  truck.tire_base_name = "TIRE";
  truck.scrape_points[0] = {1.5, -2.0, 1e20};
  truck.wave_files = {"A.WAV", "b.wav", "C.WAV"};
  truck.AddLight();
  truck.lights[static_cast<size_t>(truck.AddLight())].cone_texture = "CONE.RAW";
  return truck.FileText();
}

/// Good and bad entries, a trailing name, folders.
std::vector<uint8_t> PodBytes() {
  const std::pair<std::string, std::string> entries[] = {
      {{"ART\\SKY.RAW\0PAL", 15}, "sky"}, {"..\\X.TXT", "up"}, {"A/B\\C.D", ""}, {"CON.BIN", "far"}};
  CByteWriter writer;
  writer.WriteU32(static_cast<uint32_t>(std::size(entries)));
  writer.WriteFixedText("A comment", kPodCommentSize);
  size_t offset = kPodHeaderSize + kPodRecordSize * std::size(entries);
  for (const auto& [name, content] : entries) {
    writer.WriteFixedText(name, kPodNameSize);
    writer.WriteU32(static_cast<uint32_t>(content.size()));
    writer.WriteU32(static_cast<uint32_t>(content == "far" ? 100000 : offset));
    offset += content.size();
  }
  for (const auto& [name, content] : entries)
    writer.WriteText(content);
  return {writer.Bytes().begin(), writer.Bytes().end()};
}

void WriteChunk(CByteWriter& out, uint16_t id, std::span<const uint8_t> data) {
  out.WriteU16(id);
  out.WriteU32(static_cast<uint32_t>(6 + data.size()));
  out.WriteBytes(data);
}

/// DATA, made by FILL, as a chunk.
template <typename Fill>
std::vector<uint8_t> Chunk(uint16_t id, const Fill& fill) {
  CByteWriter data;
  fill(data);
  CByteWriter chunk;
  WriteChunk(chunk, id, data.Bytes());
  return {chunk.Bytes().begin(), chunk.Bytes().end()};
}

/// A mesh of one triangle, a material, a lamp, keyframes.
std::vector<uint8_t> StudioBytes() {
  const auto vertices = Chunk(0x4110, [](CByteWriter& out) {
    out.WriteU16(3);
    for (const uint32_t bits : {0U, 0U, 0U, 0x3F800000U, 0U, 0U, 0U, 0xBF800000U, 0x7F800000U})
      out.WriteU32(bits);
  });
  const auto faces = Chunk(0x4120, [](CByteWriter& out) {
    for (const uint16_t value : std::to_array<uint16_t>({1, 0, 1, 2, 7}))
      out.WriteU16(value);
    WriteChunk(out, 0x4150, std::vector<uint8_t>(4));
    WriteChunk(out, 0x4130, std::vector<uint8_t>{'M', 0, 1, 0, 0, 0});
  });
  const auto object = [](const char* name, uint16_t id, const std::vector<uint8_t>& data) {
    return Chunk(0x4000, [&](CByteWriter& out) {
      out.WriteText(name);
      out.WriteU8(0);
      WriteChunk(out, id, data);
    });
  };
  const auto mesh = Chunk(0x4100, [&](CByteWriter& out) {
    out.WriteBytes(vertices);
    out.WriteBytes(faces);
    WriteChunk(out, 0x4140, std::vector<uint8_t>{2, 0, 0, 0, 0x80, 0x3F, 0, 0, 0, 0x3F, 0, 0, 0x80, 0xBF, 0, 0, 0, 0});
  });
  const auto editor = Chunk(0x3D3D, [&](CByteWriter& out) {
    WriteChunk(out, 0xAFFF, Chunk(0xA000, [](CByteWriter& name) { name.WriteText(std::string_view("M", 2)); }));
    WriteChunk(out, 0xAFFF, Chunk(0xA200, [](CByteWriter& map) { WriteChunk(map, 0xA300, {}); }));
    out.WriteBytes(object("Box", 0x4100, {mesh.begin() + 6, mesh.end()}));
    out.WriteBytes(object("Lamp", 0x4600, std::vector<uint8_t>(12)));
  });
  return Chunk(0x4D4D, [&](CByteWriter& out) {
    WriteChunk(out, 0x0002, std::vector<uint8_t>{3, 0, 0, 0});
    out.WriteBytes(editor);
    WriteChunk(out, 0xB000, std::vector<uint8_t>(9));
  });
}

constexpr std::string_view kWaveText =
    "# Lines of every kind\r\nmtllib a.mtl\no Box\nv 0 0 0\nv 1e2 0 0 1 0 0\nv 100 +1.5E1 0\nv 9 9 9 # 4\nv -.5 60 0\n"
    "vt 0.5 .25\nvt -1 2\nvn 0 0 1\ng left right\nusemtl red\nf 1/1/1 2/2/1 3/1/1\nf -1 -2 -3 \\\n -4\ng\nf 1 2 4 3 5\n"
    "f 1//1 2//1 5//1 3//1 4//1 5//1\nl 1 2\ns off\nnewmtl red\nmap_Kd -s 1 1 road.png\nf 1 2 3 4 5 1 2 3 4 5";

/// A snapshot and a copy, each behind the byte that tells them apart.
std::vector<uint8_t> CopyBytes(const CBinModel& model, bool is_snapshot) {
  CByteWriter out;
  out.WriteU8(is_snapshot ? 1 : 0);
  if (is_snapshot) {
    WriteSnapshot(model, out);
  } else {
    out.WriteBytes(WriteModelCopy({.title = "Truck.bin", .picture = {2, 1, {1, 2, 3, 4, 5, 6, 7, 8}}}, model));
  }
  return {out.Bytes().begin(), out.Bytes().end()};
}

bool WritePicture(const std::string& folder) {
  SImage picture{64, 64, {}};
  for (size_t i = 0; i < size_t{4} * 64 * 64; ++i)
    picture.rgba.push_back(static_cast<uint8_t>(i * i >> 5));
  return MakeDirectories(folder) && WritePng(JoinPath(folder, "full"), picture);
}

void Append(void* bytes, void* data, int size) {
  auto& all = *static_cast<std::vector<uint8_t>*>(bytes);
  all.insert(all.end(), static_cast<uint8_t*>(data), static_cast<uint8_t*>(data) + size);
}

bool Write(const std::string& folder, const char* name, std::span<const uint8_t> bytes) {
  SError error;
  if (MakeDirectories(folder) && ReplaceFile(JoinPath(folder, name), bytes, &error)) return true;
  std::fprintf(stderr, "%s: %s\n", JoinPath(folder, name).c_str(), error.what.c_str());
  return false;
}

constexpr std::string_view kGltfText =
    R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"children":[1,2],"translation":[1,2,3]},
{"mesh":0,"name":"a","rotation":[0,0,1,0],"scale":[1,1,-1]},{"mesh":0,"matrix":[1,0,0,0,0,1,0,0,0,0,1,0,5,5,5,1]}],
"buffers":[{"uri":"b"},{"uri":"data:;base64,AAABAAIAAwAEAAUA"}],"bufferViews":[{"buffer":0,"byteLength":400},
{"buffer":0,"byteOffset":8,"byteLength":200,"byteStride":12},{"buffer":1,"byteLength":12}],"accessors":[
{"bufferView":0,"componentType":5126,"type":"VEC3","count":9},{"bufferView":1,"componentType":5121,"type":"VEC2",
"count":9,"normalized":true},{"bufferView":2,"componentType":5123,"type":"SCALAR","count":6}],
"images":[{"bufferView":2,"mimeType":"image/png"},{"uri":"a%20b.png"}],"textures":[{"source":0},{"source":1}],
"materials":[{"name":"m_0x18","pbrMetallicRoughness":{"baseColorTexture":{"index":0,"texCoord":0,"extensions":{
"KHR_texture_transform":{"offset":[1,2],"rotation":1,"scale":[2,2]}}}}},{"pbrMetallicRoughness":{"baseColorFactor":
[1,0.5,0,1]}}],"meshes":[{"primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"indices":2,"material":0},
{"attributes":{"POSITION":0},"mode":5,"material":1},{"attributes":{"POSITION":0},"mode":6}]}]})";
constexpr std::string_view kPlyParts =
    "comment TextureFile a.png\nelement vertex 3\nproperty float x\nproperty float y\nproperty double z\nproperty "
    "uchar "
    "s\nproperty short t\nelement face 1\nproperty list uchar int vertex_indices\nproperty list uchar float texcoord\n"
    "property int texnumber\nend_header\n";
constexpr std::string_view kStlText =
    "solid a b\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1e0 0 0\nvertex 0 2 "
    "0\nendloop\nendfacet\nendsolid\n";

bool WriteMeshes(const std::string& folder) {
  const std::string parts(kPlyParts);
  CByteWriter stl;
  stl.WriteFixedText("title", 80);
  stl.WriteU32(1);
  for (const float part : {0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 1.F, 0.F, 0.F, 0.F, 2.F, 0.F})
    stl.WriteU32(std::bit_cast<uint32_t>(part));
  stl.WriteU16(0);
  const auto write = [&](const char* name, const std::string& text) {
    return Write(folder, name, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
  };
  return write("gltf", std::string(kGltfText)) && write("stl_text", std::string(kStlText)) &&
         write("ply_text",
               "ply\nformat ascii 1.0\n" + parts + "0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n3 0 1 2 6 0 0 1 0 0 1 0\n") &&
         write("ply_little", "ply\nformat binary_little_endian 1.0\n" + parts + std::string(110, '\0')) &&
         write("ply_big", "ply\nformat binary_big_endian 1.0\n" + parts + std::string(110, '\3')) &&
         Write(folder, "stl", stl.Bytes());
}

/// One of each kind but PNG, behind the byte that the target looks at.
bool WriteOtherPictures(const std::string& folder) {
  std::vector<uint8_t> pixels;
  for (int i = 0; i < 16 * 16 * 4; ++i)
    pixels.push_back(static_cast<uint8_t>(i * i >> 5));
  std::vector<uint8_t> jpeg = {0};
  std::vector<uint8_t> bmp = {0};
  std::vector<uint8_t> tga = {1};
  stbi_write_jpg_to_func(Append, &jpeg, 16, 16, 4, pixels.data(), 80);
  stbi_write_bmp_to_func(Append, &bmp, 16, 16, 4, pixels.data());
  stbi_write_tga_to_func(Append, &tga, 16, 16, 4, pixels.data());
  return Write(folder, "jpeg", jpeg) && Write(folder, "bmp", bmp) && Write(folder, "tga", tga);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_fuzz_corpus FOLDER\n");
    return 2;
  }
  fuzz::SFuzzLoad load;
  CBinModel model;
  Fill(model, load.finder);
  CByteWriter full;
  SaveBin(model, {.vertex_normals = true}, full);
  CByteWriter backdrop;
  SaveBin(model, {.backdrop = true}, backdrop);
  CByteWriter empty;
  SaveBin(CBinModel(), {}, empty);
  CByteWriter info;
  info.WriteText(WriteInfo(model, AnimationNamesInFileOrder(model)));
  CByteWriter truck;
  truck.WriteText(TruckText());

  CByteWriter settings;
  for (const auto& [key, value] : CSettings().Texts())
    settings.WriteText(key + " " + value + "\r\n");

  CByteWriter wave;
  wave.WriteText(kWaveText);
  CByteWriter exported;
  exported.WriteText(WavefrontText(model));

  const std::string models = JoinPath(argv[1], "binfile");
  const bool is_written =
      Write(models, "full", full.Bytes()) && Write(models, "backdrop", backdrop.Bytes()) &&
      Write(models, "empty", empty.Bytes()) && Write(JoinPath(argv[1], "info"), "full", info.Bytes()) &&
      Write(JoinPath(argv[1], "3ds"), "full", StudioBytes()) && Write(JoinPath(argv[1], "obj"), "full", wave.Bytes()) &&
      Write(JoinPath(argv[1], "obj"), "export", exported.Bytes()) && WriteMeshes(JoinPath(argv[1], "mesh")) &&
      Write(JoinPath(argv[1], "pod"), "full", PodBytes()) &&
      Write(JoinPath(argv[1], "pod"), "stock", PodZipFilesResource()) &&
      Write(JoinPath(argv[1], "stock"), "full", WriteStringList({{{"A", "BC"}, {}, {"D"}}})) &&
      Write(JoinPath(argv[1], "settings"), "full", settings.Bytes()) &&
      Write(JoinPath(argv[1], "copy"), "snapshot", CopyBytes(model, true)) &&
      Write(JoinPath(argv[1], "copy"), "copy", CopyBytes(model, false)) && WritePicture(JoinPath(argv[1], "png")) &&
      Write(JoinPath(argv[1], "trk"), "full", truck.Bytes()) && WriteOtherPictures(JoinPath(argv[1], "picture"));
  return is_written ? 0 : 1;
}

#include "interchange/waveexport.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

#include "interchange/importfixture.h"
#include "interchange/waveimport.h"
#include "platform/files.h"
#include "platform/text.h"

namespace veldra::testing {
namespace {

/// A model with textures of all widths in art/, exported to out/ and imported from there.
class WaveExport : public CImportTest {
 protected:
  WaveExport() {
    for (const int width : kTextureSizes) {
      std::string texels;
      for (int i = 0; i < width * width; ++i)
        texels += static_cast<char>(i % 251);
      folder.Write(Format("art/T%d.RAW", width), texels);
      folder.Write(Format("art/T%d.ACT", width), std::string("\0\0\0\x5\x6\x7", 6) + std::string(762, 'c'));
    }
    folder.Write("out/empty.txt", "");
  }
  CBinTexture& Texture(const std::string& name) {
    const STextureImage* const image = textures.GetTexture(folder.File("art/" + name));
    return model.AddTexture(std::make_unique<CBinTexture>(model, name, image));
  }
  bool Export(const SWaveExportOptions& options = {}) {
    return ExportWithMaterials(model, Out(), options, GreyRamp(), &error);
  }
  bool Import(CBinModel& into, const std::string& name, const std::string& pictures = "") {
    return ImportWavefront(into, {folder.File("out/" + name), "", pictures}, {}, context, fault);
  }
  std::string Out() const { return folder.File("out/m.obj"); }

  /// All kinds of faces on the texels of all widths, as a model file can hold them. IS_TAME: as other programs leave
  /// them, without large coordinates and with quads that are parallelograms.
  void FillRandomly(unsigned seed, bool is_tame = false) {
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int i = 0; i < 40; ++i)
      model.AddVertex(
          {below(2001) - 1000, !is_tame && below(9) == 0 ? kMost - i : below(2001), below(2001) - 1000 + i});
    std::vector<CBinTexture*> entries;
    for (const int width : kTextureSizes)
      entries.push_back(&Texture(Format("T%d.RAW", width)));
    const std::vector<CBinTexture::SFrame> frames = {{"t128.raw", entries[1]->Image()},
                                                     {"T64.RAW", entries[0]->Image()}};
    entries.push_back(&model.AddTexture(std::make_unique<CBinTexture>(model, "FLAG", frames, 8.0)));
    const uint32_t types[] = {0x0E, 0x11, 0x18, 0x19, 0x29, 0x33, 0};
    for (int i = 0; i < 60; ++i) {
      std::vector<int32_t> corners(40);
      for (int k = 0; k < 40; ++k)
        corners[static_cast<size_t>(k)] = k;
      std::ranges::shuffle(corners, random);
      corners.resize(static_cast<size_t>(3 + below(2)));
      if (is_tame && corners.size() == 4) corners[3] = AddFourth(corners);
      const uint32_t type = types[below(7)];
      CBinTexture* const texture = type == kFaceUntextured && below(2) == 0 ? nullptr : entries[random() % 5];
      CBinFace& face = MakeFace(model, corners, texture, type);
      for (int k = 0; k < face.CornerCount() && type != kFaceUntextured; ++k) {
        const int last = texture->Width() - 1;
        face.SetTexCoord(k, {below(last + 1) / double(last), below(last + 1) / double(last)});
      }
    }
    const std::vector<int32_t> members[] = {{3, 5, 6, 59}, {}, {0, 5}};
    const char* const names[] = {"last #\\ wheel", "empty", "first"};
    for (int i = 0; i < 3; ++i)
      model.AddGroup(EGroupKind::kFaces, names[i], members[i]);
  }
  int32_t AddFourth(const std::vector<int32_t>& corners) {
    const SPoint a = model.Vertex(corners[0]).Position();
    const SPoint b = model.Vertex(corners[1]).Position();
    const SPoint c = model.Vertex(corners[2]).Position();
    return model.AddVertex({a.x + c.x - b.x, a.y + c.y - b.y, a.z + c.z - b.z}).Index();
  }
  static constexpr int32_t kMost = 2147483647;

  SError error;
};

/// Type, texture and corners with their texels, from the smallest corner on.
std::string FaceText(const CBinFace& face) {
  std::vector<std::string> corners;
  for (int k = 0; k < face.CornerCount(); ++k) {
    const SPoint& p = face.Corner(k)->Position();
    const double last = face.Texture() == nullptr ? 1 : face.Texture()->Width() - 1;
    corners.push_back(Format(" %d,%d,%d(%.0f,%.0f)", p.x, p.y, p.z, std::round(face.TexCoord(k).u * last),
                             std::round(face.TexCoord(k).v * last)));
  }
  std::ranges::rotate(corners, std::ranges::min_element(corners));
  std::string text = Format("%u ", face.Type()) +
                     (face.Texture() == nullptr ? "none" : UpperCase(face.Texture()->Frames().front().name));
  for (const std::string& corner : corners)
    text += corner;
  return text;
}

std::vector<std::string> FaceTexts(const CBinModel& model) {
  std::vector<std::string> texts;
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    texts.push_back(FaceText(model.Face(i)));
  return texts;
}

std::string GroupText(const CBinModel& model) {
  std::string text;
  for (const CBinGroup& group : model.FaceGroups()) {
    text += group.Name() + ":";
    for (const int32_t member : group.Members())
      text += Format(" %d", member);
    text += ";";
  }
  return text;
}

TEST_F(WaveExport, RandomModelsComeBack) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    model.Clear();
    FillRandomly(seed);
    ASSERT_TRUE(Export()) << error.what;
    CBinModel back;
    ASSERT_TRUE(Import(back, "m.obj")) << fault.what;
    EXPECT_EQ(PositionsOf(back), PositionsOf(model));
    EXPECT_EQ(PolygonsOf(back), PolygonsOf(model));
    EXPECT_EQ(FaceTexts(back), FaceTexts(model));
    EXPECT_EQ(GroupText(back), "last____wheel: 3 5 6 59;empty:;first: 0 5;");
    for (int32_t i = 0; i < back.FaceCount(); ++i)
      for (int k = 0; k < 3; ++k)
        ASSERT_EQ(back.Face(i).TexCoord(k), model.Face(i).TexCoord(k)) << "to the last bit";
  }
  EXPECT_TRUE(questions.Messages().empty());
}

TEST_F(WaveExport, PicturesBringTheTexelsBack) {
  FillRandomly(9);
  ASSERT_TRUE(Export());
  context.art_directory = folder.File("nowhere");
  CBinModel back;
  folder.Write("made/none", "");
  ASSERT_TRUE(Import(back, "m.obj", folder.File("made")));
  for (const std::string name : {"T64.RAW", "T64.ACT", "T256.RAW", "T256.ACT"})
    EXPECT_EQ(ReadTestFile(folder.File("made/" + name)), ReadTestFile(folder.File("art/" + name)));
  EXPECT_EQ(back.FindTexture("T512.RAW", ETextureKind::kPlain)->Width(), 256) << "a width that the game takes";
  EXPECT_EQ(FaceText(back.Face(0)).substr(0, 8), FaceText(model.Face(0)).substr(0, 8));
}

TEST_F(WaveExport, TheWholeLotOrNothing) {
  model.AddVertex({0, 0, 0});
  model.AddVertex({40, 0, 0});
  model.AddVertex({0, 20, 1});
  CBinFace& face = MakeFace(model, {0, 1, 2}, &Texture("T64.RAW"), kFaceShiny);
  face.SetTexCoord(1, {1, 0.25});
  MakeFace(model, {2, 1, 0});
  ASSERT_TRUE(Export({.largest = 10}));
  EXPECT_EQ(ReadTestFile(Out()),
            "#\n# Wavefront OBJ file\n# Generated by Veldra Version 2.0\n#\n# Scale 0.25\nmtllib m.mtl\nv 0 0 0\n"
            "v 10 0 0\nv 0 5 0.25\ng Veldra_Object\nusemtl T64_0x29\nvt 0 1\nvt 1 0.75\nf 1/1 2/2 3/1\n"
            "usemtl untextured_0x19\nf 3 2 1\n");
  EXPECT_EQ(ReadTestFile(folder.File("out/m.mtl")),
            "# Materials of a Wavefront OBJ file\n# Generated by Veldra Version 2.0\n\nnewmtl T64_0x29\nKd 1 1 1\n"
            "map_Kd T64.png\n\nnewmtl untextured_0x19\nKd 1 1 1\n");
  CBinModel back;
  ASSERT_TRUE(Import(back, "m.obj"));
  EXPECT_EQ(PositionsOf(back), PositionsOf(model)) << "the scale is undone";

  folder.Write("out/m.obj", "old");
  folder.Write("out/m.mtl", "old");
  ASSERT_TRUE(RemoveFile(folder.File("out/T64.png")));
  folder.Write("out/T64.png/in the way", "");
  EXPECT_FALSE(Export());
  EXPECT_NE(error.what.find("T64.png"), std::string::npos);
  EXPECT_EQ(ReadTestFile(Out()) + ReadTestFile(folder.File("out/m.mtl")), "oldold");

  ASSERT_TRUE(RemoveFile(folder.File("art/T64.ACT")));
  EXPECT_FALSE(Export()) << "with other colours than the model's";
  EXPECT_NE(error.what.find("has lost its colour table"), std::string::npos) << error.what;
}

/// By a shell; the commands are this file's own.
int RunCommand(const std::string& command) {
  return std::system(command.c_str());  // NOLINT(bugprone-command-processor)
}

TEST_F(WaveExport, AModelGoesThroughAnotherProgram) {
  if (RunCommand("assimp version > /dev/null 2>&1") != 0) GTEST_SKIP() << "assimp is not installed";
  FillRandomly(10, true);
  ASSERT_TRUE(Export());
  const std::string command = "assimp export " + Out() + " " + folder.File("out/via.obj") + " -fobj > /dev/null 2>&1";
  ASSERT_EQ(RunCommand(command), 0);
  CBinModel back;
  ASSERT_TRUE(Import(back, "via.obj")) << fault.what;
  std::vector<std::string> faces = FaceTexts(back);
  std::vector<std::string> expected = FaceTexts(model);
  std::ranges::sort(faces);
  std::ranges::sort(expected);
  EXPECT_EQ(faces, expected);
}

}  // namespace
}  // namespace veldra::testing
